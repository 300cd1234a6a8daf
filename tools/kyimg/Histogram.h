#ifndef KYIMG_HISTOGRAM_H
#define KYIMG_HISTOGRAM_H

#include "ChannelStatistics.h"
#include "Picture.h"

#include <span>
#include <string>

namespace kyimg {

/// How often values are, on a logarithmic scale, from 0 at the left to the largest value of the type at the right. Areas of
/// red, green and blue add up to white where they overlap.
///@{
ConvertedFrame DrawHistogram(std::span<const ChannelStatistics> channels);
std::string DrawHistogramAsSvg(std::span<const ChannelStatistics> channels);
///@}

}  // namespace kyimg

#endif

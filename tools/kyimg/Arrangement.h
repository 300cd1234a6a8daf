#ifndef KYIMG_ARRANGEMENT_H
#define KYIMG_ARRANGEMENT_H

#include "ConvertOptions.h"
#include "Picture.h"

#include <cstdint>

namespace kyimg {

/// What is done to a picture after its conversion: it is made smaller, turned, then mirrored.
class Arrangement {
public:
    /// Throws UsageError for options that the type of the result, in `frame`, does not allow.
    Arrangement(const ConvertOptions& options, const ConvertedFrame& frame);

    ConvertedFrame Apply(ConvertedFrame frame) const;

private:
    std::uint32_t shrink, degrees;
    bool mirrorsHorizontally, mirrorsVertically;
};

}  // namespace kyimg

#endif

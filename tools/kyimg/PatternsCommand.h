#ifndef KYIMG_PATTERNSCOMMAND_H
#define KYIMG_PATTERNSCOMMAND_H

#include "ConvertOptions.h"

namespace kyimg {

/// `kyimg patterns`: a frame demosaiced by each of the four Bayer patterns, on one sheet. Throws UsageError and Failure,
/// and has written nothing then.
void RunPatterns(const ConvertOptions& options);

}  // namespace kyimg

#endif

#ifndef KYIMG_CONVERTCOMMAND_H
#define KYIMG_CONVERTCOMMAND_H

#include "ConvertOptions.h"

namespace kyimg {

/// `kyimg convert`. Throws UsageError and Failure; files that were written before that are complete.
void RunConvert(const ConvertOptions& options);

}  // namespace kyimg

#endif

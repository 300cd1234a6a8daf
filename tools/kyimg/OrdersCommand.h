#ifndef KYIMG_ORDERSCOMMAND_H
#define KYIMG_ORDERSCOMMAND_H

#include "ConvertOptions.h"

namespace kyimg {

/// `kyimg orders`: a mosaic as if it were of each colour order, on one sheet. Throws UsageError and Failure, and has
/// written nothing then.
void RunOrders(const ConvertOptions& options);

}  // namespace kyimg

#endif

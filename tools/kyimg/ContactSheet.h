#ifndef KYIMG_CONTACTSHEET_H
#define KYIMG_CONTACTSHEET_H

#include "Picture.h"

#include <string>
#include <vector>

namespace kyimg {

/// One picture of a sheet.
struct SheetTile {
    std::string label;  ///< of the letters R, G and B, and digits
    ConvertedFrame picture;
};

/// An RGB24 picture that is smaller by the least whole factor with which two stand side by side on a screen: each pixel
/// is the mean of a square. The frame must be one of 8-bit colour samples.
ConvertedFrame ShrinkForSheet(const ConvertedFrame& frame);

/// An RGB24 picture with two tiles in a row, each below its label. All tiles must be RGB24.
ConvertedFrame ArrangeSheet(const std::vector<SheetTile>& tiles);

}  // namespace kyimg

#endif

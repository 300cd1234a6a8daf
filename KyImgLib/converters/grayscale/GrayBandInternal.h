#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_GRAYBANDINTERNAL_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_GRAYBANDINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/kernels/KernelTable.h>

#include <cstdint>
#include <type_traits>

namespace ky {

/// How the outputs of a camera alternate in a line.
struct TapLayout {
    enum Order {
        kInOrder,    ///< there is one
        kHalves,     ///< left, right
        kLinePairs,  ///< a line, the line below
        kQuarters,   ///< the left half from both its ends, the right half from both its ends
    };

    Order order = kInOrder;
    bool leftInverted = false, rightInverted = false;  ///< of halves: read from the far end

    static TapLayout InOrder(const KyPixelConverter&) { return {}; }
    static TapLayout LinePairs(const KyPixelConverter&) { return {kLinePairs}; }
    static TapLayout Quarters(const KyPixelConverter&) { return {kQuarters}; }
    /// As the source type's ID says: halves or in order.
    static TapLayout HalvesOf(const KyPixelConverter& converter);
    /// The same, and line pairs.
    static TapLayout OfSource(const KyPixelConverter& converter);
};

/// The band of a pass with all that does not depend on the kind of samples.
///
/// \param width  pixels of each line call
GrayBand BandOf(const KyPixelConverter& converter, const KyPixelConverterContext& context, const KyLinePass& pass,
                std::uint32_t width, TapLayout layout);

/// The active level's kernel: a member of the table, or that one of a destination's kernels which reads this source.
template <auto kMember>
GrayKernel ActiveGrayKernel(GrayKernel GrayKernels::*source) {
    const GrayTable& table = ActiveKernels().gray;
    if constexpr (std::is_same_v<decltype(kMember), GrayKernels GrayTable::*>)
        return table.*kMember.*source;
    else
        return table.*kMember;
}

}  // namespace ky

#endif

#ifndef KYIMGLIB_PIXELTYPES_CATALOGUE_CONSTRUCTOR_H
#define KYIMGLIB_PIXELTYPES_CATALOGUE_CONSTRUCTOR_H

#include <KyImgLib/pixeltypes/catalogue/Catalogue.h>

#include <utility>

namespace ky {

/// The order of a destination's channels, as the converter classes take it.
inline constexpr bool kRGB = false;
inline constexpr bool kBGR = true;

/// Constructs the built-in converters and keeps them.
class Constructor {
public:
    template <typename Converter, typename... Arguments>
    const KyPixelConverter& Add(Arguments... arguments) {
        converters.emplace_back(new Converter(arguments...));
        return *converters.back();
    }

    /// Destroys them, the last one first.
    void Clear() {
        while (!converters.empty()) converters.pop_back();
    }

    const BuiltInConverters& Converters() const { return converters; }
    BuiltInConverters Take() { return std::move(converters); }

private:
    BuiltInConverters converters;
};

/// \name The families
///@{
void ConstructGrayscaleConverters(Constructor& construct);
void ConstructColourConverters(Constructor& construct);
void ConstructBayerConverters(Constructor& construct);
///@}

/// Chains of two of the converters that there are, for every pair of types that several steps connect and none directly.
void ConstructChains(Constructor& construct);

/// Registers the extended types, and constructs their converters. What is there already stays.
void ConstructExtendedTypes(Constructor& construct);

}  // namespace ky

#endif

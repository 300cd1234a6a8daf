#ifndef KYIMGLIB_TESTS_CONVERTERS_KIND_H
#define KYIMGLIB_TESTS_CONVERTERS_KIND_H

#include <KyImgLib/KyImgLib.h>
#include <tests/converters/AreaCase.h>
#include <tests/reference/Bayer.h>
#include <tests/reference/LineConversion.h>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A converter, and what it has to do: to take each pixel of a line from the same line of the source, or to demosaic.
struct Kind {
    std::string name;
    std::shared_ptr<const KyPixelConverter> converter;
    reference::Format format;
    reference::Layout layout;
    reference::Reader read;
    Samples samples = kByteSamples;                            ///< as its filter sees them
    reference::Reader readOne = nullptr;                       ///< the same of the one-pixel form, where there is one
    std::shared_ptr<const KyPixelConverter> fromInterlaced{};  ///< the same from an interlaced source
    std::uint32_t rows = 1;                                    ///< lines of a call
    std::optional<reference::BayerConversion> bayer{};         ///< instead of `read`
};

inline constexpr std::int64_t kInterlaced = 0x00200000;
inline constexpr std::array<reference::Format, 5> kRgbFormats = {reference::Format::kRGB24, reference::Format::kBGR24,
                                                                 reference::Format::kRGB32, reference::Format::kBGR32,
                                                                 reference::Format::kRGB16};

/// The classes of a family differ in their destination; all but that of RGB16 take its order before what they share.
template <typename To16, typename To24, typename To32, typename... Arguments>
std::shared_ptr<const KyPixelConverter> MakeToRgb(std::int64_t source, reference::Format format,
                                                  Arguments... arguments) {
    if (format == reference::Format::kRGB16) return std::make_shared<To16>(source, arguments...);
    if (reference::BytesOf(format) == 3) return std::make_shared<To24>(source, reference::IsBGR(format), arguments...);
    return std::make_shared<To32>(source, reference::IsBGR(format), arguments...);
}

/// Adds a kind that is made for both a progressive and an interlaced source.
template <typename MakeConverter>
void Add(std::vector<Kind>& kinds, const std::string& name, std::int64_t type, reference::Format format,
         reference::Layout layout, const reference::Reader& reader, const MakeConverter& make) {
    kinds.push_back({name + " to " + reference::NameOf(format), make(type), format, layout, reader, kByteSamples,
                     nullptr, make(type + kInterlaced)});
}

/// Kinds that are tested together: they share a reader.
struct Group {
    const char* name;
    std::vector<Kind> (*kinds)();
    std::size_t framesOf = 1;  ///< the first so many are run for large frames too
};

std::vector<Group> BayerGroups();
std::vector<Group> ColourGroups();
std::vector<Group> GrayscaleGroups();

inline std::vector<Group> AllGroups() {
    std::vector<Group> groups = BayerGroups();
    for (const auto& more : {ColourGroups(), GrayscaleGroups()}) groups.insert(groups.end(), more.begin(), more.end());
    return groups;
}

/// Filters for samples of the kind; made once, since large ones take their time.
const std::vector<FilterCase>& FiltersOf(const Samples& samples);

enum class Form { kArea, kLine, kPixel };

/// An area of this size with everything else at random.
AreaCase RandomCase(const Kind& kind, std::uint32_t width, std::uint32_t height, support::Random& random);

/// Converts with a form of the kind and tells what differs from the reference; nothing when all is well. The forms for
/// lines and pixels are called in an area conversion of an application's converter.
std::string Difference(const Kind& kind, Form form, const AreaCase& area, support::Random& random);

/// Converts a line with the line form, or one pixel with the one-pixel form, outside of any area conversion.
std::string DifferenceOutside(const Kind& kind, Form form, std::uint32_t width, support::Random& random);

#endif

#ifndef KYIMG_CONVERSION_H
#define KYIMG_CONVERSION_H

#include "ConvertOptions.h"
#include "Picture.h"
#include "SourceLines.h"

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/conversion/KyRGBFilter.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kyimg {

/// A checked request: which converter turns frames of which size into what.
class Conversion {
public:
    /// Throws UsageError for options that do not fit together, Failure when the library has no such conversion.
    explicit Conversion(const ConvertOptions& options);

    /// "1920x1080 Bayer RGB 8-bits", and how its lines lie when that does not follow from the width alone
    std::string DescribeSource() const;

    std::uint64_t GetSourceFrameSize() const { return lines.GetFrameBytes(); }

    /// Whether a PNG or PPM can show the result.
    bool MakesPicture() const;
    std::int64_t GetDestinationType() const { return destinationType; }

    /// Tells on standard error what the user should know although nothing is wrong.
    void PrintNotes() const;

    /// Converts a frame of GetSourceFrameSize() bytes. Throws Failure.
    ConvertedFrame Convert(const std::vector<std::uint8_t>& source) const;

private:
    void DivideChain();
    void ChoosePattern(const ConvertOptions& options, bool isDemosaicing);
    void ChooseFilter(const ConvertOptions& options, bool isColour);
    void ChooseArea(bool isDemosaicing);
    void NoteFlaws();
    ImageSize GetFilled() const;
    ConvertedFrame DescribeDestination() const;
    std::vector<std::uint8_t> Run(const KyPixelConverter& step, const KyRGBFilter* usedFilter,
                                  const std::uint8_t* pixels, ImageSize from, ImageSize to) const;

    std::int64_t sourceType;
    std::int64_t destinationType;
    ImageSize size;
    std::uint32_t flags = 0;
    const KyPixelConverter* converter;
    const KyPixelConverter* finisher = nullptr;  ///< converts on from RGB24, without filter; null: nothing left to do
    SourceLines lines;
    ImageSize area;                       ///< the picture
    std::unique_ptr<KyRGBFilter> filter;  ///< null: none
    std::vector<std::string> notes;
};

}  // namespace kyimg

#endif

#ifndef KYIMG_CONVERSION_H
#define KYIMG_CONVERSION_H

#include "Arrangement.h"
#include "ConvertOptions.h"
#include "Correction.h"
#include "Picture.h"
#include "SourceFrame.h"

#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/images/KyImageConverter.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kyimg {

/// A checked request: which converters turn frames of which size into what.
class Conversion {
public:
    /// Throws UsageError for options that do not fit together, Failure when the library has no such conversion.
    ///
    /// \param keepsMosaic  whether a Bayer mosaic is by default not demosaiced; the gains then describe it
    explicit Conversion(const ConvertOptions& options, bool keepsMosaic = false);

    const SourceFrame& GetSource() const { return source; }

    /// All of the results but their bytes.
    ConvertedFrame DescribeDestination() const;

    /// Tells on standard error what the user should know although nothing is wrong.
    void PrintNotes() const;

    /// Looks at a frame before the first conversion: finds the white balance and the like, and what is odd about its bits.
    void Adapt(const std::vector<std::uint8_t>& frame);

    /// Converts a frame, in a buffer of GetSource().GetBufferBytes() bytes. Throws Failure.
    ConvertedFrame Convert(const std::vector<std::uint8_t>& frame) const;

private:
    /// A converter without stages, and the image that it makes.
    struct Step {
        std::unique_ptr<KyImageConverter> converter;
        std::int64_t sourceType;
        std::int64_t destinationType;
        ImageSize size;
        bool takesFilter;  ///< the first one that makes colours
        bool looksUp;  ///< samples of gray that it makes go through the filter, which the library has for colours only
    };

    void AddSteps(const KyPixelConverter& converter);
    void AddStep(const KyPixelConverter& converter);
    const Step* FindFilterStep() const;
    void ChooseCrop();
    std::uint32_t FindPattern();
    void ChoosePattern();
    void ChooseFilter();
    void FillFilter();
    float ParseBlack(const std::string& text) const;
    void DescribeMosaic();
    KyImage PlaceSource(const std::vector<std::uint8_t>& bytes, std::uint32_t& patternFlags) const;
    void LookUp(std::vector<std::uint8_t>& samples) const;
    void NoteFlaws();
    ImageSize GetSize() const { return crop ? crop->size : source.GetShown(); }

    ConvertOptions options;
    std::int64_t sourceType;
    std::int64_t destinationType;
    SourceFrame source;
    std::optional<CropArea> crop;
    Correction correction;
    std::vector<Step> steps;
    std::uint32_t flags = 0;
    std::uint32_t threads;
    std::unique_ptr<KyRGBFilter> filter;  ///< null: none
    Mosaic mosaic;                        ///< of the destination, where it is kept
    std::unique_ptr<Arrangement> arrangement;
    std::vector<std::string> notes;
};

}  // namespace kyimg

#endif

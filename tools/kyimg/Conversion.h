#ifndef KYIMG_CONVERSION_H
#define KYIMG_CONVERSION_H

#include "ConvertOptions.h"
#include "Picture.h"
#include "SourceFrame.h"

#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/images/KyImageConverter.h>

#include <cstdint>
#include <memory>
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
    };

    void AddSteps(const KyPixelConverter& converter);
    void AddStep(const KyPixelConverter& converter);
    const Step* FindFilterStep() const;
    void ChoosePattern(const ConvertOptions& options);
    void ChooseFilter(const ConvertOptions& options);
    void DescribeMosaic(const ConvertOptions& options);
    std::uint32_t FindPattern(const ConvertOptions& options);
    float ParseBlack(const std::string& text) const;
    void NoteFlaws();

    std::int64_t sourceType;
    std::int64_t destinationType;
    SourceFrame source;
    std::vector<Step> steps;
    std::uint32_t flags = 0;
    std::uint32_t threads;
    std::unique_ptr<KyRGBFilter> filter;  ///< null: none
    Mosaic mosaic;                        ///< of the destination, where it is kept
    std::vector<std::string> notes;
};

}  // namespace kyimg

#endif

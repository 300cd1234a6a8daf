#ifndef KYIMGLIB_CONVERSION_CASCADEINTERNAL_H
#define KYIMGLIB_CONVERSION_CASCADEINTERNAL_H

#include <KyImgLib/conversion/AreaInternal.h>
#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/lines/LineStage.h>

#include <cstddef>
#include <cstdint>

class KyPixelConverter;

namespace ky {

/// The stages of a chain, each of which converts any lines of an image by themselves. Chains of more stages are rare enough
/// to go without.
struct CascadeStages {
    static constexpr std::size_t kMost = 4;
    const KyPixelConverter* converters[kMost];
    std::size_t count;

    void Add(const KyPixelConverter& converter) {
        if (count < kMost) converters[count] = &converter;
        ++count;
    }
};

/// An area conversion through several stages without whole images between them. Stages convert only lines that the area
/// needs.
///
/// A stage whose pixels do not depend on one another is joined to the next one, which takes its lines by stretches, see
/// LineStage. Others write lines for the next one to a strip, a few at a time, so that the strip stays in the cache.
class Cascade {
public:
    /// Whether these stages can work so. (Fields of an interlaced image or planes lie too far apart for a strip of it.)
    static bool Serves(const CascadeStages& stages);

    /// Without a filter in the thread's context, each stage takes its default.
    Cascade(const CascadeStages& chain, const Area& area, ThreadContext& threadContext);

    /// Whether it can convert this area: intermediate lines are as long for the one stage as for the other and no longer than
    /// a converter can tell, and the fields of an interlaced image hold whole groups of pixels.
    bool CanConvert() const;

    /// Gets the stages ready. Returns the bytes of memory that Convert() needs.
    std::size_t Prepare();

    void Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint8_t* buffer);

private:
    struct Stage {
        const KyPixelConverter* converter;
        KyPixelConverterContext context;
        std::uint32_t step;   ///< lines that it converts together
        std::uint32_t lines;  ///< lines that it can give
        std::uint32_t width;  ///< pixels of each
        bool isJoined;        ///< to the next stage; has neither a strip nor lines that it has given

        std::uint32_t done;        ///< lines that it has given
        std::uint32_t stripLines;  ///< lines of its strip; the last stage has none
        std::uint32_t stripFirst;  ///< the first of the lines that the strip holds
        std::uint8_t* strip;
    };

    bool IsLast(const Stage& stage) const { return &stage == &stages[count - 1]; }
    bool IsInterlaced() const;
    bool IsYUV() const;
    static bool MakesColours(const Stage& stage);
    void JoinStages();
    std::size_t BufferBytes(std::size_t index) const;
    LineStage::Rows RowsOf(std::size_t index) const;
    std::size_t TakerOf(std::size_t index) const;
    std::uint8_t* MakeRoom(Stage& stage, const Stage& consumer, std::uint32_t end);
    void Advance(std::size_t index, std::uint32_t end);
    LineStage::Source SourceOf(std::size_t index) const;
    void AskAhead(AreaLines& lines);
    template <class Work>
    void WithContext(const Stage& stage, const Work& work);

    Area wanted;
    ThreadContext& context;
    Stage stages[CascadeStages::kMost];
    LineStage lineStages[CascadeStages::kMost];  ///< of the stages that are joined to the next one
    std::size_t count;
    std::uint32_t linesAtOnce;
    std::uint32_t turn = 0;  ///< of the fields of an interlaced image
    std::size_t bufferBytes;
    bool isLarge;    ///< see KyLinePass
    bool firstAsks;  ///< the first stage and those joined to it ask for what is read next; else the last, if large
    const std::uint8_t* image;
    std::uint8_t* output;
};

}  // namespace ky

#endif

#ifndef KYIMGLIB_CONVERSION_CASCADEINTERNAL_H
#define KYIMGLIB_CONVERSION_CASCADEINTERNAL_H

#include <KyImgLib/conversion/AreaInternal.h>
#include <KyImgLib/conversion/ContextInternal.h>

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

/// An area conversion through several stages, in which each follows the one before by a few lines, so that what lies
/// between them stays in the cache: of every intermediate image there is only a strip. Stages convert only lines that
/// the area needs.
class Cascade {
public:
    /// Whether these stages can work so. (Fields of an interlaced image or planes lie too far apart for a strip of it.)
    static bool Serves(const CascadeStages& stages);

    /// Without a filter in the thread's context, each stage takes its default.
    Cascade(const CascadeStages& chain, const Area& area, ThreadContext& threadContext);

    /// Whether this area's intermediate lines are as long for the one stage as for the other, and no longer than a converter
    /// can tell.
    bool CanConvert() const;

    /// Bytes of memory that Convert() needs.
    std::size_t GetStripBytes() const { return stripBytes; }

    void Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint8_t* strips);

private:
    struct Stage {
        const KyPixelConverter* converter;
        KyPixelConverterContext context;
        std::uint32_t step;        ///< lines that it converts together
        std::uint32_t lines;       ///< lines that it can give
        std::uint32_t done;        ///< lines that it has given
        std::uint32_t width;       ///< pixels of each
        std::uint32_t stripLines;  ///< lines of its strip; the last stage has none
        std::uint32_t stripFirst;  ///< the first of the lines that the strip holds
        std::uint8_t* strip;
    };

    bool IsLast(const Stage& stage) const { return &stage == &stages[count - 1]; }
    static std::size_t SizeOf(const Stage& stage);
    std::uint8_t* MakeRoom(Stage& stage, const Stage& consumer, std::uint32_t end);
    void Advance(std::size_t index, std::uint32_t end);

    Area wanted;
    ThreadContext& context;
    Stage stages[CascadeStages::kMost];
    std::size_t count;
    std::uint32_t linesAtOnce;
    std::size_t stripBytes;
    bool isLarge;               ///< see KyLinePass
    std::size_t fetchingStage;  ///< asks for what the first stage reads next; `count` where none does
    const std::uint8_t* image;
    std::uint8_t* output;
};

}  // namespace ky

#endif

#include <KyImgLib/conversion/KyComplexConverter.h>

#include <KyImgLib/conversion/CascadeInternal.h>
#include <KyImgLib/conversion/ContextInternal.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

namespace {

/// A common multiple: the larger of the two if both divide it, otherwise the product. Two that give 0 count as 1.
std::uint32_t Combine(std::uint32_t a, std::uint32_t b) {
    const std::uint32_t larger = std::max(a, b);
    const std::uint32_t smaller = std::min(a, b);
    if (smaller == 0) return std::max(larger, std::uint32_t{1});
    return larger % smaller == 0 ? larger : a * b;
}

struct Buffer {
    std::unique_ptr<std::uint8_t[]> bytes;
    std::size_t size = 0;

    void Grow(std::size_t needed) {
        if (size >= needed) return;
        bytes.reset();
        size = 0;
        bytes.reset(new std::uint8_t[needed]);
        size = needed;
    }
};

/// The buffers that no conversion is using just now. The last one given back is the next one lent, so that a single
/// thread always works in the same, warm memory.
class BufferPool {
public:
    Buffer Take() {
        const std::lock_guard<std::mutex> lock(mutex);
        if (idle.empty()) return {};
        Buffer taken = std::move(idle.back());
        idle.pop_back();
        return taken;
    }

    void Give(Buffer returned) noexcept {
        try {
            const std::lock_guard<std::mutex> lock(mutex);
            idle.push_back(std::move(returned));
        } catch (const std::bad_alloc&) {  // then this buffer is simply freed
        }
    }

private:
    std::mutex mutex;
    std::vector<Buffer> idle;
};

/// A buffer of at least the given size, lent for one conversion.
class LentBuffer {
public:
    LentBuffer(BufferPool& owner, std::size_t size) : pool(owner), buffer(owner.Take()) { buffer.Grow(size); }
    ~LentBuffer() { pool.Give(std::move(buffer)); }
    LentBuffer(const LentBuffer&) = delete;
    LentBuffer& operator=(const LentBuffer&) = delete;

    std::uint8_t* Get() const { return buffer.bytes.get(); }

private:
    BufferPool& pool;
    Buffer buffer;
};

/// Bytes that a converter's destination of some lines takes. Lines one after the other may need more than all pixels in
/// one run, where pixels share bytes and each line is rounded up. The 32-bit size of a large image wraps; this does not.
/// Converters of groups of pixels may go a group past the end.
std::size_t DestinationSize(const KyPixelConverter& converter, std::uint32_t width, std::uint32_t lines) {
    constexpr std::size_t kGroup = 64;
    const std::size_t oneRun = converter.GetDestinationByteSize(width * lines);
    const std::size_t line = std::max(std::size_t{converter.GetDestinationByteSize(width)},
                                      std::size_t{converter.GetDestinationByteSize()} * width);
    return std::max(oneRun, line * lines) + kGroup;
}

}  // namespace

struct KyComplexConverter::Stages : KyObject {
    BufferPool intermediate;
    const KyPixelConverter& first;
    const KyPixelConverter& second;
    ky::CascadeStages cascade = {};  ///< the stages, those of chains among them in turn; none when they cannot work so

    Stages(const KyPixelConverter& firstStage, const KyPixelConverter& secondStage)
        : first(firstStage), second(secondStage) {
        AddToCascade(first);
        AddToCascade(second);
        if (!ky::Cascade::Serves(cascade)) cascade.count = 0;
    }

private:
    void AddToCascade(const KyPixelConverter& converter) {
        // A class derived from a chain may do something else.
        if (typeid(converter) == typeid(KyComplexConverter)) {
            const ky::CascadeStages& inner = static_cast<const KyComplexConverter&>(converter).stages->cascade;
            for (std::size_t i = 0; i < inner.count; ++i) cascade.Add(*inner.converters[i]);
            if (inner.count > 0) return;
        }
        cascade.Add(converter);
    }
};

// The stages come before the base, which registers the converter: what is registered must not fail any more.
KyComplexConverter::KyComplexConverter(const KyPixelConverter* first, const KyPixelConverter* second)
    : KyComplexConverter(MakeStages(*first, *second)) {}

KyComplexConverter::KyComplexConverter(std::unique_ptr<Stages> made)
    : KyPixelConverter(made->first.GetSourceType(), made->second.GetDestinationType(), made->first.GetSourceByteSize(),
                       made->second.GetDestinationByteSize(),
                       Combine(made->first.GetPipeliningSize(), made->second.GetPipeliningSize()),
                       Combine(made->first.GetLinesPerConvert(), made->second.GetLinesPerConvert())),
      stages(made.release()) {}

std::unique_ptr<KyComplexConverter::Stages> KyComplexConverter::MakeStages(const KyPixelConverter& first,
                                                                           const KyPixelConverter& second) {
    std::unique_ptr<Stages> made(new Stages(first, second));
    if (made == nullptr) throw std::bad_alloc();
    return made;
}

KyComplexConverter::~KyComplexConverter() { delete stages; }

const KyPixelConverter& KyComplexConverter::GetFirst() const { return stages->first; }

const KyPixelConverter& KyComplexConverter::GetSecond() const { return stages->second; }

std::uint32_t KyComplexConverter::GetSourceByteSize(std::uint32_t count) const {
    return stages->first.GetSourceByteSize(count);
}

std::uint32_t KyComplexConverter::GetDestinationByteSize(std::uint32_t count) const {
    return stages->second.GetDestinationByteSize(count);
}

std::uint32_t KyComplexConverter::Convert(const std::uint8_t* source, std::uint32_t sourceWidth,
                                          std::uint32_t sourceHeight, std::uint8_t* destination,
                                          std::uint32_t destinationWidth, std::uint32_t destinationHeight,
                                          std::uint32_t width, std::uint32_t height, std::uint32_t flags,
                                          std::uint32_t destinationPadding) const {
    const ky::AreaScope context(sourceWidth);
    const KyRGBFilter* const filter = context->filter;
    if (stages->cascade.count > 0) {
        context->flags = flags;  // which stages ask for when they are asked for their lines per convert
        ky::Cascade cascade(
            stages->cascade,
            {sourceWidth, sourceHeight, destinationWidth, destinationHeight, width, height, flags, destinationPadding},
            *context);
        if (cascade.CanConvert()) {
            const LentBuffer buffer(stages->intermediate, cascade.Prepare());
            cascade.Convert(source, destination, buffer.Get());
            return KY_STATUS_SUCCESS;
        }
    }
    const LentBuffer image(stages->intermediate, DestinationSize(stages->first, sourceWidth, sourceHeight));
    const std::uint32_t status = stages->first.Convert(source, sourceWidth, sourceHeight, image.Get(), sourceWidth,
                                                       sourceHeight, sourceWidth, sourceHeight, flags, 0);
    if (status != KY_STATUS_SUCCESS) return status;

    context->filter = filter;  // the first stage's area conversion has cleared it
    return stages->second.Convert(image.Get(), sourceWidth, sourceHeight, destination, destinationWidth,
                                  destinationHeight, width, height, flags, destinationPadding);
}

std::uint32_t KyComplexConverter::Convert(const std::uint8_t* source, std::uint8_t* destination,
                                          std::uint32_t count) const {
    // Held for the chain and for each stage; on one thread the three are the same record.
    const ky::ContextHolder context, firstContext, secondContext;
    const LentBuffer lines(stages->intermediate, DestinationSize(stages->first, count, GetLinesPerConvert()));
    context->destinationLineSize = stages->first.GetDestinationByteSize(count);
    context->sourceLineSize = stages->second.GetSourceByteSize(count);

    const std::uint32_t status = stages->first.Convert(source, lines.Get(), count);
    if (status != KY_STATUS_SUCCESS) return status;
    return stages->second.Convert(lines.Get(), destination, count);
}

std::uint32_t KyComplexConverter::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    const LentBuffer pixel(stages->intermediate, stages->first.GetDestinationByteSize(1));
    const std::uint32_t status = stages->first.Convert(source, pixel.Get());
    if (status != KY_STATUS_SUCCESS) return status;
    return stages->second.Convert(pixel.Get(), destination);
}

#ifndef KYIMGLIB_CONVERSION_CONVERTERRECORDINTERNAL_H
#define KYIMGLIB_CONVERSION_CONVERTERRECORDINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/pipeline/Pipeline.h>

#include <atomic>
#include <cstdint>
#include <new>
#include <type_traits>
#include <typeinfo>

namespace ky {

struct Stages;

/// What a converter makes its kernels for.
struct ConversionSettings {
    const KyRGBFilter* filter;  ///< null: the identity
    std::uint32_t flags;        ///< FLAG_ constants
    std::uint32_t width, height;
    std::uint32_t sourceWidth;  ///< pixels of a source line; 0: unknown, its pixels follow one another
    /// Every pixel of the destination is made, and no more: of odd sizes area conversions leave pixels out or make more.
    bool isExact;
    std::size_t sourceRowBytes;  ///< of an exact conversion
};

}  // namespace ky

/// What the library keeps of a converter.
struct KyPixelConverter::Record : KyObject {
    std::int64_t sourceType, destinationType;
    std::uint32_t sourceByteSize, destinationByteSize;
    std::uint32_t pipeliningSize, linesPerConvert;

    Record(std::int64_t source, std::int64_t destination, std::uint32_t sourceBytes, std::uint32_t destinationBytes,
           std::uint32_t pipelining, std::uint32_t lines)
        : sourceType(source), destinationType(destination), sourceByteSize(sourceBytes),
          destinationByteSize(destinationBytes), pipeliningSize(pipelining), linesPerConvert(lines) {}

    static Record& Of(const KyPixelConverter& converter) { return *converter.record; }
    static std::uint32_t PipeliningSizeOf(const KyPixelConverter& converter) { return converter.GetPipeliningSize(); }
    static std::uint32_t LinesPerConvertOf(const KyPixelConverter& converter) { return converter.GetLinesPerConvert(); }

    /// Has the kernels that `maker.AddKernels(settings, pipeline)` adds convert, which returns false where there are none: in
    /// the line form unless it is overridden, and whole areas and images of objects of exactly the class `owner`. One that is
    /// derived from it may have overridden the line form.
    template <class Maker>
    void SetKernels(const std::type_info& owner, const Maker& maker) {
        static_assert(std::is_trivially_copyable_v<Maker> && sizeof(Maker) <= sizeof makerStorage);
        kernelOwner = &owner;
        new (makerStorage) Maker(maker);
        addKernels = [](const void* made, const ky::ConversionSettings& settings, ky::Pipeline& pipeline) {
            return static_cast<const Maker*>(made)->AddKernels(settings, pipeline);
        };
    }

    /// False when the class has none.
    bool AddKernels(const ky::ConversionSettings& settings, ky::Pipeline& pipeline) const {
        return addKernels != nullptr && addKernels(makerStorage, settings, pipeline);
    }
    /// Whether the kernels do all that the converter does.
    bool ConvertsByKernels(const KyPixelConverter& self) const {
        return addKernels != nullptr && typeid(self) == *kernelOwner;
    }

    const ky::Stages* chain = nullptr;  ///< of a KyComplexConverter, those of chains among its two in turn

    /// The filter that an area conversion uses when it was given none.
    const KyRGBFilter& DefaultFilter();

private:
    const std::type_info* kernelOwner = nullptr;
    bool (*addKernels)(const void* maker, const ky::ConversionSettings& settings, ky::Pipeline& pipeline) = nullptr;
    alignas(std::int64_t) unsigned char makerStorage[48];
    std::atomic<const KyRGBFilter*> defaultFilter{nullptr};  ///< once the source type is registered: null before
};

namespace ky {

struct ConverterRecordName : KyPixelConverter {
    using KyPixelConverter::Record;
};
using ConverterRecord = ConverterRecordName::Record;

/// Converts some lines by the kernels of a converter's class, with the settings of the thread's context: `count` pixels of
/// as many lines as its kernels make together.
std::uint32_t ConvertLinesByKernels(const KyPixelConverter& converter, const std::uint8_t* source,
                                    std::uint8_t* destination, std::uint32_t count);

}  // namespace ky

#endif

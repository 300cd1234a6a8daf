#ifndef KYIMGLIB_CONVERSION_KYCOMPLEXCONVERTER_H
#define KYIMGLIB_CONVERSION_KYCOMPLEXCONVERTER_H

#include <KyImgLib/conversion/KyPixelConverter.h>

#include <memory>

/// Chains two converters: the first from type A to type B, the second from B to C, through an intermediate image.
///
/// Both converters are borrowed and must outlive the chain. A filter is applied by both stages; without one, each stage
/// takes the default filter of its own source. The chain's pipelining size and lines per convert are, of the two
/// stages' values, the larger where the smaller divides it, otherwise the product.
///
/// One chain may convert on any number of threads at once: each conversion in progress has an intermediate buffer of its
/// own, and buffers are kept for later conversions until the chain is destroyed. Allocation failure throws
/// std::bad_alloc.
class KYIMGLIB_API KyComplexConverter : public KyPixelConverter {
public:
    KyComplexConverter(const KyPixelConverter* first, const KyPixelConverter* second);
    ~KyComplexConverter() override;

    using KyPixelConverter::Convert;
    using KyPixelConverter::GetDestinationByteSize;
    using KyPixelConverter::GetSourceByteSize;

    /// The stages, as they were given: either may be a chain itself.
    const KyPixelConverter& GetFirst() const;
    const KyPixelConverter& GetSecond() const;

    /// The first converter's.
    std::uint32_t GetSourceByteSize(std::uint32_t count) const override;
    /// The second converter's.
    std::uint32_t GetDestinationByteSize(std::uint32_t count) const override;

    /// Converts the whole source image, whatever the area, into the intermediate one, then the area of it. What the first
    /// stage leaves out of the intermediate image is 0. Returns the status of the first stage that fails; the second is then
    /// not run. Where both stages are converters of this library (not derived from one), only a few rows of the intermediate
    /// image exist at a time, in a cache, and only lines that the area needs are converted.
    std::uint32_t Convert(const std::uint8_t* source, std::uint32_t sourceWidth, std::uint32_t sourceHeight,
                          std::uint8_t* destination, std::uint32_t destinationWidth, std::uint32_t destinationHeight,
                          std::uint32_t width, std::uint32_t height, std::uint32_t flags,
                          std::uint32_t destinationPadding) const override;

    /// One line call of each stage, for `count` pixels on each of this converter's lines per convert. Afterwards the
    /// context's source and destination line size are those of the intermediate lines. Status as above.
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override;

    /// One pixel through both stages. Status as above.
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination) const override;

private:
    struct Stages;
    explicit KyComplexConverter(std::unique_ptr<Stages> made);
    static std::unique_ptr<Stages> MakeStages(const KyPixelConverter& first, const KyPixelConverter& second);

    Stages* stages;
};

#endif

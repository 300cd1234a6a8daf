#ifndef KYIMGLIB_TESTS_CONVERSION_RECORDER_H
#define KYIMGLIB_TESTS_CONVERSION_RECORDER_H

#include <KyImgLib/KyImgLib.h>

#include <cstdint>
#include <vector>

/// Type IDs that the library does not use, with the properties that decide how an area is walked.
inline constexpr std::int64_t kPlainType = 0x0002FF00;
inline constexpr std::int64_t kOtherType = 0x0002FF01;
inline constexpr std::int64_t kInterlacedType = 0x0022FF00;
inline constexpr std::int64_t kPlanarType = 0x0082FF00;

/// An application's converter that converts nothing, but remembers how it was called: so its images need no memory.
class Recorder : public KyPixelConverter {
public:
    struct Call {
        const std::uint8_t* source;
        std::uint8_t* destination;
        std::uint32_t count;
        KyPixelConverterContext context;
        const KyPixelConverterContext* record;
        std::uint32_t filterBits;  ///< 0 without a filter
    };

    Recorder(std::int64_t source, std::int64_t destination, std::uint32_t sourceBytes, std::uint32_t destinationBytes,
             std::uint32_t pipelining, std::uint32_t lines)
        : KyPixelConverter(source, destination, sourceBytes, destinationBytes, pipelining, lines) {}
    explicit Recorder(std::int64_t source = kPlainType, std::int64_t destination = kOtherType, std::uint32_t lines = 1)
        : Recorder(source, destination, 1, 1, 1, lines) {}

    using KyPixelConverter::Convert;
    using KyPixelConverter::GetContext;
    using KyPixelConverter::GetLinesPerConvert;
    using KyPixelConverter::GetPipeliningSize;
    using KyPixelConverter::ReleaseContext;

    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override {
        const KyPixelConverterContext* const context = GetContext();
        calls.push_back({source, destination, count, *context, context,
                         context->filter == nullptr ? 0 : context->filter->GetBitSize()});
        ReleaseContext();
        return status;
    }
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination) const override {
        return Convert(source, destination, 1);
    }

    mutable std::vector<Call> calls;
    std::uint32_t status = KY_STATUS_SUCCESS;
};

#endif

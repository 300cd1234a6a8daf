// The converter object itself, and the context that its conversions share on a thread.
#include <tests/conversion/Recorder.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <utility>
#include <vector>

namespace {

TEST(Converter, ReportsWhatItWasMadeOf) {
    const Recorder recorder(kPlainType, kOtherType, 3, 5, 7, 9);
    EXPECT_EQ(kPlainType, recorder.GetSourceType());
    EXPECT_EQ(kOtherType, recorder.GetDestinationType());
    EXPECT_EQ(3u, recorder.GetSourceByteSize());
    EXPECT_EQ(5u, recorder.GetDestinationByteSize());
    EXPECT_EQ(300u, recorder.GetSourceByteSize(100));
    EXPECT_EQ(0x80000000u * 5u, recorder.GetDestinationByteSize(0x80000000u)) << "wraps";
    EXPECT_EQ(7u, recorder.GetPipeliningSize());
    EXPECT_EQ(9u, recorder.GetLinesPerConvert());
}

TEST(Converter, RegistersItselfWhereThePairIsFree) {
    constexpr std::int64_t source = 0x0002FE00;
    ASSERT_FALSE(KyPixelTypeFactory::HasConverter(source, kOtherType));
    const Recorder first(source, kOtherType);
    { const Recorder second(source, kOtherType); }
    EXPECT_EQ(&first, KyPixelTypeFactory::FindConverter(source, kOtherType));
}

TEST(Converter, HasNoFormsThatItDoesNotOverride) {
    struct Bare : KyPixelConverter {
        Bare() : KyPixelConverter(kPlainType, kOtherType, 1, 1, 1, 1) {}
    };
    EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, Bare().Convert(nullptr, nullptr));
    EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, Bare().Convert(nullptr, nullptr, 1));
}

/// Its line call calls other converters, as that of an application's may.
class Nesting final : public Recorder {
public:
    explicit Nesting(std::function<void(const Nesting&)> inside) : call(std::move(inside)) {}

    using Recorder::Convert;
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override {
        Recorder::Convert(source, destination, count);
        call(*this);
        return KY_STATUS_SUCCESS;
    }
    void ConvertOneLine() const {
        std::uint8_t byte = 0;
        Convert(&byte, 1, 1, &byte, 1, 1, 1, 1, 0, 0);
    }
    void ConvertOneLine(const KyRGBFilter& filter) const {
        std::uint8_t byte = 0;
        Convert(filter, &byte, 1, 1, &byte, 1, 1, 1, 1, 0, 0);
    }

private:
    std::function<void(const Nesting&)> call;
};

TEST(Context, IsSharedByNestedConversions) {
    const Recorder inner;
    std::uint8_t bytes[4] = {};
    const Nesting outer([&](const Nesting&) { inner.Convert(bytes, 2, 1, bytes, 2, 1, 2, 1, 0x40, 0); });
    const KyRGBFilter filter(3);
    outer.ConvertOneLine(filter);
    ASSERT_EQ(1u, outer.calls.size());
    ASSERT_EQ(1u, inner.calls.size());
    EXPECT_EQ(outer.calls[0].record, inner.calls[0].record);
    EXPECT_EQ(3u, outer.calls[0].context.referenceCount) << "filtered form, area form, line form";
    EXPECT_EQ(4u, inner.calls[0].context.referenceCount);
    EXPECT_EQ(&filter, inner.calls[0].context.filter) << "the filter that is set stays";
    EXPECT_EQ(0x40u, inner.calls[0].context.flags);
}

TEST(Context, IsThatOfTheInnermostConversion) {
    std::array<std::uint8_t, 4096> source = {}, destination = {};
    struct {
        std::int64_t source, destination;
        std::uint32_t flags, height, lineIndex;
    } const cases[] = {
        {KY_TYPE_GRAYSCALE8, KY_TYPE_RGB24, 0, 5, 4},  // a converter with kernels
        {0x00020010, KY_TYPE_RGB24, 0, 5, 2},          // two lines at a time
        {0x00020010, KY_TYPE_RGB24, KyPixelConverter::FLAG_BAYER_INTERPOLATE, 5, 4},
        {0x00210001, KY_TYPE_RGB24, 0, 6, 4},                                         // interlaced
        {0x00420012, KY_TYPE_RGB24, KyPixelConverter::FLAG_BAYER_INTERPOLATE, 4, 3},  // a chain
    };
    for (const auto& test : cases) {
        const KyPixelConverter& inner = *KyPixelTypeFactory::FindConverter(test.source, test.destination);
        KyPixelConverterContext seen = {};
        const Nesting outer([&](const Nesting& self) {
            inner.Convert(source.data(), 8, test.height, destination.data(), 9, test.height, 8, test.height, test.flags,
                          1);
            seen = *self.GetContext();
            self.ReleaseContext();
        });
        outer.ConvertOneLine(KyRGBFilter(8));
        EXPECT_EQ(3u, seen.referenceCount);
        EXPECT_EQ(test.lineIndex, seen.lineIndex) << std::hex << test.source;
        EXPECT_EQ(28u, seen.destinationLineSize);
        EXPECT_EQ(test.height, seen.destinationHeight);
        EXPECT_EQ(nullptr, seen.filter);
    }
}

TEST(Context, StaysWhereItWasTakenMoreOftenThanGivenBack) {
    bool takes = true;
    const Nesting outer([&](const Nesting& self) {
        if (takes) self.GetContext();
    });
    outer.ConvertOneLine();
    KyPixelConverterContext* const context = outer.GetContext();
    EXPECT_EQ(2u, context->referenceCount);
    EXPECT_EQ(1u, context->sourceLineSize) << "with the settings of the conversion that it was taken in";
    EXPECT_EQ(nullptr, context->filter);

    takes = false;
    outer.ConvertOneLine();
    EXPECT_EQ(2u, context->referenceCount) << "others take and give back";
    outer.ReleaseContext();
    outer.ReleaseContext();
    EXPECT_EQ(1u, outer.GetContext()->referenceCount) << "a new one";
    EXPECT_EQ(0u, context->sourceLineSize);
    outer.ReleaseContext();
}

TEST(Context, LivesFromTheOutermostGetToItsRelease) {
    const Recorder recorder, planar(kPlainType, kPlanarType);
    std::uint8_t bytes[4] = {};
    KyPixelConverterContext* const context = recorder.GetContext();
    EXPECT_EQ(1u, context->referenceCount);
    EXPECT_EQ(nullptr, context->filter);
    for (const std::uint32_t value :
         {context->sourceLineSize, context->sourceHeight, context->destinationLineSize, context->destinationHeight,
          context->planeOffsets[2], context->flags, context->lineIndex})
        EXPECT_EQ(0u, value);

    planar.Convert(bytes, 1, 1, bytes, 1, 1, 1, 1, 0, 0);
    recorder.Convert(bytes, 1, 1, bytes, 4, 1, 1, 1, 0x80, 0);
    EXPECT_EQ(1u, context->referenceCount);
    EXPECT_EQ(nullptr, context->filter) << "a finished conversion leaves no filter behind";
    EXPECT_EQ(0x80u, context->flags);
    EXPECT_EQ(4u, context->destinationLineSize);
    EXPECT_EQ(2u, context->planeOffsets[2]) << "only planar destinations set them";
    EXPECT_EQ(context, recorder.GetContext());
    EXPECT_EQ(2u, context->referenceCount);
    recorder.ReleaseContext();
    recorder.ReleaseContext();

    recorder.Convert(bytes, bytes, 1);
    EXPECT_EQ(1u, recorder.calls.back().context.referenceCount);
    EXPECT_EQ(0u, recorder.calls.back().context.flags) << "a new context has forgotten the last area";
}

TEST(Context, ReleasedTooOftenIsWholeForTheNextConversion) {
    struct Careless : Recorder {
        using Recorder::Convert;
        std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination,
                              std::uint32_t count) const override {
            ReleaseContext();
            return Recorder::Convert(source, destination, count);
        }
    };
    std::uint8_t bytes[16] = {};
    Careless().Convert(bytes, 2, 3, bytes, 2, 3, 2, 3, 0x80, 0);
    const Recorder recorder;
    recorder.ReleaseContext();
    for (int round = 0; round < 2; ++round) {
        recorder.calls.clear();
        recorder.Convert(bytes, 2, 3, bytes, 2, 3, 2, 3, 0x20, 0);
        for (const auto& call : recorder.calls) {
            EXPECT_EQ(0x20u, call.context.flags);
            EXPECT_EQ(2u, call.context.referenceCount);
        }
        EXPECT_EQ(3u, recorder.calls.size());
    }
}

TEST(ContextThread, EachThreadSeesItsOwnConversion) {
    constexpr std::uint32_t threads = 8;
    const Recorder recorders[threads];
    support::RunOnThreads(threads, [&](int thread) {
        const auto width = static_cast<std::uint32_t>(100 + thread);
        std::uint8_t byte = 0;
        for (int round = 0; round < 200; ++round)
            recorders[thread].Convert(&byte, width, 3, &byte, 1, 1, 0, 3, 0x20, 0);
    });
    for (std::uint32_t thread = 0; thread < threads; ++thread)
        for (const Recorder::Call& call : recorders[thread].calls) {
            ASSERT_EQ(100 + thread, call.context.sourceLineSize);
            ASSERT_EQ(2u, call.context.referenceCount);
        }
}

}  // namespace

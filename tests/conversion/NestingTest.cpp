// What an application's converter sees of the context while it calls other converters from inside its line form.
#include <tests/conversion/Recorder.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace {

class Nesting final : public KyPixelConverter {
public:
    explicit Nesting(std::function<void(const Nesting&)> inside)
        : KyPixelConverter(kPlainType, kOtherType, 1, 1, 1, 1), call(std::move(inside)) {}

    using KyPixelConverter::Convert;
    using KyPixelConverter::GetContext;
    using KyPixelConverter::ReleaseContext;

    std::uint32_t Convert(const std::uint8_t*, std::uint8_t*, std::uint32_t) const override {
        call(*this);
        return KY_STATUS_SUCCESS;
    }
    void ConvertOneLine() const {
        std::uint8_t byte = 0;
        Convert(&byte, 1, 1, &byte, 1, 1, 1, 1, 0, 0);
    }
    void ConvertOneLineFiltered() const {
        const KyRGBFilter filter(8);
        std::uint8_t byte = 0;
        Convert(filter, &byte, 1, 1, &byte, 1, 1, 1, 1, 0, 0);
    }
    /// While this looks, it holds one.
    KyPixelConverterContext Look() const {
        const KyPixelConverterContext seen = *GetContext();
        ReleaseContext();
        return seen;
    }

private:
    std::function<void(const Nesting&)> call;
};

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
            seen = self.Look();
        });
        outer.ConvertOneLineFiltered();
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

}  // namespace

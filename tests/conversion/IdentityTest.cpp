#include <KyImgLib/KyImgLib.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

std::vector<std::uint8_t> Counting(std::size_t count) {
    std::vector<std::uint8_t> bytes(count);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

const KyPixelConverter& Identity(std::int64_t source, std::int64_t destination) {
    return *KyPixelTypeFactory::FindConverter(source, destination);
}

TEST(Identity, CopiesTheBytesOfTheSourceAndNoMore) {
    const std::vector<std::uint8_t> source = Counting(32);
    const auto copied = [&](const KyPixelConverter& converter, std::uint32_t count) {
        std::vector<std::uint8_t> destination(32);
        EXPECT_EQ(KY_STATUS_SUCCESS, count == 0 ? converter.Convert(source.data(), destination.data())
                                                : converter.Convert(source.data(), destination.data(), count));
        const auto end = std::find(destination.begin(), destination.end(), std::uint8_t{0});
        EXPECT_TRUE(std::equal(destination.begin(), end, source.begin()));
        EXPECT_EQ(destination.end(), std::find_if(end, destination.end(), [](auto byte) { return byte != 0; }));
        return end - destination.begin();
    };
    EXPECT_EQ(6, copied(Identity(0x00410002, 0x00410002), 3));
    EXPECT_EQ(3, copied(Identity(0x00410002, 0x00410002), 0)) << "one pixel takes a pair's bytes";
    EXPECT_EQ(20, copied(Identity(0x00020002, 0x00020002), 5));
    EXPECT_EQ(2, copied(Identity(0x00010005, 0x00010005), 0));
    const KyIdentityConverter unregistered(0x0002FF00, 0x0002FF01, 5, 7);
    EXPECT_EQ(15, copied(unregistered, 3));
    EXPECT_EQ(70u, unregistered.GetDestinationByteSize(10));
}

/// Copies nothing in its line form.
class NoLines final : public KyIdentityConverter {
public:
    NoLines() : KyIdentityConverter(0x0002FF00, 0x0002FF01, 3, 3) {}
    using KyPixelConverter::Convert;
    std::uint32_t Convert(const std::uint8_t*, std::uint8_t*, std::uint32_t) const override { return 5; }
};

TEST(Identity, OnePixelFormCopiesByItself) {
    const std::vector<std::uint8_t> source = Counting(3);
    std::vector<std::uint8_t> destination(3);
    EXPECT_EQ(KY_STATUS_SUCCESS,
              static_cast<const KyPixelConverter&>(NoLines()).Convert(source.data(), destination.data()));
    EXPECT_EQ(source, destination);
}

}  // namespace

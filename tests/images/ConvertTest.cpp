// Images against the area form, for every registered pair and converters of an application's own.
#include <tests/images/ImageCase.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/Emulation.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <stdexcept>
#include <utility>

#if !defined(_WIN32)
#include <sys/mman.h>
#endif

namespace {

using Pair = std::pair<std::int64_t, std::int64_t>;
using Size = std::pair<std::uint32_t, std::uint32_t>;
using Role = GuardedImage::Role;

std::vector<Pair> RegisteredPairs() {
    RegisterApplicationConverters();
    std::vector<Pair> pairs;
    Pair pair;
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumConverters(i, pair.first, pair.second); ++i)
        if ((pair.first & 0xF000) == 0) pairs.push_back(pair);  // other tests' types have these bits
    return pairs;
}

/// Bands that end at random multiples of the step, in random order.
std::vector<Size> RandomBands(std::uint32_t height, std::uint32_t step, support::Random& random) {
    std::vector<Size> bands;
    for (std::uint32_t first = 0; first < height;) {
        const std::uint32_t steps = 1 + random.Below(std::min(4u, (height - first + step - 1) / step));
        bands.emplace_back(first, std::min(steps * step, height - first));
        first += steps * step;
    }
    for (std::size_t i = bands.size(); i > 1; --i)
        std::swap(bands[i - 1], bands[random.Below(static_cast<std::uint32_t>(i))]);
    return bands;
}

/// Converts with random strides, flags, filter and bands and tells what differs; nothing when all is well.
std::string DifferenceOf(const Pair& pair, Size size, int threads, support::Random& random) {
    const Shape from(pair.first), to(pair.second);
    const auto [width, unevenHeight] = size;
    const std::uint32_t height = unevenHeight + unevenHeight % std::max(from.lineStep, to.lineStep);
    GuardedImage source(pair.first, width, height, Role::kSource, random);
    GuardedImage destination(pair.second, width, height, Role::kDestination, random);
    const KyConversion whole = RandomConversion(random);
    const KyPixelConverter& converter = *KyPixelTypeFactory::FindConverter(pair.first, pair.second);
    const std::vector<std::uint8_t> expected =
        destination.MemoryWith(ConvertLines(converter, source.Read(), width, height, whole.flags, whole.filter));
    const std::vector<std::uint8_t> sourceMemory = source.Memory();

    std::uint32_t step = 0;
    if (KyImage_GetBandStep(&source.image, &destination.image, &whole, &step) != KY_STATUS_SUCCESS || step == 0)
        return std::string("no band step: ") + KyImage_GetError();
    const std::vector<Size> bands = RandomBands(height, step, random);
    std::atomic<std::size_t> next{0};
    std::atomic<std::uint32_t> failures{0};
    support::RunOnThreads(threads, [&](int) {
        for (std::size_t i; (i = next++) < bands.size();) {
            const KyConversion band = Conversion(whole.flags, whole.filter, bands[i].first, bands[i].second);
            if (KyImage_Convert(&source.image, &destination.image, &band) != KY_STATUS_SUCCESS) ++failures;
        }
    });

    const std::string description = Describe(source.image) + " to " + Describe(destination.image) + ", flags " +
                                    std::to_string(whole.flags) + (whole.filter != nullptr ? ", filtered" : "") +
                                    ", bands " + std::to_string(bands.size());
    if (failures != 0) return description + ": refused";
    if (source.Memory() != sourceMemory) return description + ": the source was written";
    const std::vector<std::uint8_t> written = destination.Memory();
    const auto place = std::mismatch(written.begin(), written.end(), expected.begin());
    if (place.first == written.end()) return "";
    return description + ": byte " +
           std::to_string(place.first - written.begin() - static_cast<std::ptrdiff_t>(destination.DataOffset())) +
           " is " + std::to_string(*place.first) + ", not " + std::to_string(*place.second);
}

class ImagesOfLevel : public testing::TestWithParam<std::uint32_t> {};

TEST_P(ImagesOfLevel, EveryPairGivesTheBytesOfTheAreaForm) {
    const support::ScopedCpuLevel level(GetParam());
    support::Random random(11);
    const std::vector<Pair> pairs = RegisteredPairs();
    ASSERT_GT(pairs.size(), 1300u);
    int differences = 0;
    for (std::size_t i = GetParam() % support::Stride(); i < pairs.size() && differences < 20; i += support::Stride())
        for (const std::uint32_t width : {9u, 9u, 9u, 90u, 90u, 600u}) {
            const std::string difference =
                DifferenceOf(pairs[i], {1 + random.Below(width), 1 + random.Below(width < 10 ? 9 : 14)}, 1, random);
            differences += difference.empty() ? 0 : 1;
            EXPECT_EQ("", difference);
        }
}

INSTANTIATE_TEST_SUITE_P(Levels, ImagesOfLevel, testing::ValuesIn(support::AvailableLevels()),
                         [](const auto& test) { return KyCpuLevel::GetName(test.param); });

TEST(Images, BandsOnThreadsGiveTheBytesOfTheWhole) {
    support::Random random(12);
    const std::vector<Pair> pairs = RegisteredPairs();
    for (std::size_t i = 0; i < pairs.size() && !HasFailure(); i += 5 * support::Stride())
        EXPECT_EQ("", DifferenceOf(pairs[i], {1 + random.Below(300), 1 + random.Below(60)}, 3, random));
}

TEST(Images, AConverterOfAPairConvertsItLikeTheFunctions) {
    support::Random random(13);
    GuardedImage source(kBayer8, 21, 9, Role::kSource, random);
    GuardedImage destination(KY_RGB24, 21, 9, Role::kDestination, random);
    const KyConversion conversion = Conversion(KY_FLAG_BAYER_INTERPOLATE);
    ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&source.image, &destination.image, &conversion));
    const Lines expected = destination.Read();

    const KyImageConverter found(kBayer8, KY_TYPE_RGB24);
    const KyImageConverter given(*KyPixelTypeFactory::FindConverter(kBayer8, KY_TYPE_RGB24));
    for (const KyImageConverter* converter : {&found, &given})
        for (const bool parallel : {false, true}) {
            EXPECT_TRUE(converter->IsValid());
            std::fill_n(destination.image.data, destination.image.size, std::uint8_t{0});
            EXPECT_EQ(KY_STATUS_SUCCESS,
                      parallel ? converter->ConvertParallel(source.image, destination.image, &conversion, nullptr)
                               : converter->Convert(source.image, destination.image, &conversion));
            EXPECT_EQ(expected, destination.Read());
        }
    std::uint32_t lines = 0, sameLines = 1;
    EXPECT_EQ(KY_STATUS_SUCCESS, found.GetBandStep(source.image, destination.image, &conversion, lines));
    KyImage_GetBandStep(&source.image, &destination.image, &conversion, &sameLines);
    EXPECT_EQ(sameLines, lines);

    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, found.Convert(destination.image, source.image, nullptr));
    EXPECT_STREQ(KyImageConverter::GetError(), KyImage_GetError());
    const KyImageConverter none(KY_TYPE_RGB24, kBayer8);
    EXPECT_FALSE(none.IsValid());
    EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, none.Convert(destination.image, source.image, nullptr));
}

/// Converts nothing.
class Misbehaving : public KyPixelConverter {
public:
    Misbehaving() : KyPixelConverter(0x0001F900, KY_TYPE_GRAYSCALE8, 1, 1, 1, 1) {}
    using KyPixelConverter::Convert;
    std::uint32_t Convert(const std::uint8_t*, std::uint32_t, std::uint32_t, std::uint8_t*, std::uint32_t,
                          std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) const override {
        if (throws) throw std::runtime_error("the camera is on fire");
        return 77;
    }
    bool throws = false;
};

TEST(Images, TellOfAnApplicationsConverterThatFails) {
    static Misbehaving converter;
    const KyPixelType type(0x0001F900, 8, 1, false);
    KyPixelTypeFactory::RegisterPixelType(0x0001F900, &type, "Gray of ours");
    support::Random random(14);
    GuardedImage source(KY_GRAYSCALE8, 5, 5, Role::kSource, random);
    source.image.type = 0x0001F900;
    GuardedImage destination(KY_GRAYSCALE8, 5, 5, Role::kDestination, random);
    const auto convert = [&] { return KyImage_Convert(&source.image, &destination.image, nullptr); };
    EXPECT_EQ(77u, convert());
    EXPECT_NE(
        std::string::npos,
        std::string(KyImage_GetError()).find("Gray of ours) to 0x00010001 (Grayscale 8-bits) returned status 77"));
    converter.throws = true;
    EXPECT_EQ(KY_STATUS_OUT_OF_MEMORY, convert());
    EXPECT_NE(std::string::npos, std::string(KyImage_GetError()).find("the camera is on fire"));
    EXPECT_EQ(KY_STATUS_OUT_OF_MEMORY, KyImage_ConvertParallel(&source.image, &destination.image, nullptr, nullptr));
}

#if !defined(_WIN32)

/// Lines more than 4 GiB apart, in memory that is there only where it is touched.
TEST(Images, LinesMayBeGigabytesApart) {
    constexpr std::size_t stride = std::size_t{5} << 30, size = 2 * stride + 4096;
    void* const memory =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) GTEST_SKIP() << "no address space";
    support::Random random(16);
    for (const std::int64_t to : {KY_TYPE_RGB24, KY_TYPE_RGB24_PLANAR})
        for (const std::uint32_t flags : {0u, std::uint32_t{KY_FLAG_BAYER_INTERPOLATE}}) {
            GuardedImage tight(kBayer8, 40, 3, Role::kSource, random);
            GuardedImage destination(to, 40, 3, Role::kDestination, random);
            const Lines lines = tight.Read();
            KyImage source = {kBayer8, 40, 3, static_cast<std::uint8_t*>(memory), size, stride, 0};
            for (std::size_t y = 0; y < 3; ++y) std::memcpy(source.data + y * stride, &lines[y * 40], 40);
            const KyConversion conversion = Conversion(flags);
            ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&tight.image, &destination.image, &conversion));
            const std::vector<std::uint8_t> expected = destination.Memory();
            std::memset(destination.image.data, 0, 40);
            ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&source, &destination.image, &conversion));
            EXPECT_EQ(expected, destination.Memory());
        }
    munmap(memory, size);
}

#endif

/// A converter of an application's own that was made for words, registered for a type of bytes as well.
TEST(Images, StayInsideWhereAConverterExpectsLargerPixels) {
    const KyPixelType type(0x0001F901, 12, 1, false);
    KyPixelTypeFactory::RegisterPixelType(0x0001F901, &type, nullptr);
    static const KyGrayscale16ToGrayscale8 converter(0x0001F901, 4);
    support::Random random(15);
    GuardedImage source(KY_GRAYSCALE8, 64, 3, Role::kSource, random);
    source.image.type = 0x0001F901;
    GuardedImage destination(KY_GRAYSCALE8, 64, 3, Role::kDestination, random);
    EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&source.image, &destination.image, nullptr));
}

}  // namespace

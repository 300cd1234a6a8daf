// What is refused, in which words, and that nothing is written then.
#include <tests/images/ImageCase.h>
#include <tests/support/Emulation.h>
#include <tests/support/Sanitizers.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <limits>
#include <thread>

namespace {

constexpr std::size_t kHuge = std::numeric_limits<std::size_t>::max();

struct Request {
    std::array<std::uint8_t, 4096> bytes = {};
    KyImage source = {kBayer8, 16, 8, bytes.data(), 1024, 0, 0};
    KyImage destination = {KY_RGB24, 16, 8, bytes.data() + 1024, 3072, 0, 0};
    KyConversion conversion = Conversion();

    std::uint32_t Convert() const { return KyImage_Convert(&source, &destination, &conversion); }
};

struct Row {
    std::function<void(Request&)> spoil;
    const char* text;  ///< part of it
    std::uint32_t status = KY_STATUS_BAD_ARGUMENT;
};

const Row kRows[] = {
    {[](Request& r) { r.source.type = 0x0002F999; },
     "source.type is 0x0002F999 (Unregistered pixel type), expected a registered type"},
    {[](Request& r) { r.destination.type = -1; }, "destination.type is 0xFFFFFFFFFFFFFFFF (Unregistered"},
    {[](Request& r) { r.destination.type = 0x00040001; },
     "no converter is registered from 0x00020010 (Bayer RGB 8-bits) to 0x00040001 (YUV 8-bits 4:2:2); the source "
     "converts to 0x00020001 (RGB 16-bits), 0x00020002 (RGB 24-bits)",
     KY_STATUS_NOT_SUPPORTED},
    {[](Request& r) { r.source.data = nullptr; }, "source.data is null, expected 128 bytes"},
    {[](Request& r) { r.destination.data = nullptr; }, "destination.data is null, expected 384 bytes"},
    {[](Request& r) { r.source.size = 127; },
     "source holds 127 bytes, 16x8 of type 0x00020010 (Bayer RGB 8-bits) needs 128"},
    {[](Request& r) { r.source.stride = 20, r.source.size = 155; }, "needs 156 with lines 20 bytes apart"},
    {[](Request& r) { r.destination.size = 383; }, "destination holds 383 bytes"},
    {[](Request& r) { r.source.stride = 15; },
     "source.stride is 15, a line of 16 pixels of type 0x00020010 (Bayer RGB 8-bits) has 16 bytes"},
    {[](Request& r) { r.destination.stride = 47; }, "destination.stride is 47"},
    {[](Request& r) { r.source.stride = kHuge; }, "needs more bytes than can be addressed"},
    {[](Request& r) { r.source.stride = kHuge / 7 + 1; }, "needs more bytes than can be addressed"},
    {[](Request& r) { r.source.width = r.destination.width = 15; }, nullptr, KY_STATUS_SUCCESS},
    {[](Request& r) { r.source.width = 15; },
     "the source has 15x8 pixels, the destination 16x8: expected the same size"},
    {[](Request& r) { r.destination.height = 9; }, "the destination 16x9"},
    {[](Request& r) { r.destination.data = r.source.data + 127; },
     "source and destination overlap: the destination begins 127 bytes after the source, which has 128"},
    {[](Request& r) { r.source.data = r.destination.data + 383; },
     "overlap: the destination begins 383 bytes before the source and has 384"},
    {[](Request& r) { r.destination.data = r.source.data + 128; }, nullptr, KY_STATUS_SUCCESS},
    {[](Request& r) {
         r.destination = r.source;
         r.destination.data += 8;
     },
     "overlap"},
    {[](Request& r) { r.source.type = 0x00210001, r.source.height = r.destination.height = 7; },
     "source.height is 7, type 0x00210001 (Grayscale 8-bits, Interlaced) needs an even number of lines"},
    {[](Request& r) { r.source.type = 0x10010001, r.source.height = r.destination.height = 7; },
     "even number of lines"},
    {[](Request& r) { r.source.type = 0x00210001, r.source.planeStride = 63; },
     "source.planeStride is 63, each of the 2 fields has 64 bytes: 4 lines, 16 bytes apart"},
    {[](Request& r) { r.destination.type = KY_RGB24_PLANAR, r.destination.planeStride = 127; },
     "destination.planeStride is 127, each of the 3 planes has 128 bytes"},
    {[](Request& r) { r.destination.type = KY_RGB24_PLANAR, r.destination.planeStride = kHuge / 2; },
     "needs more bytes than can be addressed"},
    {[](Request& r) { r.destination.type = KY_RGB24_PLANAR, r.destination.planeStride = 1500; },
     "needs 3128 with planes or fields 1500 bytes apart"},
    {[](Request& r) { r.conversion.structSize = 0; },
     "conversion.structSize is 0, expected sizeof(KyConversion): at least 24"},
    {[](Request& r) { r.conversion.structSize = sizeof(KyConversion) + 8; }, nullptr, KY_STATUS_SUCCESS},
    {[](Request& r) { r.conversion.firstLine = 9; },
     "band of 0 lines from line 9 on reaches beyond the height, which is 8"},
    {[](Request& r) { r.conversion.firstLine = 8, r.conversion.lineCount = 0xFFFFFFFF; }, "reaches beyond"},
    {[](Request& r) { r.conversion.lineCount = 9; }, "reaches beyond"},
    {[](Request& r) { r.conversion.firstLine = 1; }, "the band from line 1 to line 8 is off its step"},
    {[](Request& r) { r.conversion.lineCount = 3; }, "the band from line 0 to line 3 is off its step"},
    {[](Request& r) { r.conversion.firstLine = 8; }, nullptr, KY_STATUS_SUCCESS},
};

TEST(ImageRefusal, SaysWhatWasExpectedAndWhatCame) {
    for (const Row& row : kRows) {
        Request request;
        row.spoil(request);
        const auto before = request.bytes;
        EXPECT_EQ(row.status, request.Convert()) << (row.text != nullptr ? row.text : KyImage_GetError());
        if (row.text == nullptr) continue;
        EXPECT_NE(std::string::npos, std::string(KyImage_GetError()).find(row.text)) << KyImage_GetError();
        EXPECT_EQ(before, request.bytes);
    }
}

TEST(ImageRefusal, TakesNullPointers) {
    const Request request;
    std::size_t bytes = 0;
    std::uint32_t lines = 0;
    const auto refused = [](std::uint32_t status, const char* text) {
        EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, status);
        EXPECT_STREQ(text, KyImage_GetError());
    };
    refused(KyImage_Convert(nullptr, &request.destination, nullptr), "source is null");
    refused(KyImage_Convert(&request.source, nullptr, nullptr), "destination is null");
    refused(KyImage_ConvertParallel(nullptr, &request.destination, nullptr, nullptr), "source is null");
    refused(KyImage_GetBandStep(&request.source, nullptr, nullptr, &lines), "destination is null");
    refused(KyImage_GetBandStep(&request.source, &request.destination, nullptr, nullptr), "lines is null");
    refused(KyImage_GetSize(nullptr, &bytes), "image is null");
    refused(KyImage_GetSize(&request.source, nullptr), "bytes is null");
    EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&request.source, &request.destination, nullptr)) << "all defaults";
    EXPECT_STREQ("bytes is null", KyImage_GetError()) << "of the last refusal";
    std::thread([] { EXPECT_STREQ("", KyImage_GetError()) << "of the calling thread"; }).join();
}

TEST(ImageRefusal, ImagesWithoutPixelsNeedNothing) {
    for (const auto& [width, height] : {std::pair(0u, 8u), {16u, 0u}, {0u, 0xFFFFFFFFu}, {0xFFFFFFFFu, 0u}}) {
        const KyImage source = {kBayer8, width, height, nullptr, 0, 1, 1};
        const KyImage destination = {KY_RGB24, width, height, nullptr, 0, 0, 0};
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&source, &destination, nullptr)) << KyImage_GetError();
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_ConvertParallel(&source, &destination, nullptr, nullptr));
        std::size_t bytes = 1;
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&source, &bytes));
        EXPECT_EQ(0u, bytes);
        std::uint32_t lines = 0;
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetBandStep(&source, &destination, nullptr, &lines));
        EXPECT_NE(0u, lines);
        KyImage unknown = source;
        unknown.type = 0;
        EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyImage_Convert(&unknown, &destination, nullptr));
    }
}

TEST(ImageSize, HoldsWholeGroupsAndEveryStride) {
    struct Size {
        std::int64_t type;
        std::uint32_t width, height;
        std::size_t stride, planeStride, expected;
    };
    for (const Size& row : {
             Size{k422, 5, 3, 0, 0, 36},
             Size{0x00040002, 5, 1, 0, 0, 24},
             Size{0x00440006, 5, 2, 0, 0, 24},
             Size{0x00440003, 5, 2, 0, 0, 30},
             Size{0x00410003, 5, 2, 0, 0, 18},
             Size{0x00420012, 1920, 1080, 0, 0, 3110400},
             Size{KY_RGB24, 5, 2, 0, 0, 30},
             Size{KY_BGR24, 5, 2, 16, 0, 31},
             Size{0x00420002, 5, 2, 0, 0, 30},
             Size{0x0002000A, 5, 2, 0, 0, 30},
             Size{KY_RGB24_PLANAR, 5, 2, 0, 0, 30},
             Size{KY_RGB24_PLANAR, 5, 2, 8, 0, 45},
             Size{0x0082000B, 5, 2, 8, 20, 73},
             Size{0x00210001, 5, 4, 8, 0, 29},
             Size{0x00210001, 5, 4, 8, 100, 113},
             Size{kCsi2, 5, 2, 0, 0, 14},
             Size{KY_RGB48, 0x40000000, 4, 0, 0, std::size_t{0x40000000} * 24},
         }) {
        RegisterApplicationConverters();
        const KyImage image = {row.type, row.width, row.height, nullptr, 0, row.stride, row.planeStride};
        std::size_t bytes = 0;
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&image, &bytes)) << KyImage_GetError();
        EXPECT_EQ(row.expected, bytes) << Describe(image);
    }
}

/// Lines and planes of less than 4 GiB are all that the area form can be told of.
TEST(ImageRefusal, ConvertersOfApplicationsTakeNoLargerLines) {
    RegisterApplicationConverters();
    // Nobody may look at what is there.
    auto* const first = reinterpret_cast<std::uint8_t*>(std::uintptr_t{1} << 40);
    auto* const second = reinterpret_cast<std::uint8_t*>(std::uintptr_t{2} << 40);
    const KyImage source = {0x00041001, 0x90000000u, 3, first, kHuge, 0, 0};
    const KyImage destination = {KY_GRAYSCALE8, 0x90000000u, 3, second, kHuge, 0, 0};
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyImage_Convert(&source, &destination, nullptr));
    EXPECT_NE(std::string::npos, std::string(KyImage_GetError()).find("images of 2415919104x3 pixels are too large"));
}

/// Memory of two images, the second of which is watched.
class Arena {
public:
    static constexpr std::uint32_t kSize = 2048;

    explicit Arena(support::Random& random)
        : source(kSize, Side::kEnd, 0), destination(kSize, Side::kStart, 0), sourceWas(random.Bytes(kSize)),
          was(random.Bytes(kSize)) {
        std::memcpy(source.data(), sourceWas.data(), kSize);
        std::memcpy(destination.data(), was.data(), kSize);
    }

    /// Whether nothing outside of these bytes has changed since the last time.
    bool HasChangedOnly(const std::uint8_t* first, std::size_t size) {
        if (first == nullptr) first = destination.data(), size = 0;
        const auto begin = static_cast<std::size_t>(first - destination.data());
        const auto isSame = [&](std::size_t from, std::size_t to) {
            return std::equal(destination.data() + from, destination.data() + to, was.data() + from);
        };
        const bool same = isSame(0, begin) && isSame(begin + size, kSize);
        if (size != 0) std::memcpy(was.data(), destination.data(), kSize);
        return same && std::ranges::equal(source.Data(), sourceWas);
    }

    using Side = support::GuardedBuffer::Side;
    support::GuardedBuffer source, destination;

private:
    std::vector<std::uint8_t> sourceWas, was;
};

/// Requests that are right, or wrong in one or more ways.
class RandomRequest {
public:
    RandomRequest(Arena& arena, const std::vector<std::pair<std::int64_t, std::int64_t>>& pairs,
                  support::Random& randomNumbers)
        : random(randomNumbers) {
        const auto& [from, to] = random.Pick(pairs);
        const std::uint32_t width = 1 + random.Below(12), height = (1 + random.Below(3)) * 2;
        source = MakeImage(from, width, height, GuardedImage::Role::kSource, arena.source);
        destination = MakeImage(to, width, height, GuardedImage::Role::kDestination, arena.destination);
        conversion = RandomConversion(random);
        for (std::uint32_t i = random.Below(4) * random.Below(2); i > 0; --i) Spoil(arena, pairs);
    }

    KyImage source, destination;
    KyConversion conversion;
    bool isRight = true;

private:
    KyImage MakeImage(std::int64_t type, std::uint32_t width, std::uint32_t height, GuardedImage::Role role,
                      support::GuardedBuffer& memory) {
        const Shape shape(type);
        const bool hasFields = shape.isInterlaced && role == GuardedImage::Role::kSource;
        const std::uint32_t parts = hasFields ? 2 : shape.planes, lines = hasFields ? height / 2 : height;
        KyImage image = {type, width, height, nullptr, 0, 0, 0};
        const std::size_t line = shape.LineBytes(width), stride = line + random.Below(2) * random.Below(12);
        const std::size_t part = stride * lines + random.Below(2) * random.Below(30);
        const std::size_t needed = (parts - 1) * part + (lines - 1) * stride + line;
        if (stride != line) image.stride = stride;
        if (part != stride * lines) image.planeStride = part;
        image.size = needed + random.Below(static_cast<std::uint32_t>(Arena::kSize - needed + 1)) * random.Below(2);
        image.data = memory.data() + random.Below(static_cast<std::uint32_t>(Arena::kSize - image.size + 1));
        return image;
    }

    template <typename Number>
    Number Extreme() {
        constexpr Number most = std::numeric_limits<Number>::max();
        static const std::uint32_t others[] = {0, 1, 3, 7, 100, 65536, 0x80000000u, 0xFFFFFFF9u};
        const auto number = random.Below(2) == 0 ? static_cast<Number>(most / (1 + random.Below(7)))
                                                 : static_cast<Number>(others[random.Below(8)]);
        return number + static_cast<Number>(random.Below(3)) - 1;
    }

    void Spoil(Arena& arena, const std::vector<std::pair<std::int64_t, std::int64_t>>& pairs) {
        isRight = false;
        KyImage& image = random.Below(2) == 0 ? source : destination;
        switch (random.Below(12)) {
            case 0: image.type = random.Below(2) == 0 ? random.Pick(pairs).first : random.Pick(pairs).second; break;
            case 1: image.type = static_cast<std::int64_t>(Extreme<std::uint64_t>()); break;
            case 2: image.width = Extreme<std::uint32_t>(); break;
            case 3: image.height = Extreme<std::uint32_t>(); break;
            case 4: source.width = destination.width = Extreme<std::uint32_t>(); break;
            case 5: source.height = destination.height = Extreme<std::uint32_t>(); break;
            case 6: image.stride = Extreme<std::size_t>(); break;
            case 7: image.planeStride = Extreme<std::size_t>(); break;
            case 8: image.size = image.size * random.Below(5) / 5; break;
            case 9: image.data = nullptr; break;
            case 10:  // overlapping, or not quite
                source.data = arena.destination.data() + random.Below(Arena::kSize / 2);
                source.size =
                    random.Below(static_cast<std::uint32_t>(arena.destination.data() + Arena::kSize - source.data));
                break;
            default:
                conversion.structSize = random.Below(2) == 0 ? conversion.structSize : random.Below(40);
                conversion.firstLine = random.Below(2) == 0 ? random.Below(9) : Extreme<std::uint32_t>();
                conversion.lineCount = random.Below(2) == 0 ? random.Below(9) : Extreme<std::uint32_t>();
        }
    }

    support::Random& random;
};

/// A random part of an image is refused, or lies inside of it.
void ExpectPartInside(const KyImage& image, support::Random& random) {
    const auto number = [&] { return random.Below(8) == 0 ? ~random.Below(20) : random.Below(12); };
    const std::uint32_t x = number(), y = number(), width = number(), height = number();
    KyImage part;
    if (KyImage_Crop(&image, x, y, width, height, &part, nullptr) != KY_STATUS_SUCCESS) return;
    std::size_t needed = 0;
    EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&part, &needed)) << Describe(image);
    EXPECT_EQ(needed, part.size) << Describe(image);
    EXPECT_TRUE(needed == 0 || (part.data >= image.data && part.data + needed <= image.data + image.size))
        << Describe(image) << ", part " << Describe(part);
}

TEST(ImageRefusal, AMillionRequestsAreConvertedOrRefused) {
    int count = support::IsEmulated() ? 30000 : 1000000;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    count = 100000;
#endif
    RegisterApplicationConverters();
    std::vector<std::pair<std::int64_t, std::int64_t>> pairs(1);
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumConverters(i, pairs.back().first, pairs.back().second); ++i)
        if ((pairs.back().first & 0xF000) == 0) pairs.emplace_back();  // other tests' have theirs
    pairs.pop_back();

    support::Random random(31);
    Arena arena(random);
    int converted = 0, refused = 0;
    for (int i = 0; i < count && !HasFailure(); ++i) {
        const RandomRequest request(arena, pairs, random);
        if (random.Below(4) == 0) ExpectPartInside(request.source, random);
        const std::uint32_t status = KyImage_Convert(&request.source, &request.destination, &request.conversion);
        if (status == KY_STATUS_SUCCESS) {
            ++converted;
            EXPECT_TRUE(arena.HasChangedOnly(request.destination.data, request.destination.size));
        } else {
            ++refused;
            EXPECT_FALSE(request.isRight) << KyImage_GetError();
            EXPECT_TRUE(status == KY_STATUS_BAD_ARGUMENT || status == KY_STATUS_NOT_SUPPORTED) << KyImage_GetError();
            EXPECT_GT(std::strlen(KyImage_GetError()), 20u);
            EXPECT_TRUE(arena.HasChangedOnly(nullptr, 0));
        }
        if (HasFailure())
            ADD_FAILURE() << "by request " << i << ": " << Describe(request.source) << " to "
                          << Describe(request.destination) << ", band " << request.conversion.firstLine << " + "
                          << request.conversion.lineCount;
    }
    EXPECT_GT(converted, count / 3);
    EXPECT_GT(refused, count / 5);
}

}  // namespace

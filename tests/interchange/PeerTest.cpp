#include <tests/interchange/PeerTest.h>
#include <tests/support/Random.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace interchange {

namespace {

Picture EmptyPicture(std::int64_t type, std::uint32_t width, std::uint32_t height) {
    const KyImage image = {type, width, height, nullptr, 0, 0, 0};
    std::size_t size = 0;
    EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&image, &size)) << KyImage_GetError();
    return {type, width, height, Bytes(size)};
}

KyImage ImageOf(Picture& picture) {
    return {picture.type, picture.width, picture.height, picture.bytes.data(), picture.bytes.size(), 0, 0};
}

Picture Convert(Picture source, std::int64_t type, std::uint32_t flags) {
    Picture result = EmptyPicture(type, source.width, source.height);
    const KyImage from = ImageOf(source), to = ImageOf(result);
    const KyConversion conversion = {sizeof conversion, flags, nullptr, 0, 0};
    EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&from, &to, &conversion)) << KyImage_GetError();
    return result;
}

void ApplyMask(Picture& picture, const Bytes& mask) {
    const std::size_t line = LineBytes(picture);
    for (std::size_t i = 0; i < picture.bytes.size(); ++i) picture.bytes[i] &= mask[i % line % mask.size()];
}

/// Samples from a quarter to three quarters of their range: a wave for each place in a group.
Bytes SmoothBytes(const Picture& picture, const Bytes& mask) {
    std::uint32_t groupPixels = 0, groupBytes = 0;
    KyPixelTypeFactory::FindPixelType(picture.type)->GetPixelGroup(groupPixels, groupBytes);
    const std::size_t line = (picture.width + groupPixels - 1) / groupPixels * groupBytes;
    const std::size_t step = mask.size();  // bytes of a sample
    const unsigned bits = step == 1 ? 0xFF : mask[0] + 256u * mask[1];
    Bytes bytes = picture.bytes;
    for (std::size_t i = 0; i + step <= bytes.size(); i += step) {
        const auto x = static_cast<double>(i % line / groupBytes * groupPixels), y = static_cast<double>(i / line);
        const auto place = static_cast<double>(i % groupBytes / step);
        const double wave = 0.5 + 0.23 * std::sin(x / 30 + y / 20 + 2 * place);
        unsigned sample = static_cast<unsigned>(wave * 65536);
        sample = step == 1 ? sample >> 8 : sample >> std::countl_zero(static_cast<std::uint16_t>(bits)) & bits;
        for (std::size_t k = 0; k < step; ++k) bytes[i + k] = static_cast<std::uint8_t>(sample >> 8 * k);
    }
    return bytes;
}

/// \param margin  pixels at each edge that are not compared
void ExpectNear(const Picture& result, const Picture& expected, const Row& row, std::uint32_t margin) {
    ASSERT_EQ(expected.bytes.size(), result.bytes.size());
    const std::size_t line = LineBytes(result), pixel = line / result.width;
    int largest = 0;
    std::size_t place = 0;
    for (std::size_t i = 0; i < result.bytes.size(); ++i) {
        const std::size_t x = i % line / pixel, y = i / line;
        if (x < margin || x + margin >= result.width || y < margin || y + margin >= result.height) continue;
        const int difference = std::abs(result.bytes[i] - expected.bytes[i]);
        if (difference > largest) largest = difference, place = i;
    }
    EXPECT_LE(largest, row.limit) << "byte " << place % line << " of line " << place / line << ": "
                                  << int{result.bytes[place]} << " here, " << int{expected.bytes[place]} << " there";
}

}  // namespace

void PeerTest::SetUp() {
    ASSERT_EQ(KY_STATUS_SUCCESS, KyExtendedTypes_Register());
    std::string name = std::filesystem::temp_directory_path() / "kyimglib-interchange-XXXXXX";
    ASSERT_NE(nullptr, mkdtemp(name.data()));
    folder = name;
}

void PeerTest::TearDown() {
    if (!folder.empty()) std::filesystem::remove_all(folder);
}

void PeerTest::CompareRow(std::uint32_t width, std::uint32_t height) const {
    const Row& row = GetParam();
    std::int64_t from = 0, to = 0;
    std::uint32_t flags = 0;
    ASSERT_EQ(KY_STATUS_SUCCESS, KyPixelFormat::Find(row.here != nullptr ? row.here : row.from, from, &flags))
        << KyImageConverter::GetError();
    ASSERT_EQ(KY_STATUS_SUCCESS, KyPixelFormat::Find(row.to, to)) << KyImageConverter::GetError();
    const bool isDemosaicing = flags != 0;
    if (isDemosaicing) flags |= KY_FLAG_BAYER_INTERPOLATE;

    Picture source = EmptyPicture(from, width, height);
    std::vector<Bytes> pictures = {support::Random(7).Bytes(source.bytes.size())};
    // Most random bytes are no colour in YUV, and saturate.
    if (IsYUV(from) || IsYUV(to)) pictures.push_back(SmoothBytes(source, row.sourceMask));
    for (const Bytes& picture : pictures) {
        SCOPED_TRACE(picture == pictures[0] ? "random" : "smooth");
        source.bytes = picture;
        ApplyMask(source, row.sourceMask);
        for (std::uint8_t& byte : source.bytes) byte = std::clamp(byte, row.lowest, row.highest);
        Picture result = Convert(source, to, flags);
        Picture expected = result;
        expected.bytes = ConvertByPeer(source, expected);
        if (HasFatalFailure()) return;
        ApplyMask(result, row.resultMask);
        ApplyMask(expected, row.resultMask);
        // The edges of a mosaic are treated in another way by each of them.
        ExpectNear(result, expected, row, isDemosaicing ? 2 : 0);
    }
}

void PeerTest::Run(const std::string& command) const {
    ASSERT_EQ(0, std::system(("cd '" + folder.string() + "' && " + command).c_str())) << command;
}

Bytes PeerTest::ReadFile(const char* name) const {
    std::ifstream file(folder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void PeerTest::WriteFile(const char* name, const Bytes& bytes) const {
    std::ofstream file(folder / name, std::ios::binary);
    for (const std::uint8_t byte : bytes) file.put(static_cast<char>(byte));
}

bool Succeeds(const std::string& command) { return std::system(("(" + command + ") >/dev/null 2>&1").c_str()) == 0; }

bool IsYUV(std::int64_t type) { return (type & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_YUV; }

std::size_t LineBytes(const Picture& picture) {
    std::uint32_t pixels = 0, bytes = 0;
    KyPixelTypeFactory::FindPixelType(picture.type)->GetPixelGroup(pixels, bytes);
    return (picture.width + pixels - 1) / pixels * bytes;
}

}  // namespace interchange

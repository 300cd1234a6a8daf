// Cameras with several outputs: what they make of a picture, the registered converters make a picture again.
#include <KyImgLib/KyImgLib.h>
#include <tests/support/Random.h>

#include <gtest/gtest.h>

#include <deque>
#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t kWidth = 92, kHeight = 6;

/// Samples of a picture by line, none above its bit size.
using Picture = std::vector<std::vector<unsigned>>;

/// One output of the sensor: a part of the line, from which it takes a sample at either end.
struct Output {
    std::deque<unsigned> part;
    bool fromTheEnd;

    unsigned Take() {
        const unsigned sample = fromTheEnd ? part.back() : part.front();
        fromTheEnd ? part.pop_back() : part.pop_front();
        return sample;
    }
};

std::vector<unsigned> Send(const std::vector<unsigned>& line, const std::vector<bool>& outputsFromTheEnd) {
    std::vector<Output> outputs;
    const auto size = static_cast<std::ptrdiff_t>(line.size() / outputsFromTheEnd.size());
    auto first = line.begin();
    for (const bool fromTheEnd : outputsFromTheEnd) {
        outputs.push_back({{first, first + size}, fromTheEnd});
        first += size;
    }
    std::vector<unsigned> sent;
    while (sent.size() < line.size())
        for (Output& output : outputs) sent.push_back(output.Take());
    return sent;
}

enum class Container { kBytes, kWords, kLeftAligned, kPairs };

void Append(std::vector<std::uint8_t>& bytes, const std::vector<unsigned>& samples, Container container,
            unsigned bits) {
    const auto append = [&](unsigned byte) { bytes.push_back(static_cast<std::uint8_t>(byte)); };
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const unsigned sample = samples[i],
                       word = container == Container::kLeftAligned ? sample << (16 - bits) : sample;
        if (container == Container::kPairs) {
            const unsigned next = samples[i + 1], lowMask = (1u << (bits - 8)) - 1;
            append(sample >> (bits - 8));
            append((sample & lowMask) | (next & lowMask) << 4);
            append(next >> (bits - 8));
            ++i;
            continue;
        }
        append(word);
        if (container != Container::kBytes) append(word >> 8);
    }
}

void ExpectPicture(std::int64_t source, std::int64_t destination, const std::vector<bool>& outputsFromTheEnd,
                   Container container, unsigned bits) {
    const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(source, destination);
    ASSERT_NE(nullptr, converter) << std::hex << source << " to " << destination;
    support::Random random(4);
    std::vector<std::uint8_t> sent, expected;
    for (std::uint32_t y = 0; y < kHeight; ++y) {
        std::vector<unsigned> line(kWidth);
        for (unsigned& sample : line) sample = random.Below(1u << bits);
        Append(sent, Send(line, outputsFromTheEnd), container, bits);
        const Container scanned = (destination & 0x00100000) != 0 ? Container::kLeftAligned : Container::kWords;
        Append(expected, line, bits == 8 ? Container::kBytes : scanned, bits);
    }
    std::vector<std::uint8_t> picture(expected.size());
    EXPECT_EQ(KY_STATUS_SUCCESS,
              converter->Convert(sent.data(), kWidth, kHeight, picture.data(), kWidth, kHeight, kWidth, kHeight, 0, 0));
    EXPECT_EQ(expected, picture) << std::hex << source << " to " << destination;
}

TEST(TapPicture, ComesBackFromEveryTypeOfTwoOutputs) {
    const std::pair<std::int64_t, std::vector<bool>> layouts[] = {{0x01000000, {false, false}},
                                                                  {0x02000000, {false, true}},
                                                                  {0x04000000, {true, false}},
                                                                  {0x08000000, {true, true}}};
    const struct {
        std::int64_t type, flags;
        Container container;
        unsigned bits;
    } sources[] = {{0x00010001, 0, Container::kBytes, 8},
                   {0x00020010, 0, Container::kBytes, 8},
                   {0x00020013, 0, Container::kBytes, 8},
                   {0x00010002, 0, Container::kWords, 10},
                   {0x00010003, 0, Container::kWords, 12},
                   {0x00020011, 0, Container::kWords, 10},
                   {0x00020012, 0, Container::kWords, 12},
                   {0x00010002, 0x00100000, Container::kLeftAligned, 10},
                   {0x00010003, 0x00100000, Container::kLeftAligned, 12},
                   {0x00020011, 0x00100000, Container::kLeftAligned, 10},
                   {0x00020012, 0x00100000, Container::kLeftAligned, 12},
                   {0x00010002, 0x00400000, Container::kPairs, 10},
                   {0x00010003, 0x00400000, Container::kPairs, 12},
                   {0x00020011, 0x00400000, Container::kPairs, 10},
                   {0x00020012, 0x00400000, Container::kPairs, 12},
                   {0x00020014, 0x00400000, Container::kPairs, 10},
                   {0x00020015, 0x00400000, Container::kPairs, 12}};
    for (const auto& [layout, outputs] : layouts)
        for (const auto& source : sources)
            ExpectPicture(source.type + source.flags + layout, source.type, outputs, source.container, source.bits);
}

TEST(TapPicture, ComesBackFromFourOutputs) {
    const std::vector<bool> outputs = {false, true, false, true};
    ExpectPicture(0x00010006, 0x00010001, outputs, Container::kBytes, 8);
    ExpectPicture(0x00010007, 0x00010002, outputs, Container::kWords, 10);
    ExpectPicture(0x00110007, 0x00110002, outputs, Container::kLeftAligned, 10);
}

TEST(TapPicture, ComesBackFromPackedTypesOfOneOutput) {
    for (const std::int64_t type : {0x00010002, 0x00020011, 0x00020014})
        ExpectPicture(type + 0x00400000, type, {false}, Container::kPairs, 10);
    for (const std::int64_t type : {0x00010003, 0x00020012, 0x00020015})
        ExpectPicture(type + 0x00400000, type, {false}, Container::kPairs, 12);
    ExpectPicture(0x00410008, 0x00010002, {false}, Container::kPairs, 10);
    ExpectPicture(0x00410009, 0x00010003, {false}, Container::kPairs, 12);
}

}  // namespace

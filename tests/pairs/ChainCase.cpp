#include <tests/pairs/ChainCase.h>

AreaCase RandomChainCase(const Path& path, const PairReference& reference, bool interpolated, std::uint32_t lineBytes,
                         std::uint32_t height, support::Random& random) {
    const std::uint32_t pixels = lineBytes / StagesOf(path).front()->GetDestinationByteSize();
    AreaCase test = RandomPairCase(reference, random.Below(2) == 0, interpolated, 1, height, random);
    test.sourceWidth = pixels + random.Below(pixels / 8);
    test.width = random.Below(2) == 0 ? test.sourceWidth : 1 + random.Below(test.sourceWidth);
    test.destinationWidth = test.width + random.Below(2) * random.Below(40);
    test.height = height;
    test.sourceLines = height + random.Below(2) * random.Below(20);
    test.destinationLines = height + random.Below(2) * random.Below(20);
    reference.FitSource(test);
    return test;
}

std::string Difference(const KyPixelConverter& chain, const Stages& stages, const AreaCase& test,
                       const std::uint8_t* source) {
    constexpr std::size_t kSlack = 256;  // for pixels that groups have beyond the end
    const std::size_t lineSize =
        chain.GetDestinationByteSize(std::max(test.destinationWidth, test.sourceWidth)) + std::size_t{test.padding};
    std::vector<std::uint8_t> expected(test.destinationLines * lineSize + kSlack, 0x5A), written = expected, image,
                                                                                         next;
    const auto convert = [&](const KyPixelConverter& converter, AreaCase area, const std::uint8_t* from,
                             std::vector<std::uint8_t>& to) {
        area.filter = test.filter;
        return Converting(converter, area)(from, to.data());
    };
    std::uint32_t status = convert(chain, test, source, written);
    for (const KyPixelConverter* const stage : stages) {
        if (stage == stages.back()) break;
        next.assign(std::size_t{stage->GetDestinationByteSize(test.sourceWidth)} * test.sourceLines + kSlack, 0xA5);
        status |= convert(*stage, {test.Whole()}, image.empty() ? source : image.data(), next);
        image.swap(next);
    }
    status |= convert(*stages.back(), test, image.data(), expected);
    if (status != KY_STATUS_SUCCESS) return test.Describe() + ": status " + std::to_string(status);
    const auto place = std::mismatch(written.begin(), written.end(), expected.begin());
    if (place.first == written.end()) return "";
    return test.Describe() + ": byte " + std::to_string(place.first - written.begin()) + " of " +
           std::to_string(written.size()) + " is " + std::to_string(*place.first) + ", not " +
           std::to_string(*place.second);
}

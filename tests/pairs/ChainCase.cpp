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

namespace {

constexpr std::size_t kSlack = 256;  // for pixels that groups have beyond the end

void Convert(const KyPixelConverter& converter, const AreaCase& test, const std::uint8_t* source,
             Picture& destination) {
    const std::uint32_t status = Converting(converter, test)(source, destination.data());
    if (status != KY_STATUS_SUCCESS) throw std::runtime_error(test.Describe() + ": status " + std::to_string(status));
}

Picture NewPicture(const KyPixelConverter& last, const AreaCase& test) {
    const std::size_t lineSize = last.GetDestinationByteSize(std::max(test.destinationWidth, test.sourceWidth));
    return Picture(test.destinationLines * (lineSize + test.padding) + kSlack, 0x5A);
}

}  // namespace

Picture Converted(const KyPixelConverter& chain, const AreaCase& test, const std::uint8_t* source) {
    Picture picture = NewPicture(chain, test);
    Convert(chain, test, source, picture);
    return picture;
}

Picture ConvertedByStages(const Stages& stages, const AreaCase& test, const std::uint8_t* source) {
    AreaCase whole{test.Whole()};
    whole.filter = test.filter;
    Picture image, next;
    for (const KyPixelConverter* const stage : stages) {
        if (stage == stages.back()) break;
        next.assign(std::size_t{stage->GetDestinationByteSize(test.sourceWidth)} * test.sourceLines + kSlack, 0xA5);
        Convert(*stage, whole, image.empty() ? source : image.data(), next);
        image.swap(next);
    }
    Picture picture = NewPicture(*stages.back(), test);
    Convert(*stages.back(), test, image.data(), picture);
    return picture;
}

std::string Difference(const AreaCase& test, const Picture& written, const Picture& expected) {
    const auto place = std::mismatch(written.begin(), written.end(), expected.begin(), expected.end());
    if (place.first == written.end()) return "";
    return test.Describe() + ": byte " + std::to_string(place.first - written.begin()) + " of " +
           std::to_string(written.size()) + " is " + std::to_string(*place.first) + ", not " +
           std::to_string(*place.second);
}

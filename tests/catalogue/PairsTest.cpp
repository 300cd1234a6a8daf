// The registered converters: which there are, and that they lead wherever users want to go.
#include <tests/catalogue/Listing.h>
#include <tests/pairs/Path.h>
#include <tests/reference/TypeFormat.h>

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <typeinfo>

namespace {

using Factory = KyPixelTypeFactory;
using reference::TypeFormat;

std::string ClassOf(const KyPixelConverter& converter) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(typeid(converter).name(), nullptr, nullptr, &status), &std::free);
    return name == nullptr ? typeid(converter).name() : name.get();
}

/// Source, what a chain goes through, destination, class, and bytes of a source and of a destination pixel.
std::string LineOf(const KyPixelConverter& converter) {
    Path path = {converter.GetSourceType(), converter.GetDestinationType()};
    if (const auto* const chain = dynamic_cast<const KyComplexConverter*>(&converter))
        path.insert(path.begin() + 1, chain->GetFirst().GetDestinationType());
    return Describe(path) + "  " + ClassOf(converter) + "  " + std::to_string(converter.GetSourceByteSize()) + " " +
           std::to_string(converter.GetDestinationByteSize());
}

TEST(CataloguePairs, AreTheListedOnes) {
    std::vector<std::string> lines;
    std::int64_t source = 0, destination = 0;
    for (std::uint32_t i = 0; Factory::EnumConverters(i, source, destination); ++i)
        lines.push_back(LineOf(*Factory::FindConverter(source, destination)));
    std::sort(lines.begin(), lines.end());
    const std::string difference = DifferenceToGolden("converters.golden.txt", lines);
    EXPECT_TRUE(difference.empty()) << difference;
}

TEST(CataloguePairs, ChainsAreOfRegisteredConverters) {
    std::int64_t source = 0, destination = 0;
    for (std::uint32_t i = 0; Factory::EnumConverters(i, source, destination); ++i)
        if (const auto* const chain =
                dynamic_cast<const KyComplexConverter*>(Factory::FindConverter(source, destination))) {
            const std::int64_t between = chain->GetFirst().GetDestinationType();
            EXPECT_EQ(Factory::FindConverter(source, between), &chain->GetFirst()) << Describe(PathOf(*chain));
            EXPECT_EQ(Factory::FindConverter(between, destination), &chain->GetSecond()) << Describe(PathOf(*chain));
        }
}

TEST(CataloguePairs, LeadFromEveryTypeToWhatUsersWant) {
    int pairs = 0;
    for (const std::int64_t id : AllTypes()) {
        const TypeFormat type(id);
        if (type.IsPlanar()) continue;  // these are destinations only
        std::vector<std::int64_t> wanted = {KY_TYPE_RGB16, KY_TYPE_RGB24, KY_TYPE_BGR24,
                                            KY_TYPE_RGB32, KY_TYPE_BGR32, KY_TYPE_RGB24_PLANAR};
        if (type.family == reference::Family::kGray) wanted.push_back(KY_TYPE_GRAYSCALE8);
        if (type.HasOneSample()) wanted.push_back(type.PlainType());
        for (const std::int64_t destination : wanted) {
            ++pairs;
            EXPECT_TRUE(Factory::HasConverter(id, destination))
                << Describe(Path{id, destination}) << ": " << Factory::GetPixelTypeName(id);
        }
    }
    EXPECT_GT(pairs, 1000) << "and there are types to begin with";
}

}  // namespace

// What the library registers while it is loaded: the published types and converters, which lead wherever users want to go.
// Nothing here registers anything of its own.
#include <tests/pairs/Path.h>
#include <tests/reference/TypeFormat.h>

#include <cxxabi.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <sstream>
#include <typeinfo>
#include <utility>

namespace {

using Factory = KyPixelTypeFactory;
using reference::TypeFormat;

/// All registered types, in ascending order.
std::vector<std::int64_t> AllTypes() {
    std::vector<std::int64_t> ids;
    for (std::int64_t id = 0; Factory::EnumPixelTypes(static_cast<std::uint32_t>(ids.size()), id);) ids.push_back(id);
    return ids;
}

/// Sorted lines must be those of a file beside the tests.
void ExpectGolden(const std::string& file, const std::vector<std::string>& lines) {
    const std::string golden = KYIMGLIB_TESTS_DIR "/catalogue/" + file, now = testing::TempDir() + file;
    std::vector<std::string> expected;
    std::ifstream in(golden);
    for (std::string line; std::getline(in, line);) expected.push_back(line);
    if (lines == expected) return;

    std::ofstream out(now);
    for (const std::string& line : lines) out << line << "\n";
    std::vector<std::string> missing, added;
    std::set_difference(expected.begin(), expected.end(), lines.begin(), lines.end(), std::back_inserter(missing));
    std::set_difference(lines.begin(), lines.end(), expected.begin(), expected.end(), std::back_inserter(added));
    std::ostringstream text;
    text << "\n" << missing.size() << " lines are gone, " << added.size() << " are new:\n";
    constexpr std::size_t kMost = 40;
    for (std::size_t i = 0; i < std::min(kMost, missing.size()); ++i) text << "- " << missing[i] << "\n";
    for (std::size_t i = 0; i < std::min(kMost, added.size()); ++i) text << "+ " << added[i] << "\n";
    text << "All of them:          diff " << golden << " " << now << "\n"
         << "If that is intended:  cp " << now << " " << golden << "\n";
    ADD_FAILURE() << text.str();
}

std::string LineOf(const KyPixelType& type) {
    char text[200];
    std::snprintf(text, sizeof text, "0x%08X  %2u bits  %u bytes  %s  %s", static_cast<unsigned>(type.GetTypeID()),
                  unsigned{type.GetPixelBitSize()}, unsigned{type.GetPixelByteSize()},
                  type.IsBayerPattern() ? "Bayer" : "-----", Factory::GetPixelTypeName(type.GetTypeID()));
    return text;
}

/// Source, what a chain goes through, destination, class, and bytes of a source and of a destination pixel.
std::string LineOf(const KyPixelConverter& converter) {
    Path path = {converter.GetSourceType(), converter.GetDestinationType()};
    if (const auto* const chain = dynamic_cast<const KyComplexConverter*>(&converter))
        path.insert(path.begin() + 1, chain->GetFirst().GetDestinationType());
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(typeid(converter).name(), nullptr, nullptr, &status), &std::free);
    return Describe(path) + "  " + (name == nullptr ? typeid(converter).name() : name.get()) + "  " +
           std::to_string(converter.GetSourceByteSize()) + " " + std::to_string(converter.GetDestinationByteSize());
}

TEST(Catalogue, TypesAreThePublishedOnes) {
    std::vector<std::string> lines;
    for (const std::int64_t id : AllTypes()) {
        lines.push_back(LineOf(*Factory::FindPixelType(id)));
        EXPECT_EQ(id, Factory::FindPixelType(id)->GetTypeID());
    }
    EXPECT_EQ(162u, lines.size());
    ExpectGolden("types.golden.txt", lines);
}

/// Other tests trust their own table of formats.
TEST(Catalogue, TypesAreWhatTheTestsTakeThemFor) {
    for (const std::int64_t id : AllTypes()) {
        const TypeFormat expected(id);
        const KyPixelType& type = *Factory::FindPixelType(id);
        SCOPED_TRACE(Factory::GetPixelTypeName(id));
        std::uint32_t pixels = 0, bytes = 0;
        type.GetPixelGroup(pixels, bytes);
        EXPECT_EQ(expected.PixelGroup().pixels, pixels);
        EXPECT_EQ(expected.PixelGroup().bytes, bytes);
        EXPECT_EQ(expected.PlainType(), type.GetPlainTypeID());
        EXPECT_EQ(expected.family == reference::Family::kBayer, type.IsBayerPattern());
        if (expected.HasOneSample()) {
            EXPECT_EQ(expected.bits, type.GetPixelBitSize());
        }
    }
}

TEST(Catalogue, ConvertersAreTheListedOnes) {
    std::vector<std::string> lines;
    std::int64_t source = 0, destination = 0;
    std::pair<std::int64_t, std::int64_t> before = {-1, -1};
    for (std::uint32_t i = 0; Factory::EnumConverters(i, source, destination); ++i) {
        EXPECT_LT(before, std::pair(source, destination)) << "in ascending order";
        before = {source, destination};
        const KyPixelConverter& converter = *Factory::FindConverter(source, destination);
        EXPECT_EQ(before, std::pair(converter.GetSourceType(), converter.GetDestinationType()));
        EXPECT_TRUE(Factory::HasPixelType(source) && Factory::HasPixelType(destination)) << Describe(PathOf(converter));
        lines.push_back(LineOf(converter));
        if (const auto* const chain = dynamic_cast<const KyComplexConverter*>(&converter)) {
            const std::int64_t between = chain->GetFirst().GetDestinationType();
            EXPECT_EQ(Factory::FindConverter(source, between), &chain->GetFirst()) << Describe(PathOf(*chain));
            EXPECT_EQ(Factory::FindConverter(between, destination), &chain->GetSecond()) << Describe(PathOf(*chain));
        }
    }
    std::sort(lines.begin(), lines.end());
    ExpectGolden("converters.golden.txt", lines);
}

TEST(Catalogue, ConvertersLeadFromEveryTypeToWhatUsersWant) {
    int pairs = 0;
    for (const std::int64_t id : AllTypes()) {
        const TypeFormat type(id);
        std::vector<std::int64_t> wanted = {id, type.Deinterlaced()};
        if (!type.IsPlanar())  // these are destinations only
            wanted.insert(wanted.end(), {KY_TYPE_RGB16, KY_TYPE_RGB24, KY_TYPE_BGR24, KY_TYPE_RGB32, KY_TYPE_BGR32,
                                         KY_TYPE_RGB24_PLANAR});
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

/// Nobody has to go through a type in between by hand.
TEST(Catalogue, WhereTwoConvertersLeadOneDoes) {
    std::multimap<std::int64_t, std::int64_t> destinations;
    std::int64_t source = 0, destination = 0;
    for (std::uint32_t i = 0; Factory::EnumConverters(i, source, destination); ++i)
        destinations.emplace(source, destination);
    for (const auto& [first, between] : destinations)
        for (auto [next, end] = destinations.equal_range(between); next != end; ++next)
            EXPECT_TRUE(Factory::HasConverter(first, next->second)) << Describe(Path{first, between, next->second});
}

}  // namespace

// What kyimg tells of the registry against the registry itself.
#include "ToolTest.h"

#include <KyImgLib/KyImgLib.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <sstream>
#include <utility>

namespace {

using Factory = KyPixelTypeFactory;
using Json = nlohmann::json;

std::int64_t IdOf(const Json& json) { return std::stoll(json.get<std::string>(), nullptr, 16); }

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

class ListTest : public ToolTest {
protected:
    ListTest() { KyExtendedTypes::Register(); }  // as the tool does

    Json RunJson(const std::string& arguments) const {
        const ToolResult result = Run(arguments + " --json");
        EXPECT_EQ(result.status, 0) << result.messages;
        return Json::parse(result.output);
    }
    void ExpectError(const std::string& arguments, int status, const std::string& text) const {
        const ToolResult result = Run(arguments);
        EXPECT_EQ(result.status, status) << arguments;
        EXPECT_NE(result.messages.find(text), std::string::npos) << arguments << ": " << result.messages;
    }
};

TEST_F(ListTest, TypesAreThoseOfTheRegistry) {
    const std::vector<std::string> lines = LinesOf(Run("list").output);
    const Json list = RunJson("list");
    std::int64_t id = 0;
    std::uint32_t index = 0;
    for (; Factory::EnumPixelTypes(index, id); ++index) {
        SCOPED_TRACE(Factory::GetPixelTypeName(id));
        const KyPixelType& type = *Factory::FindPixelType(id);
        ASSERT_LT(index + 1, lines.size());
        EXPECT_EQ(std::stoll(lines[index + 1], nullptr, 16), id);
        EXPECT_NE(lines[index + 1].find(Factory::GetPixelTypeName(id)), std::string::npos) << lines[index + 1];

        const Json& told = list.at(index);
        EXPECT_EQ(IdOf(told["id"]), id);
        EXPECT_EQ(told["name"], Factory::GetPixelTypeName(id));
        EXPECT_EQ(told["bits"], type.GetPixelBitSize());
        EXPECT_EQ(told["bytes"], type.GetPixelByteSize());
        EXPECT_EQ(told["bayer"], type.IsBayerPattern());
        EXPECT_EQ(told["interlaced"], (id & KY_TYPE_INTERLACED) != 0);
        EXPECT_EQ(told["packed"], (id & KY_TYPE_PACKED) != 0);
        EXPECT_EQ(told["taps"] == "single", (id & KY_TAP_LAYOUT_MASK) == 0);
        EXPECT_TRUE(told["family"].is_string()) << "no drawing";
        EXPECT_EQ(told["class"] == "KyPixelType", (id & KY_TYPE_EXTENDED) != 0);
        const bool namesBayer = told["class"].get<std::string>().find("Bayer") != std::string::npos;
        EXPECT_EQ(namesBayer, type.IsBayerPattern() && (id & KY_TYPE_EXTENDED) == 0);
    }
    EXPECT_EQ(list.size(), index);
    EXPECT_EQ(lines.size(), index + 1);
}

TEST_F(ListTest, ConvertersAreThoseOfTheRegistry) {
    const Json list = RunJson("list converters");
    std::int64_t from = 0, to = 0;
    std::uint32_t index = 0;
    std::map<std::string, int> counts;
    for (; Factory::EnumConverters(index, from, to); ++index) {
        const Json& told = list.at(index);
        SCOPED_TRACE(told.dump());
        EXPECT_EQ(std::pair(IdOf(told["source"]), IdOf(told["destination"])), std::pair(from, to));
        const KyPixelConverter* const converter = Factory::FindConverter(from, to);
        const auto* const chain = dynamic_cast<const KyComplexConverter*>(converter);
        const bool isIdentity = dynamic_cast<const KyIdentityConverter*>(converter) != nullptr;
        EXPECT_EQ(told["how"], chain != nullptr ? "chain" : isIdentity ? "identity" : "direct");
        ++counts[told["how"]];
        ASSERT_EQ(told.contains("through"), chain != nullptr);
        if (chain == nullptr) continue;
        EXPECT_EQ(IdOf(told["through"]), chain->GetSecond().GetSourceType());
    }
    EXPECT_EQ(list.size(), index);
    EXPECT_EQ(counts.size(), 3U);
}

TEST_F(ListTest, FiltersConverters) {
    const auto count = [this](const std::string& arguments) { return LinesOf(Run("list " + arguments).output).size(); };
    const Json from = RunJson("list --from 'Bayer RGB 12-bits, Packed'");
    ASSERT_GT(from.size(), 6U);
    EXPECT_TRUE(std::ranges::all_of(from, [](const Json& told) { return told["source"] == "0x00420012"; }));
    EXPECT_EQ(count("--from 0x420012"), from.size() + 3) << "with a title";
    const Json to = RunJson("list --to RGB24");
    EXPECT_TRUE(std::ranges::all_of(to, [](const Json& told) { return told["destination"] == "0x00020002"; }));
    EXPECT_GT(to.size(), 150U);
    EXPECT_EQ(count("--to RGB24"), to.size() + 3);
    EXPECT_EQ(RunJson("list --from 0x420012 --to RGB24").dump(),
              R"([{"destination":"0x00020002","how":"chain","source":"0x00420012","through":"0x00020012"}])");
    EXPECT_EQ(count("--from 0x420012 --to RGB24"), 2U);
    EXPECT_EQ(RunJson("list --from Mono8 --to Mono16").size(), 0U);
    ExpectError("list --from Mono8 --to Mono16", 1, "no converter from Grayscale 8-bits (0x00010001) to Grayscale 16");
    ExpectError("list types --from Mono8", 2, "leave out");
    ExpectError("list --from Mono9", 2, "did you mean");
    ExpectError("list pixels", 2, "types");
}

TEST_F(ListTest, InfoTellsOfOneType) {
    const std::string text = Run("info 'bayer rgb 10-bits, packed'").output;
    for (const char* part : {"(0x00420011)", "Bayer mosaic", "packed", "460800 bytes for 640x480", "BayerGB10Packed",
                             "p9 to p2", "0x00420011   identity", "0x00820002   chain     0x00020011"})
        EXPECT_NE(text.find(part), std::string::npos) << part << " is not in\n" << text;

    // Whole pairs, groups of four in fields of two lines and one, and lines without a partner.
    for (const auto& [frame, bytes] : {std::pair("0x420011 --size 5x3", "27"),
                                       {"RGB24 --size 5x3", "45"},
                                       {"0x640006 --size 5x3", "36"},
                                       {"NV12 --size 5x3", "27"},
                                       {"I420 --size 5x3", "27"},
                                       {"P010 --size 5x3", "54"},
                                       {"0x10010001 --size 65536x65537", "4295032832"}})
        EXPECT_NE(Run(std::string("info ") + frame).output.find(bytes + std::string(" bytes for ")), std::string::npos)
            << frame;

    for (const auto& [name, bytes] : {std::pair("BayerRG10p", "10, 1.25 (4 pixels in 5)"),
                                      {"Mono1p", "1, 0.125 (8 pixels in 1)"},
                                      {"YUY2", "16, 2 (2 pixels in 4)"},
                                      {"RGB8_Planar", "24, 3\n"},
                                      {"RGB24", "921600 bytes for 640x480\nbuffer         1228800 bytes"}})
        EXPECT_NE(Run(std::string("info ") + name).output.find(bytes), std::string::npos) << name;
    for (const char* same : {"Mono8", "BayerRG10p", "0x420002"})
        EXPECT_EQ(Run(std::string("info ") + same).output.find("\nbuffer"), std::string::npos) << same;
    EXPECT_EQ(RunJson("info Mono12p")["bytesPerPixel"], 1.5);
    EXPECT_EQ(RunJson("info RGB24 --size 5x3")["bufferBytes"], 60);
    EXPECT_EQ(RunJson("info RGB24 --size 32768x32767")["bufferBytes"], 4294836224);
    EXPECT_TRUE(RunJson("info RGB24 --size 32768x32768")["bufferBytes"].is_null()) << "32 bits do not hold it";

    const Json info = RunJson("info 0x02610002 --size 16x4");  // packed, two taps, interlaced
    const std::string layout = info["layout"].dump();
    for (const char* part : {"q9 to q2", "l0 l1 l2 l3 r3 r2 r1 r0", "fields: lines 0, 2, 4"})
        EXPECT_NE(layout.find(part), std::string::npos) << part << " is not in " << layout;
    EXPECT_EQ(info["frameBytes"], 96);
    EXPECT_EQ(info["converters"].size(), RunJson("list --from 0x02610002").size());
    ExpectError("info bayer9", 2, "Bayer RGB");
}

}  // namespace

#include "ToolTest.h"

#include <KyImgLib/KyImgLib.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <map>
#include <regex>
#include <set>

namespace {

using Json = nlohmann::json;

class CameraNamesTest : public ToolTest {
protected:
    std::string TypeOf(const std::string& name) const {
        const ToolResult result = Run("info '" + name + "' --json");
        return result.status == 0 ? Json::parse(result.output)["id"].get<std::string>() : result.messages;
    }
};

TEST_F(CameraNamesTest, StandForTypes) {
    const std::pair<const char*, const char*> names[] = {
        {"Mono8", "0x00010001"},    {"mono12packed", "0x00410009"}, {"Y16", "0x00010005"},
        {"BayerRG8", "0x00020010"}, {"BayerBG12", "0x00020012"},    {"BayerGR10Packed", "0x00420011"},
        {"BA81", "0x00020010"},     {"RG10", "0x00020011"},         {"bayer_gbrg8", "0x00020010"},
        {"rggb14le", "0x00020016"}, {"RGB8", "0x00020002"},         {"bgr24", "0x00020006"},
        {"XB24", "0x00020003"},     {"BGRx", "0x00020007"},         {"rgb48le", "0x00020004"},
        {"RGB10", "0x00020008"},    {"RGBa12", "0x0002000D"},       {"RGB8_Planar", "0x00820002"},
        {"YUV422_8", "0x00040001"}, {"YUY2", "0x00040001"},         {"YCbCr422_10", "0x00040002"},
        {"y210le", "0x00140002"},   {"YUV8_UYV", "0x00440003"},     {"YUV411_8_UYYVYY", "0x00440006"},
        {"BGR565p", "0x00020001"},  {"RGBP", "0x00020001"},         {"RGB16", "0x00020001"},  // not PFNC's
    };
    for (const auto& [name, type] : names) EXPECT_EQ(TypeOf(name), type) << name;

    // Other layouts, whose names are easily taken for those above.
    for (const char* name : {"Mono12p", "BayerRG12p", "Y10P", "Y10B", "RGB565p", "BGR16", "UYVY", "YUV422Packed",
                             "YUV24", "YCbCr411_8", "gray10be", "gbrp", "BayerRG16"})
        EXPECT_NE(TypeOf(name).find("unknown pixel type"), std::string::npos) << name;
    EXPECT_NE(TypeOf("Mono12p").find("no type has the packing of PFNC's \"p\" formats"), std::string::npos);
    EXPECT_NE(TypeOf("Mono12Packd").find("did you mean Mono12Packed (0x00410009)"), std::string::npos);
}

TEST_F(CameraNamesTest, TellTheBayerPattern) {
    for (const auto& [name, pattern] : std::map<std::string, std::string>{
             {"BayerRG8", "RGGB"}, {"BA10", "GRBG"}, {"bggr12le", "BGGR"}, {"BayerGB12Packed", "GBRG"}})
        EXPECT_NE(Run("info " + name).output.find("\nBayer pattern  " + pattern), std::string::npos) << name;
    for (const char* name : {"0x20010", "'Bayer RGB 8-bits'", "Mono8"})
        EXPECT_EQ(Run(std::string("info ") + name).output.find("Bayer pattern "), std::string::npos) << name;
}

/// What PFNC's rules for names say, against the attributes of the types.
TEST_F(CameraNamesTest, AgreeWithTheAttributesOfTypes) {
    const std::map<std::string, std::string> patterns = {
        {"GR", "GRBG"}, {"RG", "RGGB"}, {"GB", "GBRG"}, {"BG", "BGGR"}};
    const std::regex gray("(?:Mono|Bayer(..))([0-9]+)(Packed)?");
    const std::regex rgb("(?:RGB|BGR)(a?)([0-9]+)(?:a32|Packed|_Planar)?");
    std::map<std::string, std::set<std::string>> familiesByName;
    std::size_t checked = 0;
    for (const Json& type : Json::parse(Run("list --json").output)) {
        for (const Json& known : type["cameraNames"]) {
            const std::string name = known["name"];
            SCOPED_TRACE(name + " " + type["id"].get<std::string>());
            std::string folded = name;
            std::ranges::transform(folded, folded.begin(), [](unsigned char c) { return std::tolower(c); });
            familiesByName[folded].insert(type["family"].get<std::string>());
            EXPECT_EQ(known.contains("bayer"), type["bayer"]);
            EXPECT_EQ(type["taps"], "single");
            EXPECT_EQ(type["interlaced"], false);

            std::smatch parts;
            if (std::regex_match(name, parts, gray)) {
                EXPECT_EQ(type["bits"], std::stoi(parts[2]));
                EXPECT_EQ(type["packed"], parts[3].matched);
                ASSERT_EQ(type["bayer"], parts[1].matched);
                EXPECT_EQ(known.value("bayer", ""), parts[1].matched ? patterns.at(parts[1]) : "");
            } else if (known["standard"] == "PFNC" && std::regex_match(name, parts, rgb)) {
                const int channels = parts[1].length() > 0 || name.ends_with("a32") ? 4 : 3;
                EXPECT_EQ(type["bytes"], channels * (std::stoi(parts[2]) > 8 ? 2 : 1));
                EXPECT_EQ(type["planar"], name.ends_with("_Planar"));
            } else {
                continue;
            }
            ++checked;
        }
    }
    EXPECT_GT(checked, 50U);

    // A name for several types means the same bytes in all of them, in whichever standards it is found.
    for (const auto& [name, families] : familiesByName) EXPECT_EQ(families.size(), name == "rgb16" ? 2U : 1U) << name;
}

}  // namespace

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

TEST_F(CameraNamesTest, AreThoseOfTheLibrary) {
    EXPECT_EQ(TypeOf("YUY2"), "0x00040001");
    EXPECT_EQ(TypeOf("bayer_gbrg8"), "0x00020010");
    for (const char* name : {"Mono12Packd", "NV24", "0x2FFFF"}) {
        std::int64_t type = 0;
        EXPECT_NE(KyPixelFormat::Find(name, type), KY_STATUS_SUCCESS);
        EXPECT_EQ(TypeOf(name), std::string("kyimg: ") + KyImageConverter::GetError() + "\n");
    }
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
            // Built-in YUV and extended YCbCr of one layout convert alike but for rounding.
            const std::string family = type["family"];
            familiesByName[folded].insert(family.starts_with("Y") ? "YCbCr " + type["bits"].dump() : family);
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

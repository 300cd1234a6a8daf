#include "ToolTest.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

using Json = nlohmann::json;

/// Light of a made-up scene: a shaded background, reddish and yellowish things, some texture.
double Light(std::size_t channel, std::uint32_t x, std::uint32_t y) {
    constexpr double kPaints[4][3] = {{0.5, 0.5, 0.5}, {0.8, 0.25, 0.2}, {0.7, 0.55, 0.15}, {0.25, 0.4, 0.35}};
    constexpr double kSensor[3] = {0.6, 1, 0.65};
    const double shade = 0.55 + 0.25 * std::sin(x / 97.0) + 0.2 * std::cos(y / 71.0 + x / 301.0);
    const std::uint32_t thing = (x / 53 * 7 + y / 47 * 5) % 11;
    const double texture = 0.06 * std::sin(x * 0.7 + y * 0.3) * std::sin(y * 0.5);
    return kSensor[channel] * kPaints[thing < 4 ? thing : 0][channel] * std::clamp(shade + texture, 0.02, 1.0);
}

/// Samples of a sensor, with noise.
class Camera {
public:
    explicit Camera(unsigned bits) : white((1U << bits) - 1U) {}

    unsigned Sample(std::size_t channel, std::uint32_t x, std::uint32_t y) {
        const double noise = (static_cast<double>(random() % 1001) - 500) / 500 * 0.008;
        return static_cast<unsigned>(std::clamp(0.02 + Light(channel, x, y) + noise, 0.0, 1.0) * white);
    }

private:
    double white;
    std::mt19937 random{3};
};

struct Scene {
    std::uint32_t width, height;
    unsigned bits;
    std::string colours;  ///< of a cell: "RGGB", or "GGGG" for gray
};

using Line = std::vector<unsigned>;
using PackLine = std::function<Bytes(const Line&)>;

Bytes MakeFrame(const Scene& scene, const PackLine& pack, std::size_t stride = 0, std::size_t header = 0) {
    Camera camera(scene.bits);
    Bytes frame(header, 0);
    for (std::uint32_t y = 0; y < scene.height; ++y) {
        Line line;
        for (std::uint32_t x = 0; x < scene.width; ++x)
            line.push_back(camera.Sample(std::string("RGB").find(scene.colours[y % 2 * 2 + x % 2]), x, y));
        Bytes bytes = pack(line);
        bytes.resize(std::max(stride, bytes.size()));
        frame.insert(frame.end(), bytes.begin(), bytes.end());
    }
    return frame;
}

Bytes Octets(const Line& line) { return {line.begin(), line.end()}; }

Bytes Words(const Line& line) {
    Bytes bytes;
    for (const unsigned sample : line)
        bytes.insert(bytes.end(), {static_cast<std::uint8_t>(sample), static_cast<std::uint8_t>(sample >> 8)});
    return bytes;
}

Bytes BigEndianWords(const Line& line) {
    Bytes bytes = Words(line);
    for (std::size_t i = 0; i < bytes.size(); i += 2) std::swap(bytes[i], bytes[i + 1]);
    return bytes;
}

/// A stream of bits, lowest first.
PackLine PackedP(unsigned bits) {
    return [bits](const Line& line) {
        Bytes bytes(line.size() * bits / 8);
        for (std::size_t i = 0; i < line.size() * bits; ++i)
            bytes[i / 8] |= static_cast<std::uint8_t>((line[i / bits] >> i % bits & 1) << i % 8);
        return bytes;
    };
}

Bytes Packed12(const Line& line) {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < line.size(); i += 2)
        for (const unsigned byte : {line[i] >> 4, (line[i + 1] & 15) << 4 | (line[i] & 15), line[i + 1] >> 4})
            bytes.push_back(static_cast<std::uint8_t>(byte));
    return bytes;
}

Bytes Mipi10(const Line& line) {
    Bytes bytes;
    for (std::size_t i = 0; i + 3 < line.size(); i += 4) {
        unsigned low = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            bytes.push_back(static_cast<std::uint8_t>(line[i + k] >> 2));
            low |= (line[i + k] & 3) << 2 * k;
        }
        bytes.push_back(static_cast<std::uint8_t>(low));
    }
    return bytes;
}

/// RGB24 of the scene.
Bytes Colours(std::uint32_t width, std::uint32_t height) {
    Camera camera(8);
    Bytes rgb;
    for (std::uint32_t y = 0; y < height; ++y)
        for (std::uint32_t x = 0; x < width; ++x)
            for (std::size_t channel = 0; channel < 3; ++channel)
                rgb.push_back(static_cast<std::uint8_t>(camera.Sample(channel, x, y)));
    return rgb;
}

/// Y, U or V of a pixel of RGB24.
std::uint8_t Video(const Bytes& rgb, std::size_t pixel, char component) {
    const double r = rgb[3 * pixel], g = rgb[3 * pixel + 1], b = rgb[3 * pixel + 2];
    const double y = 0.257 * r + 0.504 * g + 0.098 * b + 16;
    const double u = -0.148 * r - 0.291 * g + 0.439 * b + 128, v = 0.439 * r - 0.368 * g - 0.071 * b + 128;
    return static_cast<std::uint8_t>(component == 'Y' ? y : component == 'U' ? u : v);
}

Bytes Uyvy(std::uint32_t width, std::uint32_t height) {
    const Bytes rgb = Colours(width, height);
    Bytes bytes;
    for (std::size_t i = 0; i < std::size_t{width} * height; i += 2)
        for (const std::uint8_t byte :
             {Video(rgb, i, 'U'), Video(rgb, i, 'Y'), Video(rgb, i, 'V'), Video(rgb, i + 1, 'Y')})
            bytes.push_back(byte);
    return bytes;
}

Bytes Nv12(std::uint32_t width, std::uint32_t height) {
    const Bytes rgb = Colours(width, height);
    Bytes bytes;
    for (std::size_t i = 0; i < std::size_t{width} * height; ++i) bytes.push_back(Video(rgb, i, 'Y'));
    for (std::size_t y = 0; y < height; y += 2)
        for (std::size_t x = 0; x < width; ++x)
            bytes.push_back(Video(rgb, y * width + x / 2 * 2, x % 2 == 0 ? 'U' : 'V'));
    return bytes;
}

Bytes Swapped(Bytes rgb) {
    for (std::size_t i = 0; i < rgb.size(); i += 3) std::swap(rgb[i], rgb[i + 2]);
    return rgb;
}

class GuessTest : public ToolTest {
protected:
    Json GuessesOf(const std::string& name) const {
        const ToolResult result = Run("guess --json " + name);
        EXPECT_EQ(result.status, 0) << result.messages;
        return Json::parse(result.output)[0]["guesses"];
    }
};

TEST_F(GuessTest, NamesTypeSizeAndPatternFirst) {
    struct Known {
        const char* text;  // type, size, stride, header, pattern
        Bytes frame;
    };
    const Known all[] = {
        {"0x00020010 320x240 320 0 RGGB", MakeFrame({320, 240, 8, "RGGB"}, Octets)},
        {"0x00020010 301x203 304 64 GRBG", MakeFrame({301, 203, 8, "GRBG"}, Octets, 304, 64)},
        {"0x00020012 320x240 640 0 BGGR", MakeFrame({320, 240, 12, "BGGR"}, Words)},
        {"0x00020011 322x200 1024 0 GBRG", MakeFrame({322, 200, 10, "GBRG"}, Words, 1024)},
        {"0x10002000C 320x200 640 0 RGGB", MakeFrame({320, 200, 14, "RGGB"}, BigEndianWords)},
        {"0x100420001 320x240 400 0 GRBG", MakeFrame({320, 240, 10, "GRBG"}, PackedP(10))},
        {"0x00420012 320x240 480 0 RGGB", MakeFrame({320, 240, 12, "RGGB"}, Packed12)},
        {"0x100420004 320x240 400 0 BGGR", MakeFrame({320, 240, 10, "BGGR"}, Mipi10)},
        {"0x00010001 319x241 319 0 -", MakeFrame({319, 241, 8, "GGGG"}, Octets)},
        {"0x00010003 320x240 640 512 -", MakeFrame({320, 240, 12, "GGGG"}, Words, 0, 512)},
        {"0x100410002 320x240 480 0 -", MakeFrame({320, 240, 12, "GGGG"}, PackedP(12))},
        {"0x100040110 320x240 640 0 -", Uyvy(320, 240)},
        {"0x1008401B0 320x240 320 0 -", Nv12(320, 240)},
        {"0x00020006 320x240 960 0 -", Swapped(Colours(320, 240))},
    };
    for (const Known& known : all) {
        Write("f.raw", known.frame);
        const Json best = GuessesOf("f.raw")[0];
        const std::string said = best["id"].get<std::string>() + " " + std::to_string(best["width"].get<int>()) + "x" +
                                 std::to_string(best["height"].get<int>()) + " " +
                                 std::to_string(best["stride"].get<int>()) + " " +
                                 std::to_string(best["headerBytes"].get<int>()) + " " +
                                 (best["bayer"].is_null() ? "-" : best["bayer"].get<std::string>());
        EXPECT_EQ(said, known.text) << best.dump(1);
    }
}

TEST_F(GuessTest, CommandOfAGuessConvertsIt) {
    const Bytes frame = MakeFrame({301, 203, 8, "GRBG"}, Octets, 304, 64);
    Write("shot 1.raw", frame);
    Bytes film = MakeFrame({320, 240, 8, "GGGG"}, Octets);
    const Bytes second(film.rbegin(), film.rend());
    film.insert(film.end(), second.begin(), second.end());
    Write("film.raw", film);
    for (const std::string name : {"'shot 1.raw'", "film.raw"}) {
        const std::string command = GuessesOf(name)[0]["command"];
        ASSERT_EQ(command.rfind("kyimg convert " + name, 0), 0U) << command;
        EXPECT_EQ(Run(command.substr(6)).status, 0) << command;
    }
    EXPECT_EQ(DecodePng("shot 1.png").width, 301U);
    EXPECT_EQ(ListFiles().count("film-0002.png"), 1U);
    ASSERT_EQ(Run("guess 'shot 1.raw' -n 3 --sheet sheet.png").status, 0);
    EXPECT_GT(DecodePng("sheet.png").height, 2 * 203U);
}

TEST_F(GuessTest, NameDecidesWhatBytesDoNot) {
    const Bytes frame = MakeFrame({320, 240, 8, "RGGB"}, Octets);
    Write("a_bggr.raw", frame);
    EXPECT_EQ(GuessesOf("a_bggr.raw")[0]["bayer"], "BGGR");
    Write("a_YVYU.raw", Uyvy(320, 240));
    EXPECT_EQ(GuessesOf("a_YVYU.raw")[0]["id"], "0x100040110") << "bytes decide against a name";
}

TEST_F(GuessTest, RefusesWhatIsNoFrame) {
    Write("small.raw", MakeBytes(40));
    EXPECT_EQ(Run("guess small.raw").status, 1);
    Write("picture.raw", {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0});
    EXPECT_NE(Run("guess picture.raw").messages.find("a PNG"), std::string::npos);
    EXPECT_EQ(Run("guess small.raw picture.raw --sheet s.png").status, 2);
    EXPECT_EQ(Run("guess").status, 2);
}

}  // namespace

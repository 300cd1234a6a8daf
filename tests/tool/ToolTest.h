#ifndef TESTS_TOOL_TOOLTEST_H
#define TESTS_TOOL_TOOLTEST_H

#include "RunProgram.h"

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>
#include <gtest/gtest.h>
#include <png.h>

#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

struct ToolResult {
    int status;
    std::string output;
    std::string messages;  // standard error
};

struct DecodedPng {
    std::uint32_t width = 0, height = 0;
    int depth = 0, channels = 0;
    int significantBits = 0;  // of the sBIT chunk
    Bytes samples;            // the high byte of two first
};

/// Random bytes, the same in every run.
inline Bytes MakeBytes(std::size_t count) {
    std::mt19937 generator(7);
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(generator() >> 24);
    return bytes;
}

/// Of RGB24.
inline Bytes ToPlanes(const Bytes& rgb) {
    Bytes planes;
    for (std::size_t channel = 0; channel < 3; ++channel)
        for (std::size_t i = channel; i < rgb.size(); i += 3) planes.push_back(rgb[i]);
    return planes;
}

/// Bytes of an image without padding.
inline std::size_t SizeHere(std::int64_t type, std::uint32_t width, std::uint32_t height) {
    const KyImage image = {type, width, height, nullptr, 0, 0, 0};
    std::size_t bytes = 0;
    EXPECT_EQ(KyImage_GetSize(&image, &bytes), KY_STATUS_SUCCESS) << KyImage_GetError();
    return bytes;
}

/// What the library itself makes of such an image.
inline Bytes ConvertHere(std::int64_t type, Bytes pixels, std::uint32_t width, std::uint32_t height,
                         std::int64_t destinationType, std::uint32_t flags = 0, const KyRGBFilter* filter = nullptr) {
    const KyImage source = {type, width, height, pixels.data(), pixels.size(), 0, 0};
    Bytes converted(SizeHere(destinationType, width, height));
    const KyImage destination = {destinationType, width, height, converted.data(), converted.size(), 0, 0};
    const KyConversion conversion = {sizeof conversion, flags, filter, 0, 0};
    EXPECT_EQ(KyExtendedTypes_Register(), KY_STATUS_SUCCESS);
    EXPECT_EQ(KyImage_Convert(&source, &destination, &conversion), KY_STATUS_SUCCESS) << KyImage_GetError();
    return converted;
}

inline std::string Text(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

/// Runs the program that the environment variable KYIMG names, in an empty folder of the test's own.
class ToolTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(std::getenv("KYIMG"), nullptr) << "KYIMG must hold the path of the program";
        folder = std::filesystem::temp_directory_path() / ("kyimg-test-" + std::to_string(std::random_device()()));
        ASSERT_TRUE(std::filesystem::create_directories(folder / "files"));
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    /// `arguments` are for the shell.
    ToolResult Run(const std::string& arguments, const Bytes& input = {}) const {
        Write("../stdin", input);
        const int status = RunProgram(arguments, folder);
        ToolResult result = {status, ReadText("../stdout"), ReadText("../stderr")};
#if defined(_WIN32)  // text has other ends of lines there; a picture must not
        if (arguments.find("-o -") == std::string::npos) std::erase(result.output, '\r');
        std::erase(result.messages, '\r');
#endif
        return result;
    }

    /// A command of the shell in the folder of the files; not on Windows.
    int Shell(const std::string& command) const {
        return std::system(("cd '" + (folder / "files").string() + "'; " + command).c_str());
    }

    void Write(const std::string& name, const Bytes& bytes) const {
        std::ofstream file(folder / "files" / name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    std::string ReadText(const std::string& name) const {
        std::ifstream file(folder / "files" / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    Bytes Read(const std::string& name) const {
        const std::string text = ReadText(name);
        return {text.begin(), text.end()};
    }
    std::set<std::string> ListFiles() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / "files"))
            names.insert(entry.path().filename().string());
        return names;
    }

    DecodedPng DecodePng(const std::string& name) const {
        DecodedPng picture;
        std::FILE* const file = std::fopen((folder / "files" / name).string().c_str(), "rb");
        if (file == nullptr) return picture;
        png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        if (setjmp(png_jmpbuf(png)) == 0) {
            png_init_io(png, file);
            png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
            picture.width = png_get_image_width(png, info);
            picture.height = png_get_image_height(png, info);
            picture.depth = png_get_bit_depth(png, info);
            picture.channels = png_get_channels(png, info);
            png_color_8p significant = nullptr;
            if (png_get_sBIT(png, info, &significant) != 0) picture.significantBits = significant->red;  // of gray, too
            for (std::uint32_t y = 0; y < picture.height; ++y) {
                const std::uint8_t* const row = png_get_rows(png, info)[y];
                picture.samples.insert(picture.samples.end(), row, row + png_get_rowbytes(png, info));
            }
        }
        png_destroy_read_struct(&png, &info, nullptr);
        std::fclose(file);
        return picture;
    }

    std::filesystem::path folder;
};

#endif

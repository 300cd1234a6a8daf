#ifndef TESTS_INTERCHANGE_PEERTEST_H
#define TESTS_INTERCHANGE_PEERTEST_H

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace interchange {

using Bytes = std::vector<std::uint8_t>;

/// Matrix and range of a source's YUV.
enum class Colours : std::uint8_t { k601, k601FullRange, k709, k709FullRange };

/// A conversion, by the names that the other tool has for its formats. The library finds its types by the same names.
struct Row {
    const char* from;
    const char* to;
    int limit = 0;  ///< largest difference of two bytes
    /// Bits that samples have in the bytes of a source, over and over; all others are 0, as these formats want them.
    Bytes sourceMask = {0xFF};
    std::uint8_t lowest = 0, highest = 0xFF;  ///< bytes of a source
    /// Bits that are compared in the bytes of a line of the results, over and over.
    Bytes resultMask = {0xFF};
    Colours colours = Colours::k601;
    const char* here =
        nullptr;   ///< the library's name of the source, where names of the other tool do not say the colours
    int code = 0;  ///< of the conversion, where the other tool has codes instead of names
};

inline void PrintTo(const Row& row, std::ostream* out) { *out << row.from << " to " << row.to; }

/// Name of a row's test.
inline std::string NameOf(const testing::TestParamInfo<Row>& row) {
    std::string name = row.param.from;
    if (row.param.here != nullptr) name.append("_").append(row.param.here);
    name.append("_to_").append(row.param.to);
    std::ranges::replace_if(
        name, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

/// Lines follow one another without padding.
struct Picture {
    std::int64_t type;
    std::uint32_t width, height;
    Bytes bytes;
};

/// Converts pictures by the library and by another tool, and compares.
class PeerTest : public testing::TestWithParam<Row> {
protected:
    void SetUp() override;
    void TearDown() override;

    /// What the other tool makes of a picture: the bytes that a picture of the library's destination type has.
    virtual Bytes ConvertByPeer(const Picture& source, const Picture& destination) const = 0;

    void CompareRow(std::uint32_t width, std::uint32_t height) const;

    /// Runs a shell command in the folder of the files; a status other than 0 is a failure.
    void Run(const std::string& command) const;
    Bytes ReadFile(const char* name) const;
    void WriteFile(const char* name, const Bytes& bytes) const;

private:
    std::filesystem::path folder;
};

/// Whether a shell command succeeds. What it prints is lost.
bool Succeeds(const std::string& command);

bool IsYUV(std::int64_t type);

/// Bytes of a line, of the first plane where a picture has several.
std::size_t LineBytes(const Picture& picture);

}  // namespace interchange

#endif

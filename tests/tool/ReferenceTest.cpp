#include "ToolTest.h"

#include <algorithm>
#include <sstream>

namespace {

class ReferenceTest : public ToolTest {};

TEST_F(ReferenceTest, PageInTheRepositoryIsCurrent) {
    std::ifstream file(KYIMGLIB_TESTS_DIR "/../docs/formats.md", std::ios::binary);
    std::istringstream now(Run("reference").output);
    std::string expected, line;
    for (int number = 1; std::getline(now, expected); ++number) {
        std::getline(file, line);
        ASSERT_EQ(line, expected) << "docs/formats.md is out of date at line " << number << ": run `make docs`";
    }
    EXPECT_FALSE(std::getline(file, line)) << "docs/formats.md is out of date at its end: run `make docs`";
}

TEST_F(ReferenceTest, TablesAreWhole) {
    std::istringstream page(Run("reference").output);
    std::ptrdiff_t columns = 0;  // 0: not in a table
    std::size_t typeRows = 0;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("| ", 0) != 0 || line.find("| R R") == 0 || line.find("| U |") == 0) {
            columns = 0;
            continue;
        }
        const std::ptrdiff_t bars = std::ranges::count(line, '|');
        if (columns == 0) columns = bars;
        EXPECT_EQ(bars, columns) << line;
        typeRows += line.rfind("| `0x", 0) == 0;
    }
    EXPECT_GT(typeRows, 2 * 162U);
}

#if defined(__linux__)
TEST_F(ReferenceTest, LinesFitTheTerminal) {
    if (std::system("script --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "needs script, of util-linux";
    const std::string arguments = "list --from 0x08420015 --to 0x00020002";
    // It runs the program in a terminal of its own.
    const std::string command = "script -qec 'stty cols 72; \"$KYIMG\" " + arguments + "' /dev/null </dev/null >'";
    EXPECT_EQ(std::system((command + (folder / "files" / "shown").string() + "'").c_str()), 0);
    std::string shown = ReadText("shown");
    std::erase(shown, '\r');

    const std::string piped = Run(arguments).output;
    EXPECT_EQ(std::ranges::count(piped, '\n'), 2) << "for programs, a line each";
    EXPECT_GT(std::ranges::count(shown, '\n'), 3);
    std::istringstream lines(shown), words(shown), expectedWords(piped);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 72U) << line;
    for (std::string expected, word; expectedWords >> expected && words >> word;) EXPECT_EQ(word, expected);
}
#endif

}  // namespace

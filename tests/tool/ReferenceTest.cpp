#include "ToolTest.h"

#include <algorithm>
#include <sstream>

#if !defined(_WIN32)
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

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

#if !defined(_WIN32)
TEST_F(ReferenceTest, LinesFitTheTerminal) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    winsize size = {};
    size.ws_row = 24;
    size.ws_col = 72;
    ASSERT_EQ(ioctl(terminal, TIOCSWINSZ, &size), 0);
    const std::string name = ptsname(terminal);
    // Held open, so that what was written stays there to be read.
    const int other = open(name.c_str(), O_RDWR | O_NOCTTY);
    const std::string arguments = "list --from 0x08420015 --to 0x00020002";
    EXPECT_EQ(std::system(("\"$KYIMG\" " + arguments + " >" + name).c_str()), 0);
    // What was written may arrive in pieces; the mark comes last.
    constexpr char kEnd = '\f';
    EXPECT_EQ(write(other, &kEnd, 1), 1);
    std::string shown;
    for (char byte; read(terminal, &byte, 1) == 1 && byte != kEnd;) shown += byte;
    close(other);
    close(terminal);
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

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
/// A terminal that programs write to by its name, and from which the test reads what they wrote.
class PseudoTerminal {
public:
    PseudoTerminal() : reading(posix_openpt(O_RDWR | O_NOCTTY)) {
        if (reading < 0 || grantpt(reading) != 0 || unlockpt(reading) != 0) return;
        if (const char* const path = ptsname(reading)) name = path;
        // Held open, so that what was written stays there to be read.
        writing = open(name.c_str(), O_RDWR | O_NOCTTY);
    }
    ~PseudoTerminal() {
        for (const int end : {writing, reading})
            if (end >= 0) close(end);
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    bool IsOpen() const { return writing >= 0; }
    const std::string& GetName() const { return name; }

    void SetColumns(unsigned short columns) const {
        winsize size = {};
        size.ws_row = 24;
        size.ws_col = columns;
        ASSERT_EQ(ioctl(reading, TIOCSWINSZ, &size), 0);
    }

    std::string ReadAll() const {
        // What was written may arrive in pieces; the mark comes last.
        constexpr char kEnd = '\f';
        EXPECT_EQ(write(writing, &kEnd, 1), 1);
        std::string text;
        for (char byte; read(reading, &byte, 1) == 1 && byte != kEnd;) text += byte;
        std::erase(text, '\r');
        return text;
    }

private:
    int reading, writing = -1;
    std::string name;
};

TEST_F(ReferenceTest, LinesFitTheTerminal) {
    const PseudoTerminal terminal;
    if (!terminal.IsOpen()) GTEST_SKIP() << "needs a pseudo-terminal, which this system does not give";
    terminal.SetColumns(72);
    const std::string arguments = "list --from 0x08420015 --to 0x00020002";
    EXPECT_EQ(std::system(("\"$KYIMG\" " + arguments + " >" + terminal.GetName()).c_str()), 0);
    const std::string shown = terminal.ReadAll();

    const std::string piped = Run(arguments).output;
    EXPECT_EQ(std::ranges::count(piped, '\n'), 2) << "for programs, a line each";
    EXPECT_GT(std::ranges::count(shown, '\n'), 3);
    std::istringstream lines(shown), words(shown), expectedWords(piped);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 72U) << line;
    for (std::string expected, word; expectedWords >> expected && words >> word;) EXPECT_EQ(word, expected);
}
#endif

}  // namespace

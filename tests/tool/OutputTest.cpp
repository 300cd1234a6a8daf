#include "ToolTest.h"

namespace {

const std::string kCommand = "convert in.raw --type 0x20010 --size 64x48 --to 0x20010 ";
const std::string kTwoFrames = "convert in.raw --type 0x20010 --size 64x24 --to 0x20010 --frames all ";

void SetVariable(const char* name, const char* value) {
#if defined(_WIN32)
    _putenv_s(name, value);
#else
    setenv(name, value, 1);
#endif
}

class OutputTest : public ToolTest {
protected:
    void SetUp() override {
        ToolTest::SetUp();
        Write("in.raw", mosaic);
    }

    void ExpectRefused(const std::string& arguments, const std::string& reason,
                       const std::string& command = kCommand) const {
        const ToolResult result = Run(command + arguments);
        EXPECT_EQ(result.status, 1) << arguments;
        EXPECT_NE(result.messages.find(reason), std::string::npos) << arguments << '\n' << result.messages;
        EXPECT_EQ(Read("in.raw"), mosaic) << arguments;
    }

    const Bytes mosaic = MakeBytes(64 * 48);
};

TEST_F(OutputTest, InputIsNeverOverwritten) {
    namespace fs = std::filesystem;
    const fs::path files = folder / "files";
    fs::create_hard_link(files / "in.raw", files / "hard.raw");
    for (const char* name : {"in.raw", "./in.raw", "../files/in.raw", "hard.raw"})
        ExpectRefused(std::string("-o ") + name, "it is the input");

    // Also where only the number of a frame makes the name.
    Write("film-0002.raw", MakeBytes(2 * 64 * 48));
    EXPECT_NE(Run("convert film-0002.raw --type 0x20010 --size 64x48 --to 0x20010 --frames all -o film.raw")
                  .messages.find("cannot write film-0002.raw: it is the input"),
              std::string::npos);
    EXPECT_EQ(Read("film-0002.raw"), MakeBytes(2 * 64 * 48));
#if !defined(_WIN32)
    fs::create_symlink("in.raw", files / "link.raw");
    ExpectRefused("-o link.raw", "it is the input");
    ExpectRefused("--format raw -o - >>in.raw 2>../stderr #", "it is the input");
    EXPECT_NE(Run("convert --type 0x20010 --size 64x48 --to 0x20010 -o in.raw <in.raw").messages.find("is the input"),
              std::string::npos);
#endif
}

TEST_F(OutputTest, NoClobberLeavesWhatIsThere) {
    Write("out.raw", {1});
    Write("film-0002.raw", {2});
    ExpectRefused("--no-clobber -o out.raw", "cannot write out.raw: it exists");
    ExpectRefused("--no-clobber -o film.raw", "cannot write film-0002.raw: it exists", kTwoFrames);
    EXPECT_EQ(Read("out.raw"), Bytes{1});
    EXPECT_EQ(Read("film-0002.raw"), Bytes{2});
    EXPECT_EQ(Run(kCommand + "--no-clobber -o new.raw").status, 0);
    EXPECT_EQ(Run(kCommand + "--no-clobber --format raw -o -").output, Text(mosaic));
    EXPECT_EQ(ListFiles(), (std::set<std::string>{"in.raw", "out.raw", "film-0001.raw", "film-0002.raw", "new.raw"}));
}

TEST_F(OutputTest, UnknownCpuLevelOfTheEnvironmentIsTold) {
    SetVariable("KYIMGLIB_CPU_LEVEL", "turbo");
    const ToolResult result = Run("list");
    EXPECT_EQ(Run("--help").status, 0);
    SetVariable("KYIMGLIB_CPU_LEVEL", "");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.messages.rfind("kyimg: KYIMGLIB_CPU_LEVEL: \"turbo\" is none of scalar", 0), 0U)
        << result.messages;
    EXPECT_EQ(Run("--version").status, 0);
}

#if !defined(_WIN32)

TEST_F(OutputTest, DescriptorsAreStreams) {
    const std::string text = Text(mosaic), command = kCommand + "--format raw -o ";
    EXPECT_EQ(Run(command + "/dev/stdout | cat").output, text);
    EXPECT_EQ(Run(command + "/dev/fd/1 | cat").output, text);
    EXPECT_EQ(Run(command + "/proc/self/fd/1 | cat").output, text);
    EXPECT_EQ(Run(command + "/dev/fd/3 3>&1 | cat").output, text);
    // What is there already stays, and frames follow one another.
    Write("all.raw", {'a', 'b'});
    ASSERT_EQ(Run(kTwoFrames + "--format raw -o /dev/stdout >>all.raw #").status, 0);
    EXPECT_EQ(ReadText("all.raw"), "ab" + text);
    EXPECT_NE(Run(kTwoFrames + "--format png -o /dev/stdout").messages.find("one another"), std::string::npos);
    EXPECT_NE(Run(command + "/dev/fd/99").messages.find("cannot write /dev/fd/99: Bad file"), std::string::npos);
    EXPECT_EQ(ListFiles(), (std::set<std::string>{"in.raw", "all.raw"}));
}

/// TERM stands for all: INT and HUP may be ignored by what runs the tests, and then stay so.
TEST_F(OutputTest, SignalsRemoveTheTemporaryFile) {
    Write("large.raw", MakeBytes(2000 * 1500));
    const int status = Shell(
        "\"$KYIMG\" convert large.raw -q --type 0x20010 --size 2000x1500 -i --png-compression best -o out.png & "
        "for try in $(seq 500); do ls .kyimg-*.tmp 2>/dev/null && break; sleep 0.02; done >seen; "
        "kill -TERM $! && wait $! 2>/dev/null; test $? -gt 128");
    EXPECT_EQ(status, 0) << "it was not ended";
    EXPECT_EQ(ReadText("seen").rfind(".kyimg-", 0), 0U);
    EXPECT_EQ(ListFiles(), (std::set<std::string>{"in.raw", "large.raw", "seen"}));
}

#endif

}  // namespace

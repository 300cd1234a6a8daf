#include "ToolTest.h"

#include <KyImgLib/KyImgLib.h>

#include <sstream>

namespace {

/// A message is one line, says who speaks, and contains `text`.
void ExpectMessage(const ToolResult& result, int status, const std::string& text) {
    EXPECT_EQ(result.status, status) << result.messages;
    EXPECT_EQ(result.messages.rfind("kyimg: ", 0), 0U) << result.messages;
    EXPECT_EQ(result.messages.find('\n'), result.messages.size() - 1) << result.messages;
    EXPECT_NE(result.messages.find(text), std::string::npos) << result.messages << "\nlacks: " << text;
}

class CommandLineTest : public ToolTest {
protected:
    const Bytes frame = MakeBytes(640 * 4);
};

TEST_F(CommandLineTest, MistakesAreToldAndLeaveNothing) {
    struct Mistake {
        const char* arguments;  // after: convert in.raw -o out.png
        int status;
        const char* text;
    };
    const Mistake mistakes[] = {
        {"--type 0x20010 --size 1920x1080 --bayer RGGB", 1,
         "frame holds 2560 bytes, 1920x1080 Bayer RGB 8-bits needs 2073600"},
        {"--type 0x20010 --size 640x2 --bayer RGGB", 1, "for 2 frames give --frames all"},
        {"--type 0x20010 --size 100x100 --bayer RGGB --frames all", 1, "no whole number of frames"},
        {"--type 0x20010 --size 640x2 --bayer RGGB --frames 3", 1, "frame 3 of 640x2 Bayer RGB 8-bits ends at 3840"},
        {"--type 0x20010 --size 640x4 --skip-bytes 2561", 1, "2560 of the 2561 bytes to be skipped"},
        {"--type 0x20010 --size 640x0", 2, "no pixels"},
        {"--type 0x20010 --size 65536x65536", 1, "65536x65536 Bayer RGB 8-bits needs 4294967296"},
        {"--type 0x20004 --size 4294967295x4294967295", 2, "more bytes than can be addressed"},
        {"--type 0x20010 --size 4294967296x1", 2, "at most 4294967295 pixels"},
        {"--type 0x20010 --size 99999999999999999999x1", 2, "not like 1920x1080"},
        {"--type 0x20010 --size 640", 2, "not like 1920x1080"},
        {"--type 0x2FFFF --size 640x4", 2, "no pixel type 0x2FFFF"},
        {"--type 'bayer 8' --size 640x4", 2, "did you mean Bayer RGB 8-bits (0x00020010)"},
        {"--type nonsense --size 640x4", 2, "unknown pixel type"},
        {"--type 0x10001 --size 640x4 --to 0x40001", 1, "the source converts to 0x00010001 (Grayscale 8-bits)"},
        {"--type 0x20010 --size 640x4 --bayer RGBG", 2, "--bayer"},
        {"--type 0x10001 --size 640x4 --demosaic nearest", 2, "--demosaic is for demosaicing"},
        {"--type 0x10001 --size 640x4 --bayer RGGB", 2, "--bayer is for demosaicing"},
        {"--type 0x10001 --size 640x4 --gain 1,2,3", 2, "gray takes one value"},
        {"--type 0x20010 --size 640x4 --gain -1,1,1", 2, "-1 is not a factor"},
        {"--type 0x20010 --size 640x4 --gain 1,nan,1", 2, "nan is not a factor"},
        {"--type 0x20010 --size 640x4 --gain 1,2", 2, "--gain"},
        {"--type 0x20010 --size 640x4 --offset 0,256,0", 2, "256 is not a whole number from 0 to 255"},
        {"--type 0x20010 --size 640x4 --frames 3-2", 2, "--frames"},
        {"--type 0x20010 --size 640x4 --format gif", 2, "unknown format \"gif\"; there are png, "},
        {"--type 0x410002 --size 639x4", 1, "in lines of 960 bytes without --continuous needs 3840"},
        {"--type 0x410002 --size 65536x65536 --continuous", 1, "at most 4294967295 pixels"},
        {"--type 0x20010 --size 1x640 --demosaic nearest", 1, "two lines of two pixels (--demosaic bilinear does not)"},
        {"--type 0x410002 --size 640x4 --to 0x410002", 2, "these can: raw"},
        {"--type 0x40001 --size 639x3", 1, "639x3 YUV 8-bits 4:2:2 in lines of 1280 bytes needs 3840"},
        {"--type 0x40001 --size 11x5 --line-bytes 22", 2,
         "a line of 11 pixels of type 0x00040001 (YUV 8-bits 4:2:2) has 24 bytes"},
        {"--type 0x20010 --size 600x4 --line-bytes 641", 1, "600x4 Bayer RGB 8-bits in lines of 641 bytes needs 2564"},
        {"--type 0x20010 --size 640x4 --line-bytes -640", 2, "negative"},
        {"--type 0x20010 --size 640x4 --line-bytes 4294967295", 1, "in lines of 4294967295 bytes needs 17179869180"},
        {"--type RGB16 --size 320x4 --gain 1,2,3", 2, "conversions of colours"},
        {"--type Mono8 --size 600x4", 1, "2560 bytes are 4 lines of 640: --stride 640"},
        {"--type Mono8 --size 640x3", 1, "2560 bytes are 4 lines: --size 640x4"},
        {"--type Mono8 --size 850x3", 1, "10 bytes more may be a header: --skip-bytes 10"},
        {"--type Mono8 --size 320x4", 1, "(for 2 frames give --frames all); such a frame of Mono10,"},
        {"--type 0x20010 --size 512x4", 1, "such a frame of BayerGR10p, pgAA has as many"},
        {"--type Mono8 --size 999x999", 1, "kyimg guess may find out"},
        {"--type 0x20010 --size 640x4 --gian 2", 2, "--gian: did you mean --gain?"},
        {"--typ 0x20010 --size 640x4", 2, "did you mean --type?"},
        {"--type 0x20010 --size 640x4 --cpu-level turbo", 2, "scalar"},
        {"--type 0x20010 --size 640x4 --threads 0", 2, "--threads"},
        {"--type 0x20010 --size 640x4 --fast", 2, "--fast"},
    };
    Write("in.raw", frame);
    for (const Mistake& mistake : mistakes) {
        SCOPED_TRACE(mistake.arguments);
        ExpectMessage(Run(std::string("convert in.raw -q -o out.png ") + mistake.arguments), mistake.status,
                      mistake.text);
        EXPECT_EQ(ListFiles(), std::set<std::string>{"in.raw"});
    }
}

TEST_F(CommandLineTest, PipedInputMustBeWholeFrames) {
    const std::string command = "convert --type 0x20010 --bayer RGGB -o out.png --size ";
    ExpectMessage(Run(command + "640x5", frame), 1, "frame holds 2560 bytes, 640x5 Bayer RGB 8-bits needs 3200");
    ExpectMessage(Run(command + "640x2", frame), 1, "more than the 1280 bytes");
    ExpectMessage(Run(command + "640x4"), 1, "frame holds 0 bytes");
    ExpectMessage(Run(command + "640x4 --frames all"), 1, "frame 1 holds 0 bytes");
    EXPECT_EQ(ListFiles(), std::set<std::string>{});
    ExpectMessage(Run(command + "640x3 --frames all -i", frame), 1, "frame 2 holds 640 bytes");
    EXPECT_EQ(ListFiles(), std::set<std::string>{"out-0001.png"});
}

TEST_F(CommandLineTest, FilesThatCannotBeReadOrWritten) {
    const std::string command = "convert --type 0x20010 --bayer RGGB --size 640x4 ";
    ExpectMessage(Run(command + "missing.raw -o out.png"), 1, "cannot read missing.raw: No such file");
    ExpectMessage(Run(command + ". -o out.png"), 1, "directory");
    ExpectMessage(Run(command + "-o missing/out.png", frame), 1, "cannot write missing/out.png: No such file");
    ExpectMessage(Run(command + "-o ../files --format png", frame), 1, "directory");
    ExpectMessage(Run(command + "-o out", frame), 2, "--format");
    EXPECT_EQ(ListFiles(), std::set<std::string>{});
    if (!std::filesystem::is_character_file("/dev/full")) return;  // there is none on Windows
    ExpectMessage(Run(command + "-o /dev/full --format ppm", frame), 1, "No space left");
    ExpectMessage(Run(command + "-o - --format ppm >/dev/full 2>../stderr #", frame), 1, "No space left");
}

TEST_F(CommandLineTest, ExistingOutputIsReplacedWholeOrKept) {
    Write("out.ppm", {1, 2, 3});
    const std::string command = "convert --type 0x20010 --bayer RGGB -o out.ppm --size ";
    EXPECT_EQ(Run(command + "640x5", frame).status, 1);
    EXPECT_EQ(Read("out.ppm"), (Bytes{1, 2, 3}));
    EXPECT_EQ(Run(command + "640x4", frame).status, 0);
    EXPECT_EQ(Read("out.ppm").size(), 13 + 3 * frame.size());
    EXPECT_EQ(ListFiles(), std::set<std::string>{"out.ppm"});
}

TEST_F(CommandLineTest, KnownFlawsAreTold) {
    ExpectMessage(Run("convert --size 320x4 -o out.png --type RGB16 --to RGB24", frame), 0, "only green");
    EXPECT_EQ(Run("convert --size 320x4 -o out.png --type RGB16", frame).messages, "");
    ExpectMessage(Run("convert --size 16x10 -o out.png --type 0x440006", MakeBytes(240)), 0, "red");
    EXPECT_EQ(Run("convert --size 16x10 -o out.raw --type 0x440006 --to 0x440006", MakeBytes(240)).messages, "");
}

TEST_F(CommandLineTest, OddBitsAreTold) {
    const std::string command = "convert --size 2x1 -o out.png --type ";
    ExpectMessage(Run(command + "Mono10", {0, 3, 0, 4}), 0, "bits above the 10 of the type (0x0700)");
    ExpectMessage(Run(command + "Mono12", {0, 1, 0xFF, 3}), 0, "no sample uses the upper 2");
    EXPECT_EQ(Run(command + "Mono12", {0, 4, 0xFF, 3}).messages, "");
    EXPECT_EQ(Run(command + "Mono12", {0, 0, 0, 0}).messages, "") << "black tells nothing";
}

TEST_F(CommandLineTest, HelpIsACommand) {
    for (const std::string command : {"convert", "guess", "stats", "compare", "patterns", "list", "info", "help"}) {
        const ToolResult help = Run("help " + command);
        EXPECT_EQ(help.output, Run(command + " --help").output);
        EXPECT_NE(help.output.find("Example"), std::string::npos) << command;
    }
    EXPECT_EQ(Run("help").output, Run("--help").output);
    ExpectMessage(Run("help conver"), 2, "did you mean convert?");
    ExpectMessage(Run("patern"), 2, "did you mean patterns?");
}

TEST_F(CommandLineTest, AssumedBayerPatternIsTold) {
    const std::string command = "convert --size 640x4 -o out.png --type ";
    ExpectMessage(Run(command + "0x20010", frame), 0, "GRBG assumed");
    EXPECT_EQ(Run(command + "0x20010 -q", frame).messages, "");
    EXPECT_EQ(Run(command + "0x20010 --bayer RGGB", frame).messages, "");
    const Bytes bytes = Read("out.png");
    // A name of PFNC tells the pattern, and so does the name of a type that is called RGGB.
    for (const char* type : {"BayerRG8", "0x20013"}) {
        EXPECT_EQ(Run(command + type, frame).messages, "") << type;
        EXPECT_EQ(Read("out.png"), bytes) << type;
    }
}

TEST_F(CommandLineTest, VersionNamesTheCpuLevels) {
    std::string expected;
    for (std::uint32_t level = 0; level < KyCpuLevel::GetCount(); ++level)
        expected += std::string("level ") + KyCpuLevel::GetName(level) +
                    (KyCpuLevel::IsAvailable(level) ? " available\n" : " unavailable\n");
    const std::string active = KyCpuLevel::GetName(KyCpuLevel::GetActive());
    const std::string text = Run("--version").output;
    EXPECT_NE(text.find("\nactive " + active + "\n" + expected), std::string::npos) << text;
    EXPECT_NE(Run("--version --cpu-level scalar").output.find("\nactive scalar\n"), std::string::npos);
    EXPECT_NE(Run("convert --help").output.find("--bayer"), std::string::npos);
    ExpectMessage(Run(""), 2, "command");
}

TEST_F(CommandLineTest, CommandsAreListedOnceAndInTheManual) {
    std::ifstream file(KYIMGLIB_TESTS_DIR "/../tools/kyimg/kyimg.1.in");
    const std::string manual{std::istreambuf_iterator<char>(file), {}};
    const std::string help = Run("--help").output;
    std::istringstream commands(help.substr(help.find("Subcommands:\n")));
    std::string line;
    std::getline(commands, line);
    std::set<std::string> names;
    while (std::getline(commands, line) && !line.empty()) {
        const std::string name = line.substr(2, line.find(' ', 2) - 2);
        EXPECT_TRUE(names.insert(name).second) << name;
        EXPECT_NE(manual.find("\n.TP\n.B " + name + "\n"), std::string::npos) << name;
        EXPECT_EQ(Run(name + " --help").status, 0);
    }
    EXPECT_EQ(names.count("patterns"), 1U) << help;
    EXPECT_EQ(names.count("orders"), 0U) << "an alias";
}

}  // namespace

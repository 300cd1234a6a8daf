#include <KyImgLib/platform/KyCpuLevel.h>
#include <KyImgLib/platform/KyStatus.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/Emulation.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

TEST(CpuLevel, TellsItsLevels) {
#if defined(__x86_64__)
    const std::vector<std::string> expected = {"scalar", "sse4", "avx2", "avx512", "avx512vbmi"};
#elif defined(__aarch64__)
    const std::vector<std::string> expected = {"scalar", "neon"};
#else
    const std::vector<std::string> expected = {"scalar"};
#endif
    std::vector<std::string> names;
    for (std::uint32_t level = 0; level < KyCpuLevel::GetCount(); ++level) {
        names.emplace_back(KyCpuLevel::GetName(level));
        std::uint32_t found = 99;
        EXPECT_TRUE(KyCpuLevel::Find(names.back().c_str(), found));
        EXPECT_EQ(level, found);
    }
    EXPECT_EQ(expected, names);
    EXPECT_EQ(nullptr, KyCpuLevel::GetName(KyCpuLevel::GetCount()));

    std::uint32_t untouched = 99;
    EXPECT_FALSE(KyCpuLevel::Find("AVX2", untouched));
    EXPECT_FALSE(KyCpuLevel::Find("", untouched));
    EXPECT_EQ(99u, untouched);
}

TEST(CpuLevel, StartsAtTheHighestAvailable) {
    EXPECT_TRUE(KyCpuLevel::IsAvailable(0)) << "every CPU runs the scalar level";
    EXPECT_FALSE(KyCpuLevel::IsAvailable(KyCpuLevel::GetCount()));
    EXPECT_EQ(support::AvailableLevels().back(), KyCpuLevel::GetActive());
}

TEST(CpuLevel, SwitchesToAvailableLevelsOnly) {
    const std::uint32_t original = KyCpuLevel::GetActive();
    for (std::uint32_t level = 0; level <= KyCpuLevel::GetCount(); ++level) {
        const support::ScopedCpuLevel scalar(0);
        const bool available = KyCpuLevel::IsAvailable(level);
        EXPECT_EQ(available ? KY_STATUS_SUCCESS : KY_STATUS_BAD_ARGUMENT, KyCpuLevel::SetActive(level));
        EXPECT_EQ(available ? level : 0, KyCpuLevel::GetActive());
    }
    EXPECT_EQ(original, KyCpuLevel::GetActive());
}

#if defined(_WIN32)
void SetEnvironment(const char* name, const char* value) { _putenv_s(name, value); }
int ExitCode(int status) { return status; }
#else
void SetEnvironment(const char* name, const char* value) { setenv(name, value, 1); }
int ExitCode(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : 255; }
#endif

// A death test in this style runs the program once more from its start, where the library reads the environment.
TEST(CpuLevelDeathTest, EnvironmentLowersTheHighestLevel) {
#if !defined(__x86_64__)
    if (support::IsEmulated()) GTEST_SKIP() << "qemu-user cannot start a program of another CPU once more";
#endif
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto exitWithHighest = [] {
        const std::uint32_t highest = support::AvailableLevels().back();
        std::exit(KyCpuLevel::GetActive() == highest ? static_cast<int>(10 + highest) : 1);
    };
    // The environment may have lowered it for this process already.
    const std::uint32_t highest = KyCpuLevel::GetActive();
    for (std::uint32_t level = 0; level <= KyCpuLevel::GetCount(); ++level) {
        const char* const name = KyCpuLevel::GetName(level);
        SetEnvironment("KYIMGLIB_CPU_LEVEL", name == nullptr ? "unknown" : name);
        const auto isLowered = [&](int status) {
            const auto actual = static_cast<std::uint32_t>(ExitCode(status) - 10);
            return level <= highest ? actual == level : actual >= highest && actual <= level;
        };
        EXPECT_EXIT(exitWithHighest(), isLowered, "") << level;
    }
}

}  // namespace

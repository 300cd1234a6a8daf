#include "Comparison.h"
#include "Peer.h"

#include "../Options.h"

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/platform/KyCpuLevel.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <stdexcept>
#include <thread>

namespace kybench {

namespace {

constexpr const char* kPeersHelp =
    R"(Measures conversions beside the same operations of other libraries and of plain C, in one interleaved run, and says how
far each result is from the exact one.

  --level NAME     CPU level that all are held to: sse4, avx2, avx512 or avx512vbmi. Without it: the active one, which is the
                   highest, or what KYIMGLIB_CPU_LEVEL allows
  --filter REGEX   measure only the rows whose name matches
  --growth         this library alone, from 64x64 to 16384x16384 pixels and on one to all cores
  --help           this text

All flags of Google Benchmark work as well. The usual ones, with their defaults here:

  --benchmark_repetitions=11                    how often each row is measured
  --benchmark_min_time=0.01                     seconds of one repetition
  --benchmark_enable_random_interleaving=true   all repetitions of all rows in random order
  --benchmark_out=FILE                          also write every repetition to a JSON file
)";

/// One of each kind: reordered, arithmetic, demosaiced, through tables, unpacked.
constexpr const char* kGrowthFilter =
    "^(RGB24ToRGB32|YUYVToRGB24|RGB24ToNV12|Bayer8ToRGB24/bilinear|RGB24ToRGB24/tables|Mono12pToGray12)/[0-9]";

std::vector<Size> SquareSizes() {
    std::vector<Size> sizes;
    for (std::uint32_t edge = 64; edge <= 16384; edge *= 2) sizes.push_back({edge, edge});
    return sizes;
}

/// One, two, four and so on, and all cores.
std::vector<Peer> MakeThreads() {
    const std::uint32_t cores = std::max(std::thread::hardware_concurrency(), 1u);
    std::vector<Peer> peers;
    for (std::uint32_t threads = 1; threads < cores; threads *= 2) peers.push_back(MakeOurs(threads));
    peers.push_back(MakeOurs(cores));
    return peers;
}

void InitializeGoogleBenchmark(char* program, std::vector<std::string> flags) {
    std::vector<char*> arguments{program};
    for (std::string& flag : flags) arguments.push_back(flag.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        throw std::runtime_error("unknown arguments; --help lists the known ones");
}

void Run(char** argv, std::vector<std::string> arguments) {
    const bool isGrowth = std::erase(arguments, "--growth") > 0;
    // Of arguments that are given twice the last one counts, so these are defaults.
    arguments.insert(arguments.begin(), {"--benchmark_repetitions=11", "--benchmark_min_time=0.01"});
    if (isGrowth) arguments.insert(arguments.begin(), {"--filter", kGrowthFilter});
    const Options options = ParseOptions(arguments);
    if (options.help) {
        std::fputs(kPeersHelp, stdout);
        return;
    }
    if (options.levels.size() != 1) throw std::runtime_error("a run has one CPU level");
    const std::string level = KyCpuLevel::GetName(options.levels.front());
    const InstructionSet set = InstructionSetOf(level);
    RestrictOpenCV(set, argv);
    KyCpuLevel::SetActive(options.levels.front());
    InitializeGoogleBenchmark(argv[0], options.forGoogleBenchmark);
    benchmark::AddCustomContext("level", level);

    Comparison comparison =
        isGrowth ? Comparison(MakeThreads(), SquareSizes(), options.filter)
                 : Comparison({MakeOurs(), MakeLibyuv(set), MakeOpenCV(set), MakeSwscale(set), MakePlainLoops(set)},
                              {kSizes.begin(), kSizes.end()}, options.filter);
    if (!isGrowth) comparison.PrintDifferences();
    comparison.Register();
    benchmark::RunSpecifiedBenchmarks(options.wantsOtherFormat ? nullptr : &comparison);
    benchmark::Shutdown();
}

}  // namespace

InstructionSet InstructionSetOf(const std::string& level) {
    if (level == "sse4") return InstructionSet::kSSE4;
    if (level == "avx2") return InstructionSet::kAVX2;
    if (level == "avx512" || level == "avx512vbmi") return InstructionSet::kAVX512;
    throw std::runtime_error("no peer can be held to the CPU level \"" + level + "\"");
}

}  // namespace kybench

int main(int argc, char** argv) {
    try {
        if (KyExtendedTypes::Register() != KY_STATUS_SUCCESS) throw std::bad_alloc();
        kybench::Run(argv, {argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
        return 1;
    }
    return 0;
}

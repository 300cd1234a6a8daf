#include "Buffers.h"
#include "Differences.h"
#include "Operations.h"
#include "Peer.h"
#include "Table.h"

#include "../BaselineKernels.h"
#include "../Options.h"
#include "../Registration.h"

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/pixeltypes/KyExtendedTypes.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <limits>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <stdexcept>

namespace kybench {

namespace {

constexpr const char* kOurs = "KyImgLib";

/// The library itself, as one of the contenders.
Contender MakeOurs(const Operation& operation) {
    const KyPixelConverter* const converter =
        KyPixelTypeFactory::FindConverter(operation.source, operation.destination);
    if (converter == nullptr) throw std::runtime_error(std::string("no converter for ") + operation.name);
    if (!operation.hasTables)
        return {operation.name, [converter, flags = operation.flags](const Work& w) {
                    converter->Convert(w.source, w.width, w.height, w.destination, w.width, w.height, w.width, w.height,
                                       flags, 0);
                }};
    const auto filter = std::make_shared<KyRGBFilter>(8);
    for (std::uint32_t i = 0; i < 256; ++i) {
        filter->SetRedValue(i, Tables()[0][i]);
        filter->SetGreenValue(i, Tables()[1][i]);
        filter->SetBlueValue(i, Tables()[2][i]);
    }
    return {operation.name, [converter, filter, flags = operation.flags](const Work& w) {
                converter->Convert(*filter, w.source, w.width, w.height, w.destination, w.width, w.height, w.width,
                                   w.height, flags, 0);
            }};
}

std::vector<Peer> MakeAll(InstructionSet set) {
    Peer ours{kOurs, {}};
    for (const Operation& operation : AllOperations()) ours.contenders.push_back(MakeOurs(operation));
    return {std::move(ours), MakeLibyuv(set), MakeOpenCV(set), MakeSwscale(set), MakePlainLoops(set)};
}

const Contender* FindContender(const Peer& peer, const Operation& operation) {
    for (const Contender& contender : peer.contenders)
        if (contender.operation == std::string_view(operation.name)) return &contender;
    return nullptr;
}

std::string TextOf(Size size) {
    std::string text = std::to_string(size.width);
    return text.append("x").append(std::to_string(size.height));
}

/// An operation at a size.
struct Item {
    const Operation* operation;
    Size size;

    std::string GetName() const { return std::string(operation->name).append("/").append(TextOf(size)); }
    std::string NameOf(const Peer& peer) const {
        return std::string("Peers/").append(GetName()).append("/").append(peer.name);
    }
    std::vector<BaselineKernel> GetBaselineKernels() const {
        return BaselineKernelsFor(FrameBytes(operation->source, size), FrameBytes(operation->destination, size));
    }
    /// Of the kernels that move as many bytes as the operation has.
    std::string GetBaselineName() const {
        const auto bytesOf = [this](std::int64_t type) {
            char text[16];
            std::snprintf(text, sizeof text, "%g",
                          static_cast<double>(FrameBytes(type, size)) / static_cast<double>(size.GetPixelCount()));
            return std::string(text);
        };
        return "Baseline/" + bytesOf(operation->source) + ":" + bytesOf(operation->destination) + "/" + TextOf(size);
    }
};

/// Everything that is measured in a run.
class Comparison : public benchmark::BenchmarkReporter {
public:
    Comparison(const Options& options, InstructionSet set, const std::vector<Size>& sizes) : peers(MakeAll(set)) {
        std::set<const Operation*> wanted;
        for (const Operation& operation : AllOperations())
            for (const Size size : sizes)
                if (const Item item{&operation, size}; std::regex_search(item.GetName(), options.filter)) {
                    items.push_back(item);
                    wanted.insert(&operation);
                }
        if (items.empty()) throw std::runtime_error("the filter matches no row");
        for (const Operation& operation : AllOperations())
            if (wanted.count(&operation) > 0) operations.push_back(&operation);
        std::vector<Size> allSizes = sizes;
        allSizes.push_back(kSizes.front());  // of the check
        buffers.emplace(operations, allSizes);
    }

    /// Says how far each result is from the exact one. Throws std::runtime_error when the library's own is.
    void PrintDifferences() {
        Table table(Header("largest difference"));
        for (const Operation* const operation : operations) {
            std::vector<std::string> row{operation->name};
            for (const Peer& peer : peers) row.push_back(DifferencesOf(*operation, peer));
            table.Add(std::move(row));
        }
        table.Print();
        std::puts("");
        std::fflush(stdout);
    }

    void Register() {
        std::set<std::string> baselines;
        for (const Item& item : items) {
            for (const Peer& peer : peers) RegisterContender(item, peer);
            if (baselines.insert(item.GetBaselineName()).second) RegisterBaselines(item);
        }
    }

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration && run.iterations > 0)
                repetitions[run.run_name.function_name].push_back(run.cpu_accumulated_time * 1e9 /
                                                                  static_cast<double>(run.iterations));
    }

    void Finalize() override {
        std::vector<std::string> header = Header("ns per pixel, median");
        header.insert(header.begin() + 1, "baseline");
        header.insert(header.end(), {"times baseline", "fastest peer", "times its time"});
        Table table(header);
        for (const Item& item : items) table.Add(RowOf(item));
        table.Print();
    }

private:
    std::vector<std::string> Header(const char* first) const {
        std::vector<std::string> header{first};
        for (const Peer& peer : peers) header.push_back(peer.name);
        return header;
    }

    std::string DifferencesOf(const Operation& operation, const Peer& peer) {
        const Contender* const contender = FindContender(peer, operation);
        if (contender == nullptr) return "-";
        const Differences differences = MeasureDifferences(operation, *contender, *buffers);
        if (differences.GetLargest() == 0) return "0";
        if (peer.name == std::string_view(kOurs))
            throw std::runtime_error(std::string(operation.name) + ": the library is off by up to " +
                                     std::to_string(differences.GetLargest()));
        std::string text;
        for (int channel = 0; channel < ChannelCount(operation.layout); ++channel) {
            if (channel > 0) text.append(" ");
            text.append(std::to_string(differences.channels[static_cast<std::size_t>(channel)]));
        }
        return text;
    }

    void RegisterContender(const Item& item, const Peer& peer) {
        const Contender* const contender = FindContender(peer, *item.operation);
        if (contender == nullptr) return;
        RegisterByCpuTime(item.NameOf(peer), [this, item, contender](benchmark::State& state) {
            const Work work = buffers->MakeWork(*item.operation, item.size, contender);
            contender->convert(work);  // what a library prepares for a size is not timed
            for ([[maybe_unused]] auto _ : state) {
                contender->convert(work);
                benchmark::ClobberMemory();
            }
            state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(work.GetPixelCount()));
            state.SetLabel(item.GetBaselineName());
        });
    }

    void RegisterBaselines(const Item& item) {
        for (const BaselineKernel& kernel : item.GetBaselineKernels())
            RegisterByCpuTime(
                item.GetBaselineName() + "/" + kernel.name, [this, item, kernel](benchmark::State& state) {
                    const Work work = buffers->MakeWork(*item.operation, item.size);
                    const std::size_t sourceBytes = FrameBytes(item.operation->source, item.size);
                    for ([[maybe_unused]] auto _ : state) {
                        kernel.move(work.source, work.destination, sourceBytes);
                        benchmark::ClobberMemory();
                    }
                    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(work.GetPixelCount()));
                });
    }

    /// Nanoseconds; infinite when it was not measured.
    double MedianOf(const std::string& name) const {
        const auto found = repetitions.find(name);
        if (found == repetitions.end()) return std::numeric_limits<double>::infinity();
        std::vector<double> times = found->second;
        std::sort(times.begin(), times.end());
        return (times[(times.size() - 1) / 2] + times[times.size() / 2]) / 2;
    }

    double BaselineOf(const Item& item) const {
        double fastest = std::numeric_limits<double>::infinity();
        for (const BaselineKernel& kernel : item.GetBaselineKernels())
            fastest = std::min(fastest, MedianOf(item.GetBaselineName() + "/" + kernel.name));
        return fastest;
    }

    std::vector<std::string> RowOf(const Item& item) const {
        const auto format = [](const char* pattern, double value) {
            char text[32];
            std::snprintf(text, sizeof text, pattern, value);
            return std::string(text);
        };
        const auto pixels = static_cast<double>(item.size.GetPixelCount());
        const double ours = MedianOf(item.NameOf(peers.front())), baseline = BaselineOf(item);
        std::vector<std::string> row{item.GetName(), format("%.4f", baseline / pixels)};
        const Peer* fastest = nullptr;
        for (const Peer& peer : peers) {
            const bool takesPart = FindContender(peer, *item.operation) != nullptr;
            const double median = MedianOf(item.NameOf(peer));
            row.push_back(takesPart ? format("%.4f", median / pixels) : "-");
            if (&peer == &peers.front() || !takesPart) continue;
            if (fastest == nullptr || median < MedianOf(item.NameOf(*fastest))) fastest = &peer;
        }
        row.push_back(format("%.2f", ours / baseline));
        row.push_back(fastest == nullptr ? "-" : fastest->name);
        row.push_back(fastest == nullptr ? "-" : format("%.2f", ours / MedianOf(item.NameOf(*fastest))));
        return row;
    }

    std::vector<Peer> peers;
    std::vector<Item> items;
    std::vector<const Operation*> operations;
    std::optional<Buffers> buffers;
    std::map<std::string, std::vector<double>> repetitions;  ///< by name of the benchmark
};

/// Hands our own choice and the user's flags to Google Benchmark; the last one of a flag counts.
void InitializeGoogleBenchmark(char* program, std::vector<std::string> flags) {
    flags.insert(flags.begin() + 2, {"--benchmark_repetitions=11", "--benchmark_min_time=0.01"});
    std::vector<char*> arguments{program};
    for (std::string& flag : flags) arguments.push_back(flag.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        throw std::runtime_error("unknown arguments; --help lists the known ones");
}

void Run(char** argv, const std::vector<std::string>& arguments) {
    const Options options = ParseOptions(arguments);
    if (options.help) {
        std::fputs(kHelp, stdout);
        return;
    }
    if (options.levels.size() != 1) throw std::runtime_error("one CPU level in a run");
    const std::string level = KyCpuLevel::GetName(options.levels.front());
    const InstructionSet set = InstructionSetOf(level);
    RestrictOpenCV(set, argv);
    KyCpuLevel::SetActive(options.levels.front());
    InitializeGoogleBenchmark(argv[0], options.forGoogleBenchmark);
    benchmark::AddCustomContext("level", level);

    Comparison comparison(options, set, {kSizes.begin(), kSizes.end()});
    comparison.PrintDifferences();
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

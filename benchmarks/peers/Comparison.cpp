#include "Comparison.h"

#include "Differences.h"
#include "Table.h"

#include "../Registration.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <set>
#include <stdexcept>
#include <string_view>

#include <sched.h>

namespace kybench {

namespace {

constexpr double kNever = std::numeric_limits<double>::infinity();  // was not measured

std::string Format(const char* pattern, double value) {
    char text[32];
    std::snprintf(text, sizeof text, pattern, value);
    return text;
}

std::string TextOf(Size size) {
    std::string text = std::to_string(size.width);
    return text.append("x").append(std::to_string(size.height));
}

const Contender* FindContender(const Peer& peer, const Operation& operation) {
    for (const Contender& contender : peer.contenders)
        if (contender.operation == std::string_view(operation.name)) return &contender;
    return nullptr;
}

/// Lets the calling thread run on no more cores than a number; 0: as before.
class CoreLimit {
public:
    explicit CoreLimit(std::uint32_t count) {
        sched_getaffinity(0, sizeof before, &before);
        if (count == 0) return;
        cpu_set_t some;
        CPU_ZERO(&some);
        for (std::size_t core = 0; core < CPU_SETSIZE && count > 0; ++core)
            if (CPU_ISSET(core, &before)) {
                CPU_SET(core, &some);
                --count;
            }
        sched_setaffinity(0, sizeof some, &some);
    }
    ~CoreLimit() { sched_setaffinity(0, sizeof before, &before); }

private:
    cpu_set_t before;
};

/// One thread is measured by the time that it has the CPU, several by the wall clock.
template <typename Function>
void RegisterTimed(const std::string& name, bool isParallel, Function&& function) {
    if (isParallel)
        benchmark::RegisterBenchmark(name.c_str(), std::forward<Function>(function))->UseRealTime();
    else
        RegisterByCpuTime(name, std::forward<Function>(function));
}

}  // namespace

std::string Item::GetName() const { return std::string(operation->name).append("/").append(TextOf(size)); }

std::string Item::NameOf(const Peer& peer) const {
    return std::string("Peers/").append(GetName()).append("/").append(peer.name);
}

std::vector<BaselineKernel> Item::GetBaselineKernels() const {
    return BaselineKernelsFor(FrameBytes(operation->source, size), FrameBytes(operation->destination, size));
}

std::string Item::GetBaselineName() const {
    const auto pixels = static_cast<double>(size.GetPixelCount());
    const auto bytesOf = [&](std::int64_t type) {
        return Format("%g", static_cast<double>(FrameBytes(type, size)) / pixels);
    };
    return "Baseline/" + bytesOf(operation->source) + ":" + bytesOf(operation->destination) + "/" + TextOf(size);
}

Comparison::Comparison(std::vector<Peer> contenders, const std::vector<Size>& sizes, const std::regex& filter)
    : peers(std::move(contenders)) {
    for (const Operation& operation : AllOperations()) {
        const std::size_t before = items.size();
        for (const Size size : sizes)
            if (const Item item{&operation, size}; std::regex_search(item.GetName(), filter)) items.push_back(item);
        if (items.size() > before) operations.push_back(&operation);
    }
    if (items.empty()) throw std::runtime_error("the filter matches no row");

    std::set<std::pair<std::uint32_t, std::uint32_t>> dimensions{{kCheckSize.width, kCheckSize.height}};
    for (const Item& item : items) dimensions.insert({item.size.width, item.size.height});
    std::vector<Size> sizesInUse;
    for (const auto& [width, height] : dimensions) sizesInUse.push_back({width, height});
    buffers.emplace(operations, sizesInUse, HasOthers());
}

bool Comparison::HasOthers() const {
    return std::any_of(peers.begin(), peers.end(), [](const Peer& peer) { return peer.isOther; });
}

void Comparison::PrintDifferences() {
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

std::string Comparison::DifferencesOf(const Operation& operation, const Peer& peer) {
    const Contender* const contender = FindContender(peer, operation);
    if (contender == nullptr) return "-";
    const Differences differences = MeasureDifferences(operation, *contender, *buffers);
    if (differences.GetLargest() == 0) return "0";
    if (!peer.isOther)
        throw std::runtime_error(std::string(operation.name) + ": the library's own result is off by up to " +
                                 std::to_string(differences.GetLargest()));
    std::string text;
    for (int channel = 0; channel < ChannelCount(operation.layout); ++channel) {
        if (channel > 0) text.append(" ");
        text.append(std::to_string(differences.channels[static_cast<std::size_t>(channel)]));
    }
    return text;
}

void Comparison::Register() {
    std::set<std::string> baselines;
    for (const Item& item : items) {
        for (const Peer& peer : peers) RegisterContender(item, peer);
        if (baselines.insert(item.GetBaselineName()).second) RegisterBaselines(item);
    }
}

void Comparison::RegisterContender(const Item& item, const Peer& peer) {
    const Contender* const contender = FindContender(peer, *item.operation);
    if (contender == nullptr) return;
    RegisterTimed(item.NameOf(peer), contender->cores > 1, [this, item, contender](benchmark::State& state) {
        const CoreLimit limit(contender->cores);
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

void Comparison::RegisterBaselines(const Item& item) {
    for (const BaselineKernel& kernel : item.GetBaselineKernels())
        RegisterByCpuTime(item.GetBaselineName() + "/" + kernel.name, [this, item, kernel](benchmark::State& state) {
            const Work work = buffers->MakeWork(*item.operation, item.size);
            for ([[maybe_unused]] auto _ : state) {
                kernel.move(work.source, work.destination, work.sourceBytes);
                benchmark::ClobberMemory();
            }
            state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(work.GetPixelCount()));
        });
}

void Comparison::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
        const double seconds = run.run_name.time_type.empty() ? run.cpu_accumulated_time : run.real_accumulated_time;
        repetitions[run.run_name.function_name].push_back(seconds * 1e9 / static_cast<double>(run.iterations));
    }
}

void Comparison::Finalize() {
    std::vector<std::string> header = Header("ns per pixel, median");
    header.insert(header.begin() + 1, "baseline");
    header.push_back("times baseline");
    if (HasOthers()) header.insert(header.end(), {"fastest peer", "times its time"});
    Table table(header);
    for (const Item& item : items) table.Add(RowOf(item));
    table.Print();
}

std::vector<std::string> Comparison::Header(const char* first) const {
    std::vector<std::string> header{first};
    for (const Peer& peer : peers) header.push_back(peer.name);
    return header;
}

std::vector<std::string> Comparison::RowOf(const Item& item) const {
    const auto pixels = static_cast<double>(item.size.GetPixelCount());
    const double first = MedianOf(item.NameOf(peers.front())), baseline = BaselineOf(item);
    std::vector<std::string> row{item.GetName(), Format("%.4f", baseline / pixels)};
    double fastest = kNever;
    const char* nameOfFastest = "-";
    for (const Peer& peer : peers) {
        const double median = MedianOf(item.NameOf(peer));
        row.push_back(median == kNever ? "-" : Format("%.4f", median / pixels));
        if (peer.isOther && median < fastest) {
            fastest = median;
            nameOfFastest = peer.name.c_str();
        }
    }
    row.push_back(Format("%.2f", first / baseline));
    if (HasOthers()) row.insert(row.end(), {nameOfFastest, fastest == kNever ? "-" : Format("%.2f", first / fastest)});
    return row;
}

double Comparison::MedianOf(const std::string& name) const {
    const auto found = repetitions.find(name);
    if (found == repetitions.end()) return kNever;
    std::vector<double> times = found->second;
    std::sort(times.begin(), times.end());
    return (times[(times.size() - 1) / 2] + times[times.size() / 2]) / 2;
}

double Comparison::BaselineOf(const Item& item) const {
    double fastest = kNever;
    for (const BaselineKernel& kernel : item.GetBaselineKernels())
        fastest = std::min(fastest, MedianOf(item.GetBaselineName() + "/" + kernel.name));
    return fastest;
}

}  // namespace kybench

#ifndef KYBENCH_PEERS_COMPARISON_H
#define KYBENCH_PEERS_COMPARISON_H

#include "Buffers.h"
#include "Operations.h"
#include "Peer.h"

#include "../BaselineKernels.h"

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace kybench {

/// An operation at a size.
struct Item {
    const Operation* operation;
    Size size;

    std::string GetName() const;
    std::string NameOf(const Peer& peer) const;
    /// The kernels that only move as many bytes.
    std::vector<BaselineKernel> GetBaselineKernels() const;
    std::string GetBaselineName() const;
};

/// Measures the same operations by several contenders, and prints a table in the end.
class Comparison : public benchmark::BenchmarkReporter {
public:
    /// The table compares the first of `contenders` with the baseline and with the fastest other library. Throws
    /// std::runtime_error when `filter` matches no operation at any of `sizes`.
    Comparison(std::vector<Peer> contenders, const std::vector<Size>& sizes, const std::regex& filter);

    /// Says how far each result is from the exact one. Throws std::runtime_error when the library's own is.
    void PrintDifferences();

    void Register();

    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    bool HasOthers() const;
    std::vector<std::string> Header(const char* first) const;
    std::string DifferencesOf(const Operation& operation, const Peer& peer);
    void RegisterContender(const Item& item, const Peer& peer);
    void RegisterBaselines(const Item& item);
    double MedianOf(const std::string& name) const;
    double BaselineOf(const Item& item) const;
    std::vector<std::string> RowOf(const Item& item) const;

    std::vector<Peer> peers;
    std::vector<Item> items;
    std::vector<const Operation*> operations;
    std::optional<Buffers> buffers;
    std::map<std::string, std::vector<double>> repetitions;  ///< ns of an iteration, by name of the benchmark
};

}  // namespace kybench

#endif

#ifndef KYBENCH_PEERS_TABLE_H
#define KYBENCH_PEERS_TABLE_H

#include <string>
#include <vector>

namespace kybench {

/// A table in Markdown whose columns are aligned, so that it reads well in a terminal, too.
class Table {
public:
    explicit Table(std::vector<std::string> header) : rows{std::move(header)} {}

    void Add(std::vector<std::string> row) { rows.push_back(std::move(row)); }
    void Print() const;

private:
    std::vector<std::vector<std::string>> rows;
};

}  // namespace kybench

#endif

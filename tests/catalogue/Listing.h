#ifndef KYIMGLIB_TESTS_CATALOGUE_LISTING_H
#define KYIMGLIB_TESTS_CATALOGUE_LISTING_H

#include <KyImgLib/KyImgLib.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

/// All registered types, in ascending order.
inline std::vector<std::int64_t> AllTypes() {
    std::vector<std::int64_t> ids;
    for (std::int64_t id = 0; KyPixelTypeFactory::EnumPixelTypes(static_cast<std::uint32_t>(ids.size()), id);)
        ids.push_back(id);
    return ids;
}

/// What differs between sorted lines and those of a file beside the tests; nothing when all is well.
inline std::string DifferenceToGolden(const std::string& file, const std::vector<std::string>& lines) {
    const std::string golden = KYIMGLIB_TESTS_DIR "/catalogue/" + file, now = testing::TempDir() + file;
    std::vector<std::string> expected;
    std::ifstream in(golden);
    for (std::string line; std::getline(in, line);) expected.push_back(line);
    if (lines == expected) return "";

    std::ofstream out(now);
    for (const std::string& line : lines) out << line << "\n";
    std::vector<std::string> missing, added;
    std::set_difference(expected.begin(), expected.end(), lines.begin(), lines.end(), std::back_inserter(missing));
    std::set_difference(lines.begin(), lines.end(), expected.begin(), expected.end(), std::back_inserter(added));
    std::ostringstream text;
    text << "\n" << missing.size() << " lines are gone, " << added.size() << " are new:\n";
    constexpr std::size_t kMost = 40;
    for (std::size_t i = 0; i < std::min(kMost, missing.size()); ++i) text << "- " << missing[i] << "\n";
    for (std::size_t i = 0; i < std::min(kMost, added.size()); ++i) text << "+ " << added[i] << "\n";
    text << "All of them:          diff " << golden << " " << now << "\n"
         << "If that is intended:  cp " << now << " " << golden << "\n";
    return text.str();
}

#endif

#include "ContactSheet.h"

#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace kyimg {

namespace {

constexpr std::size_t kMostWidth = 1600;
constexpr std::uint32_t kGap = 8;
constexpr std::uint8_t kBackground = 40;
constexpr std::uint8_t kInk = 255;

constexpr std::uint32_t kLetterScale = 2;
constexpr std::uint32_t kLetterPitch = 6 * kLetterScale;
constexpr std::uint32_t kLabelHeight = 7 * kLetterScale + kGap / 2;

using Letter = std::array<std::string_view, 7>;
constexpr Letter kR = {"####.", "#...#", "#...#", "####.", "#.#..", "#..#.", "#...#"};
constexpr Letter kG = {".###.", "#...#", "#....", "#.###", "#...#", "#...#", ".####"};
constexpr Letter kB = {"####.", "#...#", "#...#", "####.", "#...#", "#...#", "####."};

constexpr Letter kDigits[10] = {
    {".###.", "#...#", "#..##", "#.#.#", "##..#", "#...#", ".###."},
    {"..#..", ".##..", "..#..", "..#..", "..#..", "..#..", ".###."},
    {".###.", "#...#", "....#", "..##.", ".#...", "#....", "#####"},
    {"####.", "....#", "....#", ".###.", "....#", "....#", "####."},
    {"...#.", "..##.", ".#.#.", "#..#.", "#####", "...#.", "...#."},
    {"#####", "#....", "####.", "....#", "....#", "#...#", ".###."},
    {".###.", "#....", "#....", "####.", "#...#", "#...#", ".###."},
    {"#####", "....#", "...#.", "..#..", ".#...", ".#...", ".#..."},
    {".###.", "#...#", "#...#", ".###.", "#...#", "#...#", ".###."},
    {".###.", "#...#", "#...#", ".####", "....#", "....#", ".###."},
};

const Letter& LetterFor(char c) {
    if (c >= '0' && c <= '9') return kDigits[c - '0'];
    return c == 'R' ? kR : c == 'G' ? kG : kB;
}

std::size_t RowBytes(const ConvertedFrame& picture) { return std::size_t{3} * picture.width; }

ConvertedFrame MakePicture(std::uint32_t width, std::uint32_t height) {
    ConvertedFrame picture;
    picture.type = KY_TYPE_RGB24;
    picture.width = width;
    picture.height = height;
    picture.bytes.assign(RowBytes(picture) * height, kBackground);
    return picture;
}

std::uint8_t* PixelOf(ConvertedFrame& picture, std::uint32_t x, std::uint32_t y) {
    return picture.bytes.data() + y * RowBytes(picture) + std::size_t{3} * x;
}

void DrawLabel(const std::string& label, ConvertedFrame& sheet, std::uint32_t left, std::uint32_t top) {
    for (const char c : label) {
        for (std::uint32_t y = 0; y < 7 * kLetterScale; ++y)
            for (std::uint32_t x = 0; x < 5 * kLetterScale; ++x)
                if (LetterFor(c)[y / kLetterScale][x / kLetterScale] == '#')
                    std::fill_n(PixelOf(sheet, left + x, top + y), 3, kInk);
        left += kLetterPitch;
    }
}

}  // namespace

ConvertedFrame ShrinkForSheet(const ConvertedFrame& frame) {
    std::uint32_t factor = 1;
    while (2 * std::size_t{frame.width / factor} + 3 * kGap > kMostWidth) ++factor;

    const PictureRows rows(frame, {});
    ConvertedFrame small = MakePicture(frame.width / factor, std::max(1U, frame.height / factor));
    std::vector<std::uint8_t> row(rows.GetRowSize());
    std::vector<std::uint64_t> sums(RowBytes(small));
    for (std::uint32_t y = 0; y < small.height; ++y) {
        const std::uint32_t lines = std::min(factor, frame.height - y * factor);
        std::ranges::fill(sums, 0);
        for (std::uint32_t line = 0; line < lines; ++line) {
            rows.CopyRow(y * factor + line, row.data());
            const std::uint8_t* sample = row.data();
            for (std::size_t pixel = 0; pixel < sums.size(); pixel += 3)
                for (std::uint32_t i = 0; i < factor; ++i)
                    for (std::size_t channel = 0; channel < 3; ++channel) sums[pixel + channel] += *sample++;
        }
        const std::uint64_t count = std::uint64_t{factor} * lines;
        std::ranges::transform(sums, PixelOf(small, 0, y), [count](std::uint64_t sum) {
            return static_cast<std::uint8_t>((sum + count / 2) / count);
        });
    }
    return small;
}

ConvertedFrame ArrangeSheet(const std::vector<SheetTile>& tiles) {
    std::uint32_t cellWidth = 0, cellHeight = 0;
    for (const SheetTile& tile : tiles) {
        const auto labelWidth = static_cast<std::uint32_t>(tile.label.size()) * kLetterPitch;
        cellWidth = std::max({cellWidth, tile.picture.width, labelWidth});
        cellHeight = std::max(cellHeight, kLabelHeight + tile.picture.height);
    }
    const auto tileRows = static_cast<std::uint32_t>((tiles.size() + 1) / 2);

    ConvertedFrame sheet = MakePicture(2 * (cellWidth + kGap) + kGap, tileRows * (cellHeight + kGap) + kGap);
    for (std::uint32_t index = 0; index < tiles.size(); ++index) {
        const std::uint32_t left = kGap + index % 2 * (cellWidth + kGap);
        const std::uint32_t top = kGap + index / 2 * (cellHeight + kGap);
        const ConvertedFrame& picture = tiles[index].picture;
        DrawLabel(tiles[index].label, sheet, left, top);
        for (std::uint32_t y = 0; y < picture.height; ++y)
            std::copy_n(picture.bytes.data() + y * RowBytes(picture), RowBytes(picture),
                        PixelOf(sheet, left, top + kLabelHeight + y));
    }
    return sheet;
}

}  // namespace kyimg

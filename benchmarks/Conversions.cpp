#include "Conversions.h"

#include "Registration.h"

#include <KyImgLib/KyImgLibC.h>

#include <stdexcept>
#include <string_view>

namespace kybench {

namespace {

std::shared_ptr<const KyRGBFilter> MakeFilter(const Row& row) {
    if (row.filter == Filter::kNone) return nullptr;
    // Types of more than 16 bits are those of several bytes a pixel.
    const std::uint32_t bits = KyPixelTypeFactory::FindPixelType(row.source)->GetPixelBitSize();
    const auto filter = std::make_shared<KyRGBFilter>(bits > 16 ? 8 : bits);
    filter->SetMultipliers(1.9, 1.0, 1.6);
    return filter;
}

bool IsWanted(const Row& row, Size size, const Options& options) {
    if (std::regex_search(NameOf(row, size), options.filter)) return true;
    if (row.filter != Filter::kNone) return false;
    // A chain tells little without its stages.
    for (const Chain& chain : AllChains())
        for (const std::string_view stage : chain.stages)
            if (stage == row.conversion &&
                std::regex_search(NameOf({chain.row, 0, 0, 0, Filter::kNone}, size), options.filter))
                return true;
    // And neither does a filtered row without its unfiltered one.
    Row filtered = row;
    filtered.filter = Filter::kWhiteBalance;
    return std::regex_search(NameOf(filtered, size), options.filter);
}

std::size_t FrameBytes(std::int64_t type, Size size) {
    const KyImage image = {type, size.width, size.height, nullptr, 0, 0, 0};
    std::size_t bytes = 0;
    if (KyImage_GetSize(&image, &bytes) != KY_STATUS_SUCCESS) throw std::runtime_error(KyImage_GetError());
    return bytes;
}

void Convert(const Conversion& conversion, const Frames& frames) {
    const auto [width, height] = conversion.size;
    if (conversion.filter)
        conversion.converter->Convert(*conversion.filter, frames.GetSource(), width, height, frames.GetDestination(),
                                      width, height, width, height, conversion.row.flags, 0);
    else
        conversion.converter->Convert(frames.GetSource(), width, height, frames.GetDestination(), width, height, width,
                                      height, conversion.row.flags, 0);
}

}  // namespace

std::size_t Conversion::GetSourceBytes() const { return FrameBytes(row.source, size); }

std::size_t Conversion::GetDestinationBytes() const { return FrameBytes(row.destination, size); }

std::vector<Conversion> SelectConversions(const Options& options) {
    // Not built in; it registers itself as it is constructed.
    static const KyBayerRGB16ToRGB48 bayer12ToRGB48(0x00020012, false, 0);

    std::vector<Conversion> conversions;
    for (const Row& row : AllRows()) {
        const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(row.source, row.destination);
        if (converter == nullptr) throw std::runtime_error(std::string("no converter for ") + row.conversion);
        for (const Size size : kSizes)
            for (const std::uint32_t level : options.levels)
                if (IsWanted(row, size, options)) conversions.push_back({row, size, level, converter, MakeFilter(row)});
    }
    return conversions;
}

std::string BenchmarkName(const Row& row, Size size, std::uint32_t level) {
    return NameOf(row, size) + "/level:" + KyCpuLevel::GetName(level);
}

void RegisterBenchmark(const Conversion& conversion, const Frames& frames) {
    const std::string name = BenchmarkName(conversion.row, conversion.size, conversion.level);
    RegisterByCpuTime(name, [conversion, &frames](benchmark::State& state) {
        KyCpuLevel::SetActive(conversion.level);
        for ([[maybe_unused]] auto _ : state) {
            Convert(conversion, frames);
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(conversion.size.GetPixelCount()));
    });
}

}  // namespace kybench

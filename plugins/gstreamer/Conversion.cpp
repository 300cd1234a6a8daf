#include <plugins/gstreamer/Conversion.h>

#include <KyImgLib/KyImgLibC.h>

#include <algorithm>

namespace kygst {

namespace {

using Factory = KyPixelTypeFactory;

std::int64_t ColourSpace(std::int64_t type) { return type & KY_COLOUR_SPACE_MASK; }

bool IsMosaic(std::int64_t type) { return Factory::FindPixelType(type)->IsBayerPattern(); }

/// The first converter of a chain that passes colours through a filter; null when there is none.
const KyPixelConverter* FindColourStage(const KyPixelConverter* converter) {
    if (converter == nullptr) return nullptr;
    if (const auto* const chain = dynamic_cast<const KyComplexConverter*>(converter)) {
        const KyPixelConverter* const first = FindColourStage(&chain->GetFirst());
        return first != nullptr ? first : FindColourStage(&chain->GetSecond());
    }
    const bool makesColours = ColourSpace(converter->GetSourceType()) != KY_COLOUR_SPACE_GRAYSCALE &&
                              !IsMosaic(converter->GetDestinationType()) &&
                              dynamic_cast<const KyIdentityConverter*>(converter) == nullptr;
    return makesColours ? converter : nullptr;
}

/// Bits of the samples that a converter passes through a filter: those of a mosaic's or of words of RGB, but of the bytes that
/// YUV, normalized samples and RGB of fewer bits become.
std::uint32_t FilterBits(const KyPixelConverter* stage) {
    if (stage == nullptr) return 0;
    const std::int64_t type = stage->GetSourceType();
    const std::uint32_t bits = Factory::FindPixelType(type)->GetPixelBitSize();
    const bool becomesWords = stage->GetDestinationType() == KY_RGB48;
    if (IsMosaic(type)) {
        if (becomesWords) return Factory::FindPixelType(Factory::FindPixelType(type)->GetPlainTypeID())->GetPixelBitSize();
        return (type & KY_TYPE_NORMALIZED) != 0 ? 8 : bits;
    }
    if (ColourSpace(type) == KY_COLOUR_SPACE_YUV || (type & KY_TYPE_NORMALIZED) != 0) return 8;
    if (becomesWords && (bits == 30 || bits == 36)) return bits / 3;
    if (bits == 10 || bits == 12 || bits == 14) return bits;
    return bits <= 16 || bits == 24 || bits == 30 || bits == 32 ? 8 : 16;
}

struct Task {
    void (*run)(void* state, std::uint32_t index);
    void* state;
    std::uint32_t index;
};

void RunTask(gpointer data) {
    const Task& task = *static_cast<const Task*>(data);
    task.run(task.state, task.index);
}

/// KyExecutor::run on a GstTaskPool; the calling thread takes the first task.
void RunInPool(void* context, std::uint32_t count, void (*run)(void* state, std::uint32_t index), void* state) {
    GstTaskPool* const pool = static_cast<GstTaskPool*>(context);
    std::vector<Task> tasks;
    std::vector<gpointer> handles(count, nullptr);
    for (std::uint32_t index = 0; index < count; ++index) tasks.push_back({run, state, index});
    for (std::uint32_t index = 1; index < count; ++index) {
        handles[index] = gst_task_pool_push(pool, &RunTask, &tasks[index], nullptr);
        if (handles[index] == nullptr) RunTask(&tasks[index]);  // there are no more threads
    }
    RunTask(&tasks[0]);
    for (const gpointer handle : handles)
        if (handle != nullptr) gst_task_pool_join(pool, handle);
}

}  // namespace

Conversion::Conversion(std::int64_t sourceType, std::int64_t destinationType, std::uint32_t pattern)
    : source(sourceType), destination(destinationType), bayerPattern(pattern),
      filterBits(FilterBits(FindColourStage(Factory::FindConverter(source, destination)))),
      converter(source, destination), toRGB24(source, KY_RGB24), fromRGB24(KY_RGB24 | KY_TYPE_PACKED, destination) {}

Conversion::~Conversion() {
    if (pool == nullptr) return;
    gst_task_pool_cleanup(pool);
    gst_object_unref(pool);
}

bool Conversion::Accepts(std::uint32_t width, std::uint32_t height) const {
    const KyImage from = {source, width, height, nullptr, 0, 0, 0};
    const KyImage to = {destination, width, height, nullptr, 0, 0, 0};
    std::uint32_t lines = 0;
    return converter.GetBandStep(from, to, nullptr, lines) == KY_STATUS_SUCCESS;
}

std::uint32_t Conversion::Convert(const KyImage& from, const KyImage& to, const Settings& settings) {
    MakeFilter(settings);
    KyConversion conversion = {sizeof conversion, bayerPattern, filter.get(), 0, 0};
    if (settings.interpolate) conversion.flags |= KY_FLAG_BAYER_INTERPOLATE;
    if (filter != nullptr && destination == KY_RGB24_PLANAR && source != 0x0082000A)
        return ConvertByRGB24(from, to, settings.threads, conversion);
    return Run(converter, from, to, settings.threads, conversion);
}

/// The chain to planes has two converters of colours, of which each would apply the filter.
std::uint32_t Conversion::ConvertByRGB24(const KyImage& from, const KyImage& to, std::uint32_t threads,
                                         const KyConversion& conversion) {
    KyImage between = {KY_RGB24, from.width, from.height, nullptr, 0, 0, 0};
    std::uint32_t status = KyImage_GetSize(&between, &between.size);
    if (status != KY_STATUS_SUCCESS) return status;
    rgb24.resize(between.size);
    between.data = rgb24.data();
    status = Run(toRGB24, from, between, threads, conversion);
    if (status != KY_STATUS_SUCCESS) return status;
    between.type |= KY_TYPE_PACKED;
    KyConversion plain = conversion;
    plain.filter = nullptr;
    return Run(fromRGB24, between, to, threads, plain);
}

std::uint32_t Conversion::Run(const KyImageConverter& by, const KyImage& from, const KyImage& to, std::uint32_t threads,
                              const KyConversion& conversion) {
    if (threads == 0) return by.ConvertParallel(from, to, &conversion, nullptr);
    if (threads == 1) return by.Convert(from, to, &conversion);
    if (pool == nullptr) {
        pool = gst_shared_task_pool_new();
        gst_task_pool_prepare(pool, nullptr);
    }
    if (poolThreads != threads) {
        gst_shared_task_pool_set_max_threads(GST_SHARED_TASK_POOL(pool), threads - 1);  // and the calling one
        poolThreads = threads;
    }
    const KyExecutor executor = {threads, pool, &RunInPool};
    return by.ConvertParallel(from, to, &conversion, &executor);
}

void Conversion::MakeFilter(const Settings& settings) {
    if (!TakesGains() || settings.KeepColours()) {
        filter.reset();
        return;
    }
    if (filter != nullptr && settings.gains == filterSettings.gains && settings.offsets == filterSettings.offsets) return;
    filter = std::make_unique<KyRGBFilter>(filterBits);
    std::array<std::uint16_t, 3> offsets = {};
    const double largest = filter->GetEntryCount() - 1;
    for (std::size_t channel = 0; channel < 3; ++channel)
        offsets[channel] = static_cast<std::uint16_t>(std::min(settings.offsets[channel], largest));
    filter->SetMultipliers(settings.gains[0], settings.gains[1], settings.gains[2], offsets[0], offsets[1], offsets[2]);
    filterSettings = settings;
}

}  // namespace kygst

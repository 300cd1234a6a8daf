#include "Peer.h"

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>

#include <memory>
#include <stdexcept>

namespace kybench {

namespace {

/// Null for operations without tables.
std::shared_ptr<const KyRGBFilter> MakeFilter(const Operation& operation) {
    if (!operation.hasTables) return nullptr;
    const auto filter = std::make_shared<KyRGBFilter>(8);
    for (std::uint32_t i = 0; i < 256; ++i) {
        filter->SetRedValue(i, Tables()[0][i]);
        filter->SetGreenValue(i, Tables()[1][i]);
        filter->SetBlueValue(i, Tables()[2][i]);
    }
    return filter;
}

/// The area form of the converter.
std::function<void(const Work&)> OnOneThread(const Operation& operation) {
    const KyPixelConverter* const converter =
        KyPixelTypeFactory::FindConverter(operation.source, operation.destination);
    if (converter == nullptr) throw std::runtime_error(std::string("no converter for ") + operation.name);
    return [converter, filter = MakeFilter(operation), flags = operation.flags](const Work& w) {
        if (filter)
            converter->Convert(*filter, w.source, w.width, w.height, w.destination, w.width, w.height, w.width,
                               w.height, flags, 0);
        else
            converter->Convert(w.source, w.width, w.height, w.destination, w.width, w.height, w.width, w.height, flags,
                               0);
    };
}

std::function<void(const Work&)> OnSeveralThreads(const Operation& operation) {
    return [&operation, filter = MakeFilter(operation)](const Work& w) {
        const KyImage source = {operation.source, w.width, w.height, const_cast<std::uint8_t*>(w.source),
                                w.sourceBytes,    0,       0};
        const KyImage destination = {operation.destination, w.width, w.height, w.destination, w.destinationBytes, 0, 0};
        const KyConversion conversion = {sizeof conversion, operation.flags, filter.get(), 0, 0};
        if (KyImage_ConvertParallel(&source, &destination, &conversion, nullptr) != KY_STATUS_SUCCESS)
            throw std::runtime_error(KyImage_GetError());
    };
}

}  // namespace

Peer MakeOurs() {
    Peer peer{"KyImgLib", false, {}};
    for (const Operation& operation : AllOperations())
        peer.contenders.push_back({operation.name, OnOneThread(operation)});
    return peer;
}

Peer MakeOurs(std::uint32_t threads) {
    Peer peer{threads == 1 ? "1 thread" : std::to_string(threads) + " threads", false, {}};
    for (const Operation& operation : AllOperations())
        peer.contenders.push_back({operation.name, OnSeveralThreads(operation), false, nullptr, threads});
    return peer;
}

}  // namespace kybench

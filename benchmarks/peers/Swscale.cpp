#include "Peer.h"

extern "C" {
#include <libavutil/cpu.h>
#include <libavutil/log.h>
#include <libswscale/swscale.h>
}

#include <array>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>

namespace kybench {

namespace {

struct Free {
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};
using Context = std::unique_ptr<SwsContext, Free>;

/// A pair of formats; `isFullRange` is that of the YUV side, if there is one.
struct Conversion {
    const char* operation;
    AVPixelFormat from;
    AVPixelFormat to;
    bool isFullRange;
    void (*arrange)(const Work& original, std::uint8_t* arranged);
};

Context MakeContext(const Conversion& conversion, const Work& work) {
    // Four pixels that become one sample of Cb and Cr are averaged; the other way round it is repeated. So do all others.
    const bool isTo420 = conversion.to == AV_PIX_FMT_NV12 || conversion.to == AV_PIX_FMT_YUV420P;
    Context context(sws_getContext(work.GetWidth(), work.GetHeight(), conversion.from, work.GetWidth(),
                                   work.GetHeight(), conversion.to, isTo420 ? SWS_AREA : SWS_POINT, nullptr, nullptr,
                                   nullptr));
    if (!context) throw std::runtime_error(std::string("swscale does not convert for ") + conversion.operation);
    const int* const bt601 = sws_getCoefficients(SWS_CS_ITU601);
    const int isFull = conversion.isFullRange ? 1 : 0;
    sws_setColorspaceDetails(context.get(), bt601, isFull, bt601, isFull, 0, 1 << 16, 1 << 16);
    return context;
}

SwsContext* ContextFor(const Conversion& conversion, const Work& work) {
    static std::map<std::tuple<std::string, std::uint32_t, std::uint32_t>, Context> contexts;
    Context& context = contexts[{conversion.operation, work.width, work.height}];
    if (!context) context = MakeContext(conversion, work);
    return context.get();
}

struct Planes {
    std::array<std::uint8_t*, 4> data;
    std::array<int, 4> strides;
};

Planes PlanesOf(AVPixelFormat format, std::uint8_t* bytes, const Work& work) {
    const std::size_t pixels = work.GetPixelCount();
    const int width = work.GetWidth();
    switch (format) {
        case AV_PIX_FMT_NV12: return {{bytes, bytes + pixels}, {width, width}};
        case AV_PIX_FMT_YUV420P:
            return {{bytes, bytes + pixels, bytes + pixels + pixels / 4}, {width, width / 2, width / 2}};
        case AV_PIX_FMT_YUV444P: return {{bytes, bytes + pixels, bytes + 2 * pixels}, {width, width, width}};
        // Planes are named green, blue, red; they may lie in any order.
        case AV_PIX_FMT_GBRP: return {{bytes + pixels, bytes + 2 * pixels, bytes}, {width, width, width}};
        case AV_PIX_FMT_BGR0:
        case AV_PIX_FMT_RGB0: return {{bytes}, {4 * width}};
        case AV_PIX_FMT_RGB24: return {{bytes}, {3 * width}};
        case AV_PIX_FMT_GRAY8:
        case AV_PIX_FMT_BAYER_GRBG8: return {{bytes}, {width}};
        default: return {{bytes}, {2 * width}};
    }
}

/// Y, Cb, Cr in turn to planes.
void SplitYCbCr(const Work& original, std::uint8_t* arranged) {
    const std::size_t pixels = original.GetPixelCount();
    for (std::size_t i = 0; i < pixels; ++i)
        for (std::size_t c = 0; c < 3; ++c) arranged[c * pixels + i] = original.source[3 * i + c];
}

constexpr Conversion kConversions[] = {
    {"BGR32ToRGB24", AV_PIX_FMT_BGR0, AV_PIX_FMT_RGB24, false, nullptr},
    {"RGB24ToRGB32", AV_PIX_FMT_RGB24, AV_PIX_FMT_RGB0, false, nullptr},
    {"RGB24ToPlanar", AV_PIX_FMT_RGB24, AV_PIX_FMT_GBRP, false, nullptr},
    {"YUV444ToRGB24", AV_PIX_FMT_YUV444P, AV_PIX_FMT_RGB24, true, SplitYCbCr},
    {"YUYVToRGB32", AV_PIX_FMT_YUYV422, AV_PIX_FMT_RGB0, false, nullptr},
    {"YUYVToRGB24", AV_PIX_FMT_YUYV422, AV_PIX_FMT_RGB24, false, nullptr},
    {"UYVYToRGB24", AV_PIX_FMT_UYVY422, AV_PIX_FMT_RGB24, false, nullptr},
    {"NV12ToRGB24", AV_PIX_FMT_NV12, AV_PIX_FMT_RGB24, false, nullptr},
    {"I420ToRGB24", AV_PIX_FMT_YUV420P, AV_PIX_FMT_RGB24, false, nullptr},
    {"RGB24ToNV12", AV_PIX_FMT_RGB24, AV_PIX_FMT_NV12, false, nullptr},
    {"RGB24ToI420", AV_PIX_FMT_RGB24, AV_PIX_FMT_YUV420P, false, nullptr},
    {"Gray12ToGray8", AV_PIX_FMT_GRAY12LE, AV_PIX_FMT_GRAY8, false, nullptr},
    {"Mono10BEToGray10", AV_PIX_FMT_GRAY10BE, AV_PIX_FMT_GRAY10LE, false, nullptr},
    {"Gray8ToRGB24", AV_PIX_FMT_GRAY8, AV_PIX_FMT_RGB24, true, nullptr},
    {"Bayer8ToRGB24/bilinear", AV_PIX_FMT_BAYER_GRBG8, AV_PIX_FMT_RGB24, false, nullptr},
    {"Bayer8ToNV12/bilinear", AV_PIX_FMT_BAYER_GRBG8, AV_PIX_FMT_NV12, false, nullptr},
};

void Convert(const Conversion& conversion, const Work& work) {
    const Planes from = PlanesOf(conversion.from, const_cast<std::uint8_t*>(work.source), work);
    const Planes to = PlanesOf(conversion.to, work.destination, work);
    sws_scale(ContextFor(conversion, work), from.data.data(), from.strides.data(), 0, work.GetHeight(), to.data.data(),
              to.strides.data());
}

}  // namespace

Peer MakeSwscale(InstructionSet set) {
    av_log_set_level(AV_LOG_ERROR);
    constexpr int kAVX512 = AV_CPU_FLAG_AVX512 | AV_CPU_FLAG_AVX512ICL;
    constexpr int kAVXOnwards = AV_CPU_FLAG_AVX | AV_CPU_FLAG_AVX2 | AV_CPU_FLAG_FMA3 | AV_CPU_FLAG_FMA4 |
                                AV_CPU_FLAG_XOP | AV_CPU_FLAG_BMI1 | AV_CPU_FLAG_BMI2;
    const int all = av_get_cpu_flags();
    av_force_cpu_flags(set == InstructionSet::kAVX512 ? all
                       : set == InstructionSet::kAVX2 ? all & ~kAVX512
                                                      : all & ~(kAVX512 | kAVXOnwards));
    Peer peer{"swscale", true, {}};
    for (const Conversion& conversion : kConversions)
        peer.contenders.push_back({conversion.operation, [&conversion](const Work& work) { Convert(conversion, work); },
                                   false, conversion.arrange});
    return peer;
}

}  // namespace kybench

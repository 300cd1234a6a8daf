#include "Peer.h"

#include <libyuv.h>

#include <algorithm>

namespace kybench {

namespace {

/// libyuv's names give the bytes of a pixel from the highest of a little-endian word: ARGB is B, G, R, A in memory. RAW
/// is R, G, B, and RGB24 is B, G, R.
constexpr int kRGB = 3, kRGBA = 4;

/// Where two steps are needed they take turns band by band, so that what is between them stays in a cache. A band has an
/// even number of lines.
template <typename Steps>
void InBands(const Work& work, Steps steps) {
    constexpr int kBandBytes = 1 << 14;
    const int lines = std::max(kBandBytes / (kRGBA * work.GetWidth()) & ~1, 2);
    for (int y = 0; y < work.GetHeight(); y += lines) steps(y, std::min(lines, work.GetHeight() - y));
}

template <auto function>
void ToRGB24ThroughARGB(const Work& work) {
    const int width = work.GetWidth();
    InBands(work, [&](int y, int lines) {
        function(work.source + std::size_t{2} * work.width * static_cast<std::size_t>(y), 2 * width, work.scratch,
                 kRGBA * width, width, lines);
        libyuv::ARGBToRAW(work.scratch, kRGBA * width,
                          work.destination + std::size_t{kRGB} * work.width * static_cast<std::size_t>(y), kRGB * width,
                          width, lines);
    });
}

void RGB24ToNV12(const Work& work) {
    const int width = work.GetWidth();
    std::uint8_t* const chroma = work.destination + work.GetPixelCount();
    InBands(work, [&](int y, int lines) {
        const std::size_t pixels = work.width * static_cast<std::size_t>(y);
        // Keeps the order of the colours: R, G, B, A.
        libyuv::RGB24ToARGB(work.source + kRGB * pixels, kRGB * width, work.scratch, kRGBA * width, width, lines);
        libyuv::ABGRToNV12(work.scratch, kRGBA * width, work.destination + pixels, width, chroma + pixels / 2, width,
                           width, lines);
    });
}

/// Shifts words of 12 bits to bytes.
void NarrowWords(const Work& work, int samplesOfPixel) {
    const int width = samplesOfPixel * work.GetWidth();
    libyuv::Convert16To8Plane(reinterpret_cast<const std::uint16_t*>(work.source), width, work.destination, width,
                              1 << 12, width, work.GetHeight());
}

/// Y, Cb, Cr in turn to planes.
void SplitYCbCr(const Work& original, std::uint8_t* arranged) {
    const std::size_t pixels = original.GetPixelCount();
    const int width = original.GetWidth();
    libyuv::SplitRGBPlane(original.source, 3 * width, arranged, width, arranged + pixels, width, arranged + 2 * pixels,
                          width, width, original.GetHeight());
}

}  // namespace

Peer MakeLibyuv(InstructionSet set) {
    using namespace libyuv;
    constexpr int kAVXOnwards = kCpuHasAVX | kCpuHasAVX2 | kCpuHasFMA3 | kCpuHasF16C;
    constexpr int kAVX512 = kCpuHasAVX512BW | kCpuHasAVX512VL | kCpuHasAVX512VNNI | kCpuHasAVX512VBMI |
                            kCpuHasAVX512VBMI2 | kCpuHasAVX512VBITALG | kCpuHasAVX512VPOPCNTDQ;
    MaskCpuFlags(set == InstructionSet::kAVX512 ? -1
                 : set == InstructionSet::kAVX2 ? ~kAVX512
                                                : ~(kAVX512 | kAVXOnwards));

    Peer peer{"libyuv", true, {}};
    const auto add = [&](const char* operation, void (*convert)(const Work&), bool swapsRedBlue = false,
                         void (*arrange)(const Work&, std::uint8_t*) = nullptr) {
        peer.contenders.push_back({operation, convert, swapsRedBlue, arrange});
    };
    add("BGR32ToRGB24", [](const Work& w) {
        ARGBToRAW(w.source, kRGBA * w.GetWidth(), w.destination, kRGB * w.GetWidth(), w.GetWidth(), w.GetHeight());
    });
    add("RGB24ToRGB32", [](const Work& w) {
        RGB24ToARGB(w.source, kRGB * w.GetWidth(), w.destination, kRGBA * w.GetWidth(), w.GetWidth(), w.GetHeight());
    });
    add("RGB48ToRGB24", [](const Work& w) { NarrowWords(w, kRGB); });
    add("RGB24ToPlanar", [](const Work& w) { SplitYCbCr(w, w.destination); });
    add(
        "YUV444ToRGB24",
        [](const Work& w) {
            const std::size_t pixels = w.GetPixelCount();
            const int width = w.GetWidth();
            // Cb and Cr exchanged, and constants that belong to it: R, G, B instead of B, G, R.
            I444ToRGB24Matrix(w.source, width, w.source + 2 * pixels, width, w.source + pixels, width, w.destination,
                              kRGB * width, &kYvuJPEGConstants, width, w.GetHeight());
        },
        false, SplitYCbCr);
    add(
        "YUYVToRGB32",
        [](const Work& w) {
            YUY2ToARGB(w.source, 2 * w.GetWidth(), w.destination, kRGBA * w.GetWidth(), w.GetWidth(), w.GetHeight());
        },
        true);
    add("YUYVToRGB24", ToRGB24ThroughARGB<YUY2ToARGB>);
    add("UYVYToRGB24", ToRGB24ThroughARGB<UYVYToARGB>);
    add("NV12ToRGB24", [](const Work& w) {
        NV12ToRAW(w.source, w.GetWidth(), w.source + w.GetPixelCount(), w.GetWidth(), w.destination,
                  kRGB * w.GetWidth(), w.GetWidth(), w.GetHeight());
    });
    add("I420ToRGB24", [](const Work& w) {
        const std::size_t pixels = w.GetPixelCount();
        const int width = w.GetWidth();
        I420ToRAW(w.source, width, w.source + pixels, width / 2, w.source + pixels + pixels / 4, width / 2,
                  w.destination, kRGB * width, width, w.GetHeight());
    });
    add("RGB24ToNV12", RGB24ToNV12);
    add("RGB24ToI420", [](const Work& w) {
        const std::size_t pixels = w.GetPixelCount();
        const int width = w.GetWidth();
        RAWToI420(w.source, kRGB * width, w.destination, width, w.destination + pixels, width / 2,
                  w.destination + pixels + pixels / 4, width / 2, width, w.GetHeight());
    });
    add("Gray12ToGray8", [](const Work& w) { NarrowWords(w, 1); });
    add("Mono10BEToGray10", [](const Work& w) {
        // Pixels of four bytes are two words.
        static const std::uint8_t exchange[16] = {1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14};
        ARGBShuffle(w.source, 2 * w.GetWidth(), w.destination, 2 * w.GetWidth(), exchange, w.GetWidth() / 2,
                    w.GetHeight());
    });
    add("Gray8ToRGB24", [](const Work& w) {
        const int width = w.GetWidth();
        MergeRGBPlane(w.source, width, w.source, width, w.source, width, w.destination, kRGB * width, width,
                      w.GetHeight());
    });
    return peer;
}

}  // namespace kybench

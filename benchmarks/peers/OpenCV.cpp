#include "Peer.h"

#include <libyuv.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include <unistd.h>

namespace kybench {

namespace {

// OpenCV converts into what is there when it has the right size and type. A source is never written.
cv::Mat Image(const std::uint8_t* bytes, const Work& work, int type) {
    return cv::Mat(work.GetHeight(), work.GetWidth(), type, const_cast<std::uint8_t*>(bytes));
}

template <int code, int from, int to>
void ConvertColours(const Work& work) {
    cv::Mat destination = Image(work.destination, work, to);
    cv::cvtColor(Image(work.source, work, from), destination, code);
}

/// A plane of Y and, below it, those of Cb and Cr, as one image of one channel.
cv::Mat YUV420(const std::uint8_t* bytes, const Work& work) {
    return cv::Mat(work.GetHeight() * 3 / 2, work.GetWidth(), CV_8UC1, const_cast<std::uint8_t*>(bytes));
}

template <int code>
void FromYUV420(const Work& work) {
    cv::Mat destination = Image(work.destination, work, CV_8UC3);
    cv::cvtColor(YUV420(work.source, work), destination, code);
}

template <int channels>
void NarrowWords(const Work& work) {
    cv::Mat destination = Image(work.destination, work, CV_8UC(channels));
    Image(work.source, work, CV_16UC(channels)).convertTo(destination, CV_8U, 1.0 / 16);
}

void ThroughTables(const cv::Mat& source, const Work& work) {
    static const cv::Mat tables = [] {
        cv::Mat interleaved(1, 256, CV_8UC3);
        for (int i = 0; i < 256; ++i)
            interleaved.at<cv::Vec3b>(i) = cv::Vec3b(Tables()[0][i], Tables()[1][i], Tables()[2][i]);
        return interleaved;
    }();
    cv::Mat destination = Image(work.destination, work, CV_8UC3);
    cv::LUT(source, tables, destination);
}

/// To Y, Cr, Cb, the order that it has a conversion from.
void ExchangeChroma(const Work& original, std::uint8_t* arranged) {
    const cv::Mat from = Image(original.source, original, CV_8UC3);
    cv::Mat to = Image(arranged, original, CV_8UC3);
    const int order[] = {0, 0, 2, 1, 1, 2};
    cv::mixChannels(&from, 1, &to, 1, order, 3);
}

}  // namespace

void RestrictOpenCV(InstructionSet set, char** argv) {
    constexpr const char* kVariable = "OPENCV_CPU_DISABLE";
    const char* const features = set == InstructionSet::kAVX512 ? ""
                                 : set == InstructionSet::kAVX2 ? "AVX512-SKX"
                                                                : "AVX512-SKX,AVX2,FMA3,FP16,AVX";
    const char* const present = std::getenv(kVariable);
    if (std::string_view(present == nullptr ? "" : present) == features) return;
    setenv(kVariable, features, 1);
    execv("/proc/self/exe", argv);
    throw std::runtime_error("cannot start the program anew");
}

Peer MakeOpenCV(InstructionSet set) {
    cv::setNumThreads(1);
    Peer peer{"OpenCV", true, {}};
    const auto add = [&](const char* operation, std::function<void(const Work&)> convert,
                         void (*arrange)(const Work&, std::uint8_t*) = nullptr) {
        peer.contenders.push_back({operation, std::move(convert), false, arrange});
    };
    add("BGR32ToRGB24", ConvertColours<cv::COLOR_BGRA2RGB, CV_8UC4, CV_8UC3>);
    add("RGB24ToRGB32", ConvertColours<cv::COLOR_RGB2RGBA, CV_8UC3, CV_8UC4>);
    add("RGB48ToRGB24", NarrowWords<3>);
    add("RGB24ToPlanar", [](const Work& w) {
        const std::size_t pixels = w.GetPixelCount();
        cv::Mat planes[3];
        for (std::size_t c = 0; c < 3; ++c) planes[c] = Image(w.destination + c * pixels, w, CV_8UC1);
        cv::split(Image(w.source, w, CV_8UC3), planes);
    });
    add("RGB24ToRGB24/tables", [](const Work& w) { ThroughTables(Image(w.source, w, CV_8UC3), w); });
    add("YUV444ToRGB24", ConvertColours<cv::COLOR_YCrCb2RGB, CV_8UC3, CV_8UC3>, ExchangeChroma);
    add("YUYVToRGB32", ConvertColours<cv::COLOR_YUV2RGBA_YUYV, CV_8UC2, CV_8UC4>);
    add("YUYVToRGB24", ConvertColours<cv::COLOR_YUV2RGB_YUYV, CV_8UC2, CV_8UC3>);
    add("UYVYToRGB24", ConvertColours<cv::COLOR_YUV2RGB_UYVY, CV_8UC2, CV_8UC3>);
    add("NV12ToRGB24", FromYUV420<cv::COLOR_YUV2RGB_NV12>);
    add("I420ToRGB24", FromYUV420<cv::COLOR_YUV2RGB_I420>);
    add("RGB24ToI420", [](const Work& w) {
        cv::Mat destination = YUV420(w.destination, w);
        cv::cvtColor(Image(w.source, w, CV_8UC3), destination, cv::COLOR_RGB2YUV_I420);
    });
    add("Gray12ToGray8", NarrowWords<1>);
    add("Mono10BEToGray10", [](const Work& w) {
        const cv::Mat source = Image(w.source, w, CV_8UC2);
        cv::Mat destination = Image(w.destination, w, CV_8UC2);
        const int order[] = {0, 1, 1, 0};
        cv::mixChannels(&source, 1, &destination, 1, order, 2);
    });
    add("Gray8ToRGB24", ConvertColours<cv::COLOR_GRAY2RGB, CV_8UC1, CV_8UC3>);
    add("Bayer8ToRGB24/bilinear", ConvertColours<cv::COLOR_BayerGRBG2RGB, CV_8UC1, CV_8UC3>);
    add("Bayer8ToRGB32/bilinear", ConvertColours<cv::COLOR_BayerGRBG2RGBA, CV_8UC1, CV_8UC4>);
    add("Bayer8ToRGB24/bilinear/tables", [](const Work& w) {
        cv::Mat colours = Image(w.scratch, w, CV_8UC3);
        cv::cvtColor(Image(w.source, w, CV_8UC1), colours, cv::COLOR_BayerGRBG2RGB);
        ThroughTables(colours, w);
    });
    // It knows no packed samples: the plain loop unpacks them.
    add("Bayer12pToRGB24/bilinear", [unpack = PlainLoopOf(set, "Bayer12pToBayer8")](const Work& w) {
        unpack(w);
        cv::Mat destination = Image(w.destination, w, CV_8UC3);
        cv::cvtColor(Image(w.scratch, w, CV_8UC1), destination, cv::COLOR_BayerRGGB2RGB);
    });
    // Nor NV12 as a destination: libyuv goes on from R, G, B, A.
    add("Bayer8ToNV12/bilinear", [](const Work& w) {
        cv::Mat colours = Image(w.scratch, w, CV_8UC4);
        cv::cvtColor(Image(w.source, w, CV_8UC1), colours, cv::COLOR_BayerGRBG2RGBA);
        libyuv::ABGRToNV12(w.scratch, 4 * w.GetWidth(), w.destination, w.GetWidth(), w.destination + w.GetPixelCount(),
                           w.GetWidth(), w.GetWidth(), w.GetHeight());
    });
    return peer;
}

}  // namespace kybench

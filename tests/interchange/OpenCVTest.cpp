// The bytes of OpenCV's matrices, converted by the library and by cvtColor.
#include <tests/interchange/PeerTest.h>

#ifdef KYIMGLIB_TESTS_HAVE_OPENCV

#include <opencv2/imgproc.hpp>

namespace {

using interchange::Bytes;
using interchange::Picture;
using interchange::Row;

class OpenCVTest : public interchange::PeerTest {
protected:
    Bytes ConvertByPeer(const Picture& source, const Picture&) const override {
        const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(source.type);
        const int bytes = (source.type & KY_TYPE_PLANAR) != 0 ? 1 : type.GetPixelByteSize();  // planes are more lines
        const int element = type.IsBayerPattern() && bytes == 2 ? CV_16UC1 : CV_8UC(bytes);
        const auto width = static_cast<int>(source.width);
        Bytes copy = source.bytes;
        const cv::Mat from(static_cast<int>(copy.size()) / width / bytes, width, element, copy.data());
        cv::Mat to;
        cv::cvtColor(from, to, GetParam().code);
        return {to.data, to.data + to.total() * to.elemSize()};
    }
};

/// The library truncates averages of bilinear demosaicing, OpenCV rounds them; their factors of YUV differ in the last bits.
constexpr int kRounding = 1;

/// OpenCV takes a darker Y for black.
constexpr std::uint8_t kBlack = 16;

const Row kRows[] = {
    {.from = "RGB", .to = "BGR", .code = cv::COLOR_RGB2BGR},
    {.from = "RGBA", .to = "RGB", .code = cv::COLOR_RGBA2RGB},
    {.from = "BGRA", .to = "RGB", .code = cv::COLOR_BGRA2RGB},
    {.from = "BGRA", .to = "BGR", .code = cv::COLOR_BGRA2BGR},
    {.from = "RGB", .to = "RGBA", .code = cv::COLOR_RGB2RGBA},
    {.from = "RGB", .to = "BGRA", .code = cv::COLOR_RGB2BGRA},
    {.from = "GRAY8", .to = "RGB", .code = cv::COLOR_GRAY2RGB},
    {.from = "RGB", .to = "rgb565le", .code = cv::COLOR_RGB2BGR565},
    // Samples of 5 and 6 bits are rounded to 255 steps here, and shifted there.
    {.from = "rgb565le", .to = "RGB", .resultMask = {0xF8, 0xFC, 0xF8}, .code = cv::COLOR_BGR5652RGB},

    {.from = "bayer_grbg8", .to = "RGB", .limit = kRounding, .code = cv::COLOR_BayerGRBG2RGB},
    {.from = "bayer_rggb8", .to = "RGB", .limit = kRounding, .code = cv::COLOR_BayerRGGB2RGB},
    {.from = "bayer_gbrg8", .to = "BGR", .limit = kRounding, .code = cv::COLOR_BayerGBRG2BGR},
    {.from = "bayer_bggr8", .to = "BGR", .limit = kRounding, .code = cv::COLOR_BayerBGGR2BGR},
    {.from = "bayer_grbg16le",
     .to = "rgb48le",
     .limit = kRounding,
     .resultMask = {0, 0xFF},
     .code = cv::COLOR_BayerGRBG2RGB},
    {.from = "bayer_rggb16le",
     .to = "rgb48le",
     .limit = kRounding,
     .resultMask = {0, 0xFF},
     .code = cv::COLOR_BayerRGGB2RGB},

    {.from = "YUY2", .to = "RGB", .limit = kRounding, .lowest = kBlack, .code = cv::COLOR_YUV2RGB_YUY2},
    {.from = "YUY2", .to = "BGR", .limit = kRounding, .lowest = kBlack, .code = cv::COLOR_YUV2BGR_YUY2},
    {.from = "UYVY", .to = "RGB", .limit = kRounding, .lowest = kBlack, .code = cv::COLOR_YUV2RGB_UYVY},
    {.from = "YVYU", .to = "RGB", .limit = kRounding, .lowest = kBlack, .code = cv::COLOR_YUV2RGB_YVYU},
    {.from = "NV12", .to = "RGB", .limit = kRounding, .lowest = kBlack, .code = cv::COLOR_YUV2RGB_NV12},
    {.from = "NV21", .to = "RGB", .limit = kRounding, .lowest = kBlack, .code = cv::COLOR_YUV2RGB_NV21},
    {.from = "I420", .to = "BGR", .limit = kRounding, .lowest = kBlack, .code = cv::COLOR_YUV2BGR_I420},
    {.from = "YV12", .to = "BGR", .limit = kRounding, .lowest = kBlack, .code = cv::COLOR_YUV2BGR_YV12},
    {.from = "RGB", .to = "I420", .limit = kRounding, .code = cv::COLOR_RGB2YUV_I420},
};

TEST_P(OpenCVTest, SameAsTheLibrary) { CompareRow(238, 118); }

INSTANTIATE_TEST_SUITE_P(Formats, OpenCVTest, testing::ValuesIn(kRows), interchange::NameOf);

}  // namespace

#else

TEST(OpenCVTest, SameAsTheLibrary) { GTEST_SKIP() << "needs OpenCV: package libopencv-imgproc-dev"; }

#endif

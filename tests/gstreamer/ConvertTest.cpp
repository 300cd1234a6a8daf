// Pixels: the element's output against the library's.
#include <tests/gstreamer/Harness.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

namespace {

using gsttest::Bytes;
using gsttest::Element;

constexpr std::uint32_t kBilinear = KY_FLAG_BAYER_INTERPOLATE;

std::string Caps(const char* mediaType, const std::string& format, std::uint32_t width, std::uint32_t height,
                 const char* more = "") {
    return std::string(mediaType) + (format.empty() ? "" : ",format=" + format) + ",width=" + std::to_string(width) +
           ",height=" + std::to_string(height) + ",framerate=30/1" + more;
}

std::string RawCaps(const std::string& format) { return "video/x-raw,format=" + format; }

/// A conversion, by names of GStreamer; `library...` where several types have these bytes and the right one is not the first.
struct Row {
    const char* from;
    const char* to;
    const char* libraryFrom = nullptr;
    const char* libraryTo = nullptr;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.from << " to " << row.to; }

std::string NameOf(const testing::TestParamInfo<Row>& row) {
    std::string name = std::string(row.param.from) + "_to_" + row.param.to;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

bool IsBayer(const std::string& format) {
    return std::string("bggr gbrg grbg rggb").find(format.substr(0, 4)) != std::string::npos;
}

/// A frame in the default layout of a format, also as an image of the library. Planes have no padding there.
struct Frame {
    Bytes bytes, pixels;
    KyImage image;

    Frame(const char* format, std::int64_t type, std::uint32_t width, std::uint32_t height) {
        if (IsBayer(format)) {
            const std::size_t stride = (width * (std::string(format).size() > 4 ? 2U : 1U) + 3) / 4 * 4;
            bytes = gsttest::RandomBytes(stride * height);
            image = gsttest::ImageOf(bytes, type, width, height, stride);
            return;
        }
        GstCaps* const caps = gst_caps_from_string(Caps("video/x-raw", format, width, height).c_str());
        GstVideoInfo info;
        EXPECT_TRUE(gst_video_info_from_caps(&info, caps));
        bytes = gsttest::RandomBytes(GST_VIDEO_INFO_SIZE(&info));
        pixels = gsttest::PixelsOf(gsttest::MakeBuffer(bytes), caps);
        gst_caps_unref(caps);
        const bool hasPlanes = GST_VIDEO_INFO_N_PLANES(&info) > 1;
        image = gsttest::ImageOf(hasPlanes ? pixels : bytes, type, width, height,
                                 hasPlanes ? 0 : static_cast<std::size_t>(GST_VIDEO_INFO_PLANE_STRIDE(&info, 0)));
    }
};

class FormatTest : public testing::TestWithParam<Row> {
protected:
    static void Compare(const Row& row, std::uint32_t width, std::uint32_t height) {
        SCOPED_TRACE(width);
        std::uint32_t flags = 0;
        std::int64_t source = gsttest::TypeNamed(row.from, &flags);
        if (row.libraryFrom != nullptr) source = gsttest::TypeNamed(row.libraryFrom);
        const std::int64_t destination = gsttest::TypeNamed(row.libraryTo != nullptr ? row.libraryTo : row.to);
        const Frame frame(row.from, source, width, height);

        Element element;
        element.SetCaps(Caps(IsBayer(row.from) ? "video/x-bayer" : "video/x-raw", row.from, width, height),
                        RawCaps(row.to));
        ASSERT_EQ(GST_FLOW_OK, element.Push(frame.bytes)) << element.Complaint();
        EXPECT_TRUE(gsttest::ConvertByLibrary(frame.image, destination, flags | kBilinear) == element.PullPixels());
    }
};

/// Widths at which lines have padding, at which they have none, and at which those of I420 are not half of each other.
TEST_P(FormatTest, SameAsTheLibrary) {
    for (const std::uint32_t width : {237U, 240U, 244U}) Compare(GetParam(), width, 35);
}

constexpr Row kRows[] = {
    {"bggr", "BGRx"},
    {"gbrg", "RGB"},
    {"rggb", "I420"},
    {"grbg", "RGBP", nullptr, "0x00820002"},
    {"rggb10le", "RGBA"},
    {"grbg12le", "BGR"},
    {"bggr12le", "RGBA64_LE", nullptr, "RGBA 64-bits, Scaled"},
    {"gbrg14le", "NV12"},
    {"rggb16le", "ARGB"},
    {"grbg12be", "xBGR", nullptr, "ABGR"},
    {"GRAY8", "RGB"},
    {"GRAY16_LE", "GRAY8"},
    {"GRAY16_BE", "BGRx"},
    {"RGB", "BGRA"},
    {"BGRx", "RGB", "BGRA"},
    {"RGBA", "GRAY16_LE", nullptr, "Grayscale 16-bits, Scaled"},
    {"RGBA64_LE", "RGB"},
    {"GBR", "RGB"},
    {"RGBP", "BGRx", "0x00820002"},
    {"RGB16", "RGB", "BGR565p"},
    {"YUY2", "RGB", "YCbCr 8-bits 4:2:2, YUYV"},
    {"UYVY", "BGRx"},
    {"VYUY", "RGB"},
    {"Y210", "RGB", "YCbCr 10-bits 4:2:2, Y210"},
    {"IYU1", "RGB", "YCbCr 8-bits 4:1:1, UYYVYY"},
    {"NV12", "RGBx"},
    {"NV16", "I420"},
    {"I420", "NV12"},
    {"YV12", "RGB"},
    {"Y42B", "BGR"},
    {"P010_10LE", "RGB"},
};
INSTANTIATE_TEST_SUITE_P(Formats, FormatTest, testing::ValuesIn(kRows), NameOf);

TEST(ConvertTest, ColorimetryOfBothSides) {
    const Bytes pixels = gsttest::RandomBytes(64 * 16 * 2);
    Element element;
    element.SetCaps(Caps("video/x-raw", "UYVY", 64, 16, ",colorimetry=bt709"),
                    RawCaps("NV12,colorimetry=(string)1:4:0:0"));
    ASSERT_EQ(GST_FLOW_OK, element.Push(pixels)) << element.Complaint();
    EXPECT_EQ(
        gsttest::ConvertByLibrary(gsttest::ImageOf(pixels, KY_UYVY | KY_BT709, 64, 16), KY_NV12 | KY_FULL_RANGE, 0),
        element.PullPixels());
}

/// What cameras send without padding although the caps want it.
TEST(ConvertTest, BayerWithoutPadding) {
    const Bytes pixels = gsttest::RandomBytes(37 * 16);
    Element element;
    element.SetCaps(Caps("video/x-bayer", "rggb", 37, 16), RawCaps("RGB"));
    ASSERT_EQ(GST_FLOW_OK, element.Push(pixels)) << element.Complaint();
    EXPECT_EQ(
        gsttest::ConvertByLibrary(gsttest::ImageOf(pixels, 0x20010, 37, 16), KY_RGB24, KY_FLAG_BAYER_RGGB | kBilinear),
        element.PullPixels());
}

TEST(ConvertTest, StridesOfVideoMeta) {
    constexpr gint kStride = 80;
    constexpr gsize kOffset = 24;
    const Bytes bytes = gsttest::RandomBytes(kOffset + kStride * 16);
    const Bytes pixels(bytes.begin() + kOffset, bytes.end());
    for (const bool isBayer : {true, false}) {
        Element element;
        element.SetCaps(isBayer ? Caps("video/x-bayer", "rggb", 30, 16) : Caps("video/x-raw", "UYVY", 30, 16),
                        RawCaps("RGB"));
        GstBuffer* const buffer = gsttest::MakeBuffer(bytes);
        gsize offsets[GST_VIDEO_MAX_PLANES] = {kOffset};
        gint strides[GST_VIDEO_MAX_PLANES] = {kStride};
        gst_buffer_add_video_meta_full(buffer, GST_VIDEO_FRAME_FLAG_NONE,
                                       isBayer ? GST_VIDEO_FORMAT_ENCODED : GST_VIDEO_FORMAT_UYVY, 30, 16, 1, offsets,
                                       strides);
        ASSERT_EQ(GST_FLOW_OK, gst_harness_push(element.harness, buffer)) << element.Complaint();
        const KyImage image = gsttest::ImageOf(pixels, isBayer ? 0x20010 : KY_UYVY, 30, 16, kStride);
        EXPECT_EQ(gsttest::ConvertByLibrary(image, KY_RGB24, KY_FLAG_BAYER_RGGB | kBilinear), element.PullPixels());
    }
}

/// A pool of downstream's whose lines are padded, and planes too.
GstPadProbeReturn AnswerAllocation(GstPad*, GstPadProbeInfo* info, gpointer) {
    GstQuery* const query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_ALLOCATION) return GST_PAD_PROBE_OK;
    GstCaps* caps = nullptr;
    gst_query_parse_allocation(query, &caps, nullptr);
    GstVideoInfo video;
    gst_video_info_from_caps(&video, caps);
    GstVideoAlignment padding;
    gst_video_alignment_reset(&padding);
    padding.padding_right = 50;
    padding.padding_bottom = 6;

    GstBufferPool* const pool = gst_video_buffer_pool_new();
    GstStructure* const config = gst_buffer_pool_get_config(pool);
    gst_buffer_pool_config_set_params(config, caps, static_cast<guint>(GST_VIDEO_INFO_SIZE(&video)), 0, 0);
    gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
    gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_ALIGNMENT);
    gst_buffer_pool_config_set_video_alignment(config, &padding);
    gst_buffer_pool_set_config(pool, config);
    gst_query_add_allocation_pool(query, pool, static_cast<guint>(GST_VIDEO_INFO_SIZE(&video)), 0, 0);
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    gst_object_unref(pool);
    return GST_PAD_PROBE_HANDLED;
}

TEST(ConvertTest, PoolAndStridesOfDownstream) {
    for (const char* const format : {"RGB", "NV12", "I420", "RGBP"}) {
        SCOPED_TRACE(format);
        const Bytes pixels = gsttest::RandomBytes(36 * 17);
        Element element;
        gst_pad_add_probe(element.harness->sinkpad, GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, &AnswerAllocation, nullptr,
                          nullptr);
        element.SetCaps(Caps("video/x-bayer", "rggb", 36, 17), RawCaps(format));
        ASSERT_EQ(GST_FLOW_OK, element.Push(pixels)) << element.Complaint();
        GstBuffer* const buffer = gst_harness_pull(element.harness);
        const GstVideoMeta* const meta = gst_buffer_get_video_meta(buffer);
        ASSERT_NE(nullptr, meta);
        EXPECT_LE(36 + 50, meta->stride[0]);
        GstCaps* const caps = gst_pad_get_current_caps(element.harness->sinkpad);
        const std::int64_t type =
            format == std::string("RGBP") ? std::int64_t{KY_RGB24_PLANAR} : gsttest::TypeNamed(format);
        EXPECT_EQ(
            gsttest::ConvertByLibrary(gsttest::ImageOf(pixels, 0x20010, 36, 17), type, KY_FLAG_BAYER_RGGB | kBilinear),
            gsttest::PixelsOf(buffer, caps));
        gst_caps_unref(caps);
    }
}

/// Caps cannot say what is in these buffers, or say something else.
TEST(ConvertTest, PixelFormat) {
    const Bytes packed = gsttest::RandomBytes(37U / 2 * 3 * 16 + 3 * 16);
    for (const char* const caps : {"application/octet-stream", "video/x-bayer"}) {
        Element element({{"pixel-format", "BayerRG12Packed"}});
        element.SetCaps(Caps(caps, caps[0] == 'v' ? "rggb12p" : "", 37, 16), RawCaps("RGB"));
        ASSERT_EQ(GST_FLOW_OK, element.Push(packed)) << element.Complaint();
        EXPECT_EQ(gsttest::ConvertByLibrary(gsttest::ImageOf(packed, 0x00420012, 37, 16), KY_RGB24,
                                            KY_FLAG_BAYER_RGGB | kBilinear),
                  element.PullPixels());
    }
    const Bytes words = gsttest::RandomBytes(40U * 16 * 2);
    Element element({{"pixel-format", "Mono12"}});
    element.SetCaps(Caps("video/x-raw", "GRAY16_LE", 38, 16), RawCaps("GRAY8"));
    ASSERT_EQ(GST_FLOW_OK, element.Push(words)) << element.Complaint();
    EXPECT_EQ(gsttest::ConvertByLibrary(gsttest::ImageOf(words, 0x00010003, 38, 16, 76), KY_GRAYSCALE8, 0),
              element.PullPixels());

    Element padded({{"pixel-format", "BayerRG8"}, {"stride", "64"}});
    padded.SetCaps(Caps("application/octet-stream", "", 37, 16), RawCaps("RGB"));
    ASSERT_EQ(GST_FLOW_OK, padded.Push(words)) << padded.Complaint();
    EXPECT_EQ(gsttest::ConvertByLibrary(gsttest::ImageOf(words, 0x20010, 37, 16, 64), KY_RGB24,
                                        KY_FLAG_BAYER_RGGB | kBilinear),
              padded.PullPixels());
}

struct GainRow {
    const char* mediaType;
    const char* from;
    const char* to;
    std::uint32_t bits;  ///< of the samples that gains are for
    std::int64_t source, destination;
};

/// Gains count once, in values of the input's samples.
TEST(ConvertTest, GainsAndOffsets) {
    const GainRow rows[] = {{"video/x-bayer", "rggb", "RGB", 8, 0x20010, KY_RGB24},
                            {"video/x-bayer", "rggb12le", "RGB", 12, 0x20012, KY_RGB24},
                            {"video/x-bayer", "rggb12le", "RGBA64_LE", 12, 0x20012, KY_RGBA64_SCALED},
                            {"video/x-bayer", "rggb16le", "NV12", 16, KY_BAYER16, KY_NV12},
                            {"video/x-raw", "UYVY", "BGR", 8, KY_UYVY, KY_BGR24},
                            {"video/x-raw", "RGB", "RGB", 8, KY_RGB24 | 0x400000, KY_RGB24},
                            {"video/x-raw", "BGRx", "BGRx", 8, KY_BGRA32, KY_BGR32}};
    for (const GainRow& row : rows) {
        SCOPED_TRACE(std::string(row.from) + " to " + row.to);
        KyRGBFilter filter(row.bits);
        const auto offset = static_cast<std::uint16_t>(filter.GetEntryCount() / 16);
        filter.SetMultipliers(1.9, 0.5, 1.6, 0, offset, 0);
        const Bytes pixels = gsttest::RandomBytes(32 * 16 * 4);
        Element element;
        element.Set("gains", "<1.9,0.5,1.6>");
        element.Set("offsets", ("<0," + std::to_string(offset) + ",0>").c_str());
        element.SetCaps(Caps(row.mediaType, row.from, 32, 16), RawCaps(row.to));
        ASSERT_EQ(GST_FLOW_OK, element.Push(pixels)) << element.Complaint();
        EXPECT_EQ(gsttest::ConvertByLibrary(gsttest::ImageOf(pixels, row.source, 32, 16), row.destination,
                                            KY_FLAG_BAYER_RGGB | kBilinear, &filter),
                  element.PullPixels());
    }
}

TEST(ConvertTest, GainsOfPlanesCountOnce) {
    const Bytes pixels = gsttest::RandomBytes(32 * 16);
    Element planes, interleaved;
    for (Element* const element : {&planes, &interleaved}) {
        element->Set("gains", "<2,1,3>");
        element->SetCaps(Caps("video/x-bayer", "rggb", 32, 16), RawCaps(element == &planes ? "RGBP" : "RGB"));
        ASSERT_EQ(GST_FLOW_OK, element->Push(pixels)) << element->Complaint();
    }
    const Bytes expected = interleaved.PullPixels(), result = planes.PullPixels();
    ASSERT_EQ(expected.size(), result.size());
    for (std::size_t pixel = 0; pixel < result.size() / 3; ++pixel)
        for (std::size_t channel = 0; channel < 3; ++channel)
            ASSERT_EQ(expected[pixel * 3 + channel], result[channel * result.size() / 3 + pixel]) << pixel;
}

TEST(ConvertTest, PropertiesChangeWhilePlaying) {
    const Bytes pixels = gsttest::RandomBytes(32 * 16);
    const KyImage image = gsttest::ImageOf(pixels, 0x20010, 32, 16);
    KyRGBFilter filter(8);
    filter.SetMultipliers(2, 1, 1);
    Element element;
    element.SetCaps(Caps("video/x-bayer", "rggb", 32, 16), RawCaps("RGB"));
    const auto expect = [&](std::uint32_t flags, const KyRGBFilter* expectedFilter) {
        ASSERT_EQ(GST_FLOW_OK, element.Push(pixels)) << element.Complaint();
        EXPECT_EQ(gsttest::ConvertByLibrary(image, KY_RGB24, KY_FLAG_BAYER_RGGB | flags, expectedFilter),
                  element.PullPixels());
    };
    expect(kBilinear, nullptr);
    element.Set("demosaic", "nearest");
    expect(0, nullptr);
    element.Set("gains", "<2,1,1>");
    expect(0, &filter);
    element.Set("gains", "<1,1,1>");
    expect(0, nullptr);
}

/// The size is large enough for bands.
TEST(ConvertTest, AnyNumberOfThreads) {
    const Bytes pixels = gsttest::RandomBytes(1024 * 768);
    const Bytes expected = gsttest::ConvertByLibrary(gsttest::ImageOf(pixels, 0x20010, 1024, 768), KY_RGB24,
                                                     KY_FLAG_BAYER_RGGB | kBilinear);
    Element element;
    element.SetCaps(Caps("video/x-bayer", "rggb", 1024, 768), RawCaps("RGB"));
    for (const char* const threads : {"0", "1", "2", "7", "3"}) {
        element.Set("n-threads", threads);
        ASSERT_EQ(GST_FLOW_OK, element.Push(pixels)) << element.Complaint();
        EXPECT_TRUE(expected == element.PullPixels()) << threads;
    }
}

/// What a source of GStreamer's own makes.
TEST(ConvertTest, TestPicturesOfGStreamer) {
    GstElement* const available = gst_element_factory_make("videotestsrc", nullptr);
    if (available == nullptr) GTEST_SKIP() << "needs videotestsrc: package gstreamer1.0-plugins-base";
    gst_object_unref(available);
    for (const char* const from : {"bggr", "gbrg", "grbg", "rggb", "UYVY", "NV12", "RGBx"}) {
        SCOPED_TRACE(from);
        const char* const mediaType = IsBayer(from) ? "video/x-bayer" : "video/x-raw";
        std::uint32_t flags = 0;
        const std::int64_t type = gsttest::TypeNamed(from, &flags);
        Element element;
        gst_harness_set_sink_caps_str(element.harness, "video/x-raw,format=BGR");
        gst_harness_add_src_parse(
            element.harness,
            ("videotestsrc pattern=smpte ! capsfilter caps=" + Caps(mediaType, from, 320, 240)).c_str(), FALSE);
        gst_harness_play(element.harness->src_harness);
        for (int frame = 0; frame < 3; ++frame) {
            GstBuffer* const buffer = gst_harness_pull(element.harness->src_harness);
            const Bytes pixels = gsttest::BytesOf(buffer);
            ASSERT_EQ(GST_FLOW_OK, gst_harness_push(element.harness, buffer)) << element.Complaint();
            EXPECT_EQ(gsttest::ConvertByLibrary(gsttest::ImageOf(pixels, type, 320, 240), KY_BGR24, flags | kBilinear),
                      element.PullPixels());
        }
    }
}

}  // namespace

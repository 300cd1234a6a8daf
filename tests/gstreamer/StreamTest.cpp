// Everything but pixels: negotiation, passthrough, timestamps, events and refusals.
#include <tests/gstreamer/Harness.h>

#include <gtest/gtest.h>

namespace {

using gsttest::Bytes;
using gsttest::Element;

constexpr const char* kBayer = "video/x-bayer,format=rggb,width=32,height=16,framerate=30/1";
constexpr const char* kGray = "video/x-raw,format=GRAY8,width=32,height=16,framerate=30/1";
const Bytes kFrame = gsttest::RandomBytes(32 * 16);

std::string ChosenFormat(const char* input, const std::string& output) {
    Element element;
    element.SetCaps(input, output);
    element.Push(gsttest::RandomBytes(32 * 16 * 4));
    return element.OutputField("format");
}

TEST(StreamTest, ChoosesAmongDownstreamsFormats) {
    EXPECT_EQ("NV12", ChosenFormat(kBayer, "video/x-raw,format={GRAY8,Y444,NV12}"));
    EXPECT_EQ("BGRx", ChosenFormat(kBayer, "video/x-raw,format={GRAY16_LE,NV12,BGRx}"));
    EXPECT_EQ("RGB", ChosenFormat(kBayer, "video/x-raw"));
    EXPECT_EQ("GRAY8", ChosenFormat(kGray, "video/x-raw,format={RGB,GRAY8}"));
    EXPECT_EQ("GRAY8",
              ChosenFormat("video/x-raw,format=GRAY16_LE,width=32,height=16", "video/x-raw,format={RGB,GRAY8}"));
    EXPECT_EQ("UYVY", ChosenFormat("video/x-raw,format=UYVY,width=32,height=16", "video/x-raw"));
}

/// What upstream may send, so that a source that has several formats finds one.
TEST(StreamTest, TellsUpstreamWhatBecomesTheOutput) {
    Element element;
    gst_harness_set_sink_caps_str(element.harness, "video/x-raw,format=GRAY8,width=32");
    GstCaps* const caps = gst_pad_peer_query_caps(element.harness->srcpad, nullptr);
    const auto allows = [&](const char* text) {
        GstCaps* const one = gst_caps_from_string(text);
        const bool result = gst_caps_can_intersect(caps, one);
        gst_caps_unref(one);
        return result;
    };
    EXPECT_TRUE(allows("video/x-raw,format=GRAY16_LE,width=32"));
    EXPECT_FALSE(allows("video/x-raw,format=GRAY16_LE,width=33"));
    EXPECT_FALSE(allows("video/x-raw,format=UYVY,width=32"));  // no colours become 8-bit gray
    EXPECT_FALSE(allows(kBayer));
    EXPECT_FALSE(allows("application/octet-stream,width=32,height=16"));  // without pixel-format
    gst_caps_unref(caps);
}

TEST(StreamTest, PassesThroughWhatNeedsNothing) {
    Element element;
    const char* const caps = "video/x-raw,format=RGB,width=32,height=16,framerate=30/1";
    element.SetCaps(caps, caps);
    const auto isSameBuffer = [&] {
        GstBuffer* const buffer = gsttest::MakeBuffer(gsttest::RandomBytes(32 * 16 * 3));
        EXPECT_EQ(GST_FLOW_OK, gst_harness_push(element.harness, buffer));
        GstBuffer* const result = gst_harness_pull(element.harness);
        const bool isSame = result == buffer;
        gst_buffer_unref(result);
        return isSame;
    };
    EXPECT_TRUE(isSameBuffer());
    element.Set("gains", "<2,1,1>");
    EXPECT_FALSE(isSameBuffer());
    element.Set("gains", "<1,1,1>");
    EXPECT_TRUE(isSameBuffer());
}

/// What the library cannot convert passes through all the same.
TEST(StreamTest, PassesThroughInterlacedVideo) {
    const char* const caps =
        "video/x-raw,format=UYVY,width=32,height=16,framerate=25/1,interlace-mode=interleaved,colorimetry=bt2020";
    Element element;
    element.SetCaps(caps, caps);
    EXPECT_EQ(GST_FLOW_OK, element.Push(gsttest::RandomBytes(32 * 16 * 2))) << element.Complaint();
}

TEST(StreamTest, KeepsTimestampsAndMeta) {
    Element element;
    element.SetCaps(kBayer, "video/x-raw,format=RGB");
    GstBuffer* const buffer = gsttest::MakeBuffer(kFrame);
    GST_BUFFER_PTS(buffer) = 3 * GST_SECOND;
    GST_BUFFER_DURATION(buffer) = GST_SECOND / 30;
    GST_BUFFER_OFFSET(buffer) = 90;
    GST_BUFFER_FLAG_SET(buffer, GST_BUFFER_FLAG_DISCONT);
    gst_buffer_add_video_region_of_interest_meta(buffer, "face", 1, 2, 3, 4);
    ASSERT_EQ(GST_FLOW_OK, gst_harness_push(element.harness, buffer));
    GstBuffer* const result = gst_harness_pull(element.harness);
    EXPECT_EQ(3 * GST_SECOND, GST_BUFFER_PTS(result));
    EXPECT_EQ(GST_SECOND / 30, GST_BUFFER_DURATION(result));
    EXPECT_EQ(90U, GST_BUFFER_OFFSET(result));
    EXPECT_TRUE(GST_BUFFER_FLAG_IS_SET(result, GST_BUFFER_FLAG_DISCONT));
    EXPECT_NE(nullptr, gst_buffer_get_meta(result, GST_VIDEO_REGION_OF_INTEREST_META_API_TYPE));
    gst_buffer_unref(result);
}

TEST(StreamTest, FormatAndSizeChange) {
    Element element;
    element.SetCaps(kBayer, "video/x-raw,format=RGB");
    EXPECT_EQ(GST_FLOW_OK, element.Push(kFrame));
    EXPECT_EQ(32U * 16 * 3, element.PullPixels().size());
    gst_harness_set_src_caps_str(element.harness, "video/x-raw,format=GRAY8,width=16,height=32,framerate=30/1");
    EXPECT_EQ(GST_FLOW_OK, element.Push(kFrame));
    const Bytes gray = element.PullPixels();
    ASSERT_EQ(32U * 16 * 3, gray.size());
    EXPECT_EQ(kFrame[100], gray[302]);
    gst_harness_set_src_caps_str(element.harness, "video/x-bayer,format=bggr12le,width=8,height=4,framerate=30/1");
    EXPECT_EQ(GST_FLOW_OK, element.Push(gsttest::RandomBytes(64)));
    EXPECT_EQ(8U * 4 * 3, element.PullPixels().size());
}

TEST(StreamTest, EndAndFlush) {
    Element element;
    element.SetCaps(kBayer, "video/x-raw,format=RGB");
    EXPECT_EQ(GST_FLOW_OK, element.Push(kFrame));
    EXPECT_TRUE(gst_harness_push_event(element.harness, gst_event_new_flush_start()));
    EXPECT_EQ(GST_FLOW_FLUSHING, element.Push(kFrame));
    EXPECT_TRUE(gst_harness_push_event(element.harness, gst_event_new_flush_stop(TRUE)));
    GstSegment segment;
    gst_segment_init(&segment, GST_FORMAT_TIME);
    EXPECT_TRUE(gst_harness_push_event(element.harness, gst_event_new_segment(&segment)));
    EXPECT_EQ(GST_FLOW_OK, element.Push(kFrame));
    EXPECT_TRUE(gst_harness_push_event(element.harness, gst_event_new_eos()));
    EXPECT_EQ(GST_FLOW_EOS, element.Push(kFrame));
}

TEST(StreamTest, DropsWhatComesTooLate) {
    Element element;
    element.SetCaps(kBayer, "video/x-raw,format=RGB");
    const auto push = [&](GstClockTime time) {
        GstBuffer* const buffer = gsttest::MakeBuffer(kFrame);
        GST_BUFFER_PTS(buffer) = time;
        EXPECT_EQ(GST_FLOW_OK, gst_harness_push(element.harness, buffer));
        return gst_harness_buffers_in_queue(element.harness);
    };
    EXPECT_EQ(1U, push(0));
    gst_harness_push_upstream_event(element.harness,
                                    gst_event_new_qos(GST_QOS_TYPE_UNDERFLOW, 2, GST_SECOND, GST_SECOND / 30));
    EXPECT_EQ(1U, push(GST_SECOND / 30));
    EXPECT_EQ(2U, push(10 * GST_SECOND));
}

/// Upstream may give buffers any strides, of Bayer mosaics too, and gets a pool.
TEST(StreamTest, OffersVideoMetaAndPool) {
    Element element;
    element.SetCaps(kBayer, "video/x-raw,format=RGB");
    EXPECT_EQ(GST_FLOW_OK, element.Push(kFrame));
    GstCaps* const caps = gst_caps_from_string(kBayer);
    GstQuery* const query = gst_query_new_allocation(caps, TRUE);
    EXPECT_TRUE(gst_pad_peer_query(element.harness->srcpad, query));
    EXPECT_TRUE(gst_query_find_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr));
    ASSERT_EQ(1U, gst_query_get_n_allocation_pools(query));
    guint size = 0;
    gst_query_parse_nth_allocation_pool(query, 0, nullptr, &size, nullptr, nullptr);
    EXPECT_EQ(32U * 16, size);
    gst_query_unref(query);
    gst_caps_unref(caps);
}

// ---- Refusals ----

struct Refusal {
    const char* caps;
    const char* pixelFormat;
    const char* complaint;  ///< a part of the text; null: GStreamer refuses the caps by itself
};

void PrintTo(const Refusal& refusal, std::ostream* out) { *out << refusal.caps; }

class RefusalTest : public testing::TestWithParam<Refusal> {};

TEST_P(RefusalTest, NotNegotiated) {
    Element element({{"pixel-format", GetParam().pixelFormat}});
    element.SetCaps(GetParam().caps, "video/x-raw,format=RGB");
    EXPECT_EQ(GST_FLOW_NOT_NEGOTIATED, element.Push(kFrame));
    const std::string complaint = element.Complaint();
    if (GetParam().complaint == nullptr)
        EXPECT_EQ("", complaint);
    else
        EXPECT_NE(std::string::npos, complaint.find(GetParam().complaint)) << complaint;
    EXPECT_EQ(0U, gst_harness_buffers_received(element.harness));
}

constexpr Refusal kRefusals[] = {
    {"video/x-bayer,format=rggb12p,width=32,height=16", "", nullptr},
    {"video/x-bayer,format=rggb,width=32", "", "no width and height"},
    {"video/x-bayer,format=rggb,width=0,height=16", "", nullptr},
    {"video/x-raw,format=Y444,width=32,height=16", "", nullptr},
    {"application/octet-stream,width=32,height=16", "", nullptr},
    {"video/x-raw,format=UYVY,width=32,height=16,framerate=25/1,interlace-mode=interleaved", "", "deinterlace"},
    {"video/x-raw,format=UYVY,width=32,height=16,framerate=25/1,colorimetry=bt2020", "", "BT.709"},
    {"application/octet-stream,width=32,height=15", "Grayscale 8-bits, Interlaced", "height"},
};
INSTANTIATE_TEST_SUITE_P(Caps, RefusalTest, testing::ValuesIn(kRefusals));

TEST(RefusalTest, TooSmallBuffer) {
    Element element;
    element.SetCaps(kBayer, "video/x-raw,format=RGB");
    EXPECT_EQ(GST_FLOW_ERROR, element.Push(Bytes(32 * 16 - 1)));
    EXPECT_NE(std::string::npos, element.Complaint().find("source holds 511 bytes"));
}

TEST(RefusalTest, UnknownPixelFormat) {
    GstElement* const pipeline = gst_parse_launch("kyconvert pixel-format=BayerRG13", nullptr);
    EXPECT_EQ(GST_STATE_CHANGE_FAILURE, gst_element_set_state(pipeline, GST_STATE_PAUSED));
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(pipeline);
}

TEST(RefusalTest, GainsThatAreNone) {
    Element element;
    for (const char* const gains : {"<1,2>", "<1,1,-1>", "<1,1,red>"}) {
        g_test_expect_message(nullptr, G_LOG_LEVEL_WARNING, "*gains*three numbers*");
        element.Set("gains", gains);
        g_test_assert_expected_messages();
    }
    element.SetCaps(kBayer, "video/x-raw,format=RGB");
    ASSERT_EQ(GST_FLOW_OK, element.Push(kFrame));
    EXPECT_EQ(gsttest::ConvertByLibrary(gsttest::ImageOf(kFrame, 0x20010, 32, 16), KY_RGB24,
                                        KY_FLAG_BAYER_RGGB | KY_FLAG_BAYER_INTERPOLATE),
              element.PullPixels());
}

TEST(RefusalTest, WarnsOfGainsWithoutEffect) {
    Element element;
    element.Set("gains", "<2,1,1>");
    element.SetCaps(kGray, "video/x-raw,format=RGB");
    EXPECT_EQ(GST_FLOW_OK, element.Push(kFrame));
    EXPECT_NE(std::string::npos, element.Complaint().find("no effect"));
}

}  // namespace

#include <tests/gstreamer/Harness.h>

#include <tests/support/Random.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace gsttest {

namespace {

/// GStreamer is initialized before the first test.
class Initialization : public testing::Environment {
    void SetUp() override {
        // The plugin as it was built, and a list of plugins that is not the user's.
        g_setenv("GST_PLUGIN_PATH", KYIMGLIB_PLUGIN_FOLDER, TRUE);
        g_setenv("GST_REGISTRY", KYIMGLIB_PLUGIN_REGISTRY, TRUE);
        gst_init(nullptr, nullptr);
    }
};

const testing::Environment* const initialization = testing::AddGlobalTestEnvironment(new Initialization);

}  // namespace

Element::Element(std::initializer_list<Property> properties) : bus(gst_bus_new()) {
    GstElement* const element = gst_element_factory_make("kyconvert", nullptr);
    if (element == nullptr) throw std::runtime_error("no kyconvert in " KYIMGLIB_PLUGIN_FOLDER);
    gst_object_ref_sink(element);
    for (const auto& [name, value] : properties) gst_util_set_object_arg(G_OBJECT(element), name, value);
    gst_element_set_bus(element, bus);
    harness = gst_harness_new_with_element(element, "sink", "src");
    gst_object_unref(element);
}

Element::~Element() {
    gst_element_set_bus(harness->element, nullptr);
    gst_object_unref(bus);
    gst_harness_teardown(harness);
}

void Element::SetCaps(const std::string& input, const std::string& output) {
    gst_harness_set_sink_caps_str(harness, output.c_str());
    gst_harness_set_src_caps_str(harness, input.c_str());
}

void Element::Set(const char* property, const char* value) {
    gst_util_set_object_arg(G_OBJECT(harness->element), property, value);
}

GstFlowReturn Element::Push(const Bytes& bytes) { return gst_harness_push(harness, MakeBuffer(bytes)); }

std::string Element::OutputField(const char* field) const {
    GstCaps* const caps = gst_pad_get_current_caps(harness->sinkpad);
    if (caps == nullptr) return "";
    const char* const text = gst_structure_get_string(gst_caps_get_structure(caps, 0), field);
    std::string result = text == nullptr ? "" : text;
    gst_caps_unref(caps);
    return result;
}

Bytes Element::PullPixels() {
    GstBuffer* const buffer = gst_harness_try_pull(harness);
    if (buffer == nullptr) return {};
    GstCaps* const caps = gst_pad_get_current_caps(harness->sinkpad);
    Bytes pixels = PixelsOf(buffer, caps);
    gst_caps_unref(caps);
    return pixels;
}

std::string Element::Complaint() {
    GstMessage* const message =
        gst_bus_pop_filtered(bus, static_cast<GstMessageType>(GST_MESSAGE_ERROR | GST_MESSAGE_WARNING));
    if (message == nullptr) return "";
    GError* error = nullptr;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
        gst_message_parse_error(message, &error, nullptr);
    else
        gst_message_parse_warning(message, &error, nullptr);
    std::string text = error->message;
    g_error_free(error);
    gst_message_unref(message);
    return text;
}

Bytes RandomBytes(std::size_t size, unsigned seed) { return support::Random(seed).Bytes(size); }

GstBuffer* MakeBuffer(const Bytes& bytes) {
    GstBuffer* const buffer = gst_buffer_new_and_alloc(bytes.size());
    gst_buffer_fill(buffer, 0, bytes.data(), bytes.size());
    return buffer;
}

Bytes BytesOf(GstBuffer* buffer) {
    Bytes bytes(gst_buffer_get_size(buffer));
    gst_buffer_extract(buffer, 0, bytes.data(), bytes.size());
    return bytes;
}

Bytes PixelsOf(GstBuffer* buffer, GstCaps* caps) {
    Bytes pixels;
    GstVideoInfo info;
    GstVideoFrame frame;
    if (gst_video_info_from_caps(&info, caps) && gst_video_frame_map(&frame, &info, buffer, GST_MAP_READ)) {
        for (guint plane = 0; plane < GST_VIDEO_FRAME_N_PLANES(&frame); ++plane) {
            gint component[GST_VIDEO_MAX_COMPONENTS];
            gst_video_format_info_component(info.finfo, plane, component);
            const int width = GST_VIDEO_FRAME_COMP_WIDTH(&frame, component[0]);
            const int lines = GST_VIDEO_FRAME_COMP_HEIGHT(&frame, component[0]);
            const int bytes = width * GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, component[0]);
            const auto* const first = static_cast<const std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, plane));
            for (int y = 0; y < lines; ++y) {
                const std::uint8_t* const line = first + y * GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane);
                pixels.insert(pixels.end(), line, line + bytes);
            }
        }
        gst_video_frame_unmap(&frame);
    }
    gst_buffer_unref(buffer);
    return pixels;
}

KyImage ImageOf(const Bytes& bytes, std::int64_t type, std::uint32_t width, std::uint32_t height, std::size_t stride) {
    return {type, width, height, const_cast<std::uint8_t*>(bytes.data()), bytes.size(), stride, 0};
}

std::int64_t TypeNamed(const char* name, std::uint32_t* bayerFlags) {
    KyExtendedTypes_Register();
    std::int64_t type = 0;
    EXPECT_EQ(KY_STATUS_SUCCESS, KyPixelFormat_Find(name, &type, bayerFlags)) << KyImage_GetError();
    return type;
}

Bytes ConvertByLibrary(const KyImage& image, std::int64_t destination, std::uint32_t flags, const KyRGBFilter* filter) {
    KyImage result = {destination, image.width, image.height, nullptr, 0, 0, 0};
    EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&result, &result.size)) << KyImage_GetError();
    Bytes bytes(result.size);
    result.data = bytes.data();
    const KyConversion conversion = {sizeof conversion, flags, filter, 0, 0};
    EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&image, &result, &conversion)) << KyImage_GetError();
    return bytes;
}

}  // namespace gsttest

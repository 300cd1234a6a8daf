#include <plugins/gstreamer/KyConvert.h>

#include <plugins/gstreamer/Conversion.h>
#include <plugins/gstreamer/Formats.h>
#include <plugins/gstreamer/Frame.h>

#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <gst/base/gstbasetransform.h>
#include <gst/video/gstvideopool.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

GST_DEBUG_CATEGORY_STATIC(ky_convert_debug);
#define GST_CAT_DEFAULT ky_convert_debug

namespace {

using kygst::Format;

constexpr const char* kRaw = "video/x-raw";
constexpr const char* kBayer = "video/x-bayer";
constexpr const char* kBytes = "application/octet-stream";

/// One side of the element, as its caps say.
struct Side {
    bool isRaw = false;       ///< video/x-raw, which `info` describes
    GstVideoInfo info = {};
    bool arePadded = false;   ///< video/x-bayer: lines are padded to four bytes
    KyImage layout = {};      ///< type, size and, if it is given, stride
    std::uint32_t bayerPattern = 0;
};

/// What the properties say. Under the object lock.
struct Properties {
    kygst::Settings settings;
    std::string pixelFormat, pixelFormatError;
    std::int64_t type = 0;  ///< of pixel-format; 0: as the caps say
    std::uint32_t bayerPattern = 0;
    guint stride = 0;
};

struct State {
    Properties properties;
    // Of the streaming thread.
    Side input, output;
    bool isSame = false;  ///< input and output have the same format
    std::unique_ptr<kygst::Conversion> conversion;
    std::vector<std::uint8_t> inputStaging, outputStaging;
};

struct KyConvert {
    GstBaseTransform base;
    State* state;
};

struct KyConvertClass {
    GstBaseTransformClass base;
};

enum { kPropPixelFormat = 1, kPropStride, kPropDemosaic, kPropGains, kPropOffsets, kPropThreads };
enum { kNearest, kBilinear };

}  // namespace

G_DEFINE_TYPE_WITH_CODE(KyConvert, ky_convert, GST_TYPE_BASE_TRANSFORM,
                        GST_DEBUG_CATEGORY_INIT(ky_convert_debug, "kyconvert", 0, "pixel format conversion"))

namespace {

KyConvert* Self(gpointer object) { return reinterpret_cast<KyConvert*>(object); }
GstBaseTransform* Base(KyConvert* self) { return &self->base; }

Properties GetProperties(KyConvert* self) {
    GST_OBJECT_LOCK(self);
    Properties properties = self->state->properties;
    GST_OBJECT_UNLOCK(self);
    return properties;
}

// ---- Caps ----

void SetFormats(GstStructure* structure, const std::vector<std::string>& names) {
    GValue list = G_VALUE_INIT;
    gst_value_list_init(&list, static_cast<guint>(names.size()));
    for (const std::string& name : names) {
        GValue value = G_VALUE_INIT;
        g_value_init(&value, G_TYPE_STRING);
        g_value_set_string(&value, name.c_str());
        gst_value_list_append_and_take_value(&list, &value);
    }
    gst_structure_take_value(structure, "format", &list);
}

/// Those of `formats` that a structure's field "format" allows; all when it has none.
std::vector<const Format*> AllowedFormats(const GstStructure* structure, const std::vector<Format>& formats) {
    std::vector<const Format*> allowed;
    const GValue* const field = gst_structure_get_value(structure, "format");
    for (const Format& format : formats) {
        GValue name = G_VALUE_INIT;
        g_value_init(&name, G_TYPE_STRING);
        g_value_set_string(&name, format.name.c_str());
        if (field == nullptr || gst_value_intersect(nullptr, field, &name)) allowed.push_back(&format);
        g_value_unset(&name);
    }
    return allowed;
}

bool CanConvert(std::int64_t source, std::int64_t destination) {
    return destination != 0 && KyPixelTypeFactory_HasConverter(source, destination);
}

/// The fields of a structure that do not depend on the format, under another media type.
GstStructure* WithoutFormat(const GstStructure* structure, const char* mediaType) {
    if (g_str_equal(mediaType, kRaw)) {
        GstStructure* const raw = gst_structure_copy(structure);
        gst_structure_set_name(raw, kRaw);
        gst_structure_remove_fields(raw, "format", "colorimetry", "chroma-site", nullptr);
        return raw;
    }
    GstStructure* const other = gst_structure_new_empty(mediaType);
    for (const char* const field : {"width", "height", "framerate"}) {
        const GValue* const value = gst_structure_get_value(structure, field);
        if (value != nullptr) gst_structure_set_value(other, field, value);
    }
    return other;
}

void AppendStructure(GstCaps* caps, const GstStructure* fields, const char* mediaType,
                     const std::vector<std::string>& formats) {
    if (formats.empty()) return;
    GstStructure* const structure = WithoutFormat(fields, mediaType);
    SetFormats(structure, formats);
    gst_caps_append_structure(caps, structure);
}

/// What the input may become.
void AppendOutputs(const Properties& properties, const GstStructure* input, GstCaps* caps) {
    std::vector<std::int64_t> sources;
    const bool isRaw = gst_structure_has_name(input, kRaw);
    if (properties.type != 0) {
        sources.push_back(properties.type);
    } else if (isRaw || gst_structure_has_name(input, kBayer)) {
        if (isRaw) gst_caps_append_structure(caps, gst_structure_copy(input));
        for (const Format* const format : AllowedFormats(input, isRaw ? kygst::RawFormats() : kygst::BayerFormats()))
            sources.push_back(format->source);
    }
    std::vector<std::string> formats;
    for (const Format& format : kygst::RawFormats())
        if (std::any_of(sources.begin(), sources.end(),
                        [&](std::int64_t source) { return CanConvert(source, format.destination); }))
            formats.push_back(format.name);
    AppendStructure(caps, input, kRaw, formats);
}

/// What becomes the output.
void AppendInputs(const Properties& properties, const GstStructure* output, GstCaps* caps) {
    const std::vector<const Format*> outputs = AllowedFormats(output, kygst::RawFormats());
    const auto becomesOutput = [&](std::int64_t source) {
        return std::any_of(outputs.begin(), outputs.end(),
                           [=](const Format* format) { return CanConvert(source, format->destination); });
    };
    if (properties.type != 0) {
        if (!becomesOutput(properties.type)) return;
        for (const char* const mediaType : {kRaw, kBayer, kBytes})
            gst_caps_append_structure(caps, WithoutFormat(output, mediaType));
        return;
    }
    gst_caps_append_structure(caps, gst_structure_copy(output));
    const auto names = [&](const std::vector<Format>& formats) {
        std::vector<std::string> convertible;
        for (const Format& format : formats)
            if (becomesOutput(format.source)) convertible.push_back(format.name);
        return convertible;
    };
    AppendStructure(caps, output, kBayer, names(kygst::BayerFormats()));
    AppendStructure(caps, output, kRaw, names(kygst::RawFormats()));
}

GstCaps* TransformCaps(GstBaseTransform* base, GstPadDirection direction, GstCaps* caps, GstCaps* filter) {
    const Properties properties = GetProperties(Self(base));
    GstCaps* result = gst_caps_new_empty();
    for (guint index = 0; index < gst_caps_get_size(caps); ++index)
        (direction == GST_PAD_SINK ? AppendOutputs : AppendInputs)(properties, gst_caps_get_structure(caps, index), result);
    if (filter != nullptr) {
        GstCaps* const filtered = gst_caps_intersect_full(filter, result, GST_CAPS_INTERSECT_FIRST);
        gst_caps_unref(result);
        result = filtered;
    }
    GST_DEBUG_OBJECT(base, "%" GST_PTR_FORMAT " to %" GST_PTR_FORMAT, caps, result);
    return result;
}

/// Type of an input's pixels; 0 when it is not known yet.
std::int64_t SourceType(const Properties& properties, const GstStructure* input) {
    if (properties.type != 0) return properties.type;
    const char* const name = gst_structure_get_string(input, "format");
    if (name == nullptr) return 0;
    const bool isRaw = gst_structure_has_name(input, kRaw);
    const Format* const format = kygst::FindFormat(isRaw ? kygst::RawFormats() : kygst::BayerFormats(), name);
    return format == nullptr ? 0 : format->source;
}

/// Of what the output allows: the same format, which needs no conversion, or the first one of RawFormats(); for grayscale gray.
const Format* ChooseOutput(const Properties& properties, const GstStructure* input, const GstStructure* output) {
    const char* const name = gst_structure_get_string(input, "format");
    const bool maySame = properties.type == 0 && gst_structure_has_name(input, kRaw);
    const bool isGray = (SourceType(properties, input) & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE;
    const Format* chosen = nullptr;
    for (const Format* const format : AllowedFormats(output, kygst::RawFormats())) {
        if (maySame && name != nullptr && format->name == name) return format;
        const bool becomesGray = (format->destination & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE;
        if (format->destination != 0 && (chosen == nullptr || (isGray && becomesGray))) chosen = format;
    }
    return chosen;
}

GstCaps* FixateCaps(GstBaseTransform* base, GstPadDirection direction, GstCaps* caps, GstCaps* others) {
    others = gst_caps_make_writable(gst_caps_truncate(others));
    GstStructure* const other = gst_caps_get_structure(others, 0);
    if (direction == GST_PAD_SINK) {
        const Format* const format = ChooseOutput(GetProperties(Self(base)), gst_caps_get_structure(caps, 0), other);
        if (format != nullptr) gst_structure_fixate_field_string(other, "format", format->name.c_str());
    }
    return GST_BASE_TRANSFORM_CLASS(ky_convert_parent_class)->fixate_caps(base, direction, caps, others);
}

/// False, with a text in `error`, for caps that say too little or what the library cannot convert.
bool ReadCaps(const GstCaps* caps, const Properties* override, Side& side, std::string& error) {
    const GstStructure* const structure = gst_caps_get_structure(caps, 0);
    gint width = 0, height = 0;
    if (!gst_structure_get_int(structure, "width", &width) || !gst_structure_get_int(structure, "height", &height) ||
        width <= 0 || height <= 0) {
        error = "the caps have no width and height above 0";
        return false;
    }
    side = {};
    side.isRaw = gst_structure_has_name(structure, kRaw);
    side.arePadded = gst_structure_has_name(structure, kBayer);
    side.layout.width = static_cast<std::uint32_t>(width);
    side.layout.height = static_cast<std::uint32_t>(height);
    gst_video_info_init(&side.info);
    if (side.isRaw && !gst_video_info_from_caps(&side.info, caps)) {
        error = "the caps are not those of a video";
        return false;
    }
    if (override != nullptr && override->type != 0) {
        if (side.isRaw) side.layout.stride = static_cast<std::size_t>(GST_VIDEO_INFO_PLANE_STRIDE(&side.info, 0));
        if (override->stride != 0) side.layout.stride = override->stride;
        side.isRaw = false;
        side.layout.type = override->type;
        side.bayerPattern = override->bayerPattern;
        return true;
    }
    const char* const name = gst_structure_get_string(structure, "format");
    const Format* const format =
        name == nullptr ? nullptr : kygst::FindFormat(side.isRaw ? kygst::RawFormats() : kygst::BayerFormats(), name);
    if (format == nullptr) {
        error = std::string("no format is called ") + (name == nullptr ? "nothing" : name);
        return false;
    }
    side.layout.type = override != nullptr ? format->source : format->destination;
    side.bayerPattern = format->bayerPattern;
    if (!side.isRaw && override != nullptr) side.layout.stride = override->stride;
    return true;
}

/// Colours and fields, which matter only where frames are converted.
bool CheckVideo(Side& side, std::string& error) {
    if (!side.isRaw) return true;
    if (GST_VIDEO_INFO_IS_INTERLACED(&side.info)) {
        error = "interlaced video: put a deinterlace in front of it";
        return false;
    }
    if (kygst::ApplyColorimetry(side.info, side.layout.type)) return true;
    gchar* const colorimetry = gst_video_colorimetry_to_string(&side.info.colorimetry);
    error = std::string("YCbCr is converted by BT.601 or BT.709, not by ") + (colorimetry == nullptr ? "" : colorimetry);
    g_free(colorimetry);
    return false;
}

/// The same format passes through unless gains change its colours.
void UpdatePassthrough(KyConvert* self) {
    const State& state = *self->state;
    const bool takesGains = state.conversion != nullptr && state.conversion->TakesGains();
    const gboolean passes = state.isSame && (!takesGains || GetProperties(self).settings.KeepColours());
    if (passes == gst_base_transform_is_passthrough(Base(self))) return;
    gst_base_transform_set_passthrough(Base(self), passes);
    gst_base_transform_reconfigure_src(Base(self));  // buffers are allocated, or not any more
}

bool Configure(KyConvert* self, GstCaps* inputCaps, GstCaps* outputCaps, std::string& error) {
    State& state = *self->state;
    const Properties properties = GetProperties(self);
    state.conversion.reset();
    state.isSame = false;
    if (!ReadCaps(inputCaps, &properties, state.input, error) || !ReadCaps(outputCaps, nullptr, state.output, error))
        return false;
    state.isSame = state.input.isRaw &&
                   GST_VIDEO_INFO_FORMAT(&state.input.info) == GST_VIDEO_INFO_FORMAT(&state.output.info) &&
                   gst_video_colorimetry_is_equal(&state.input.info.colorimetry, &state.output.info.colorimetry);
    if (!CheckVideo(state.input, error) || !CheckVideo(state.output, error)) return state.isSame;

    const KyImage& from = state.input.layout;
    auto conversion = std::make_unique<kygst::Conversion>(from.type, state.output.layout.type, state.input.bayerPattern);
    if (!conversion->Accepts(from.width, from.height)) {
        error = KyImage_GetError();
        return state.isSame;
    }
    if (!properties.settings.KeepColours() && !conversion->TakesGains())
        GST_ELEMENT_WARNING(self, LIBRARY, SETTINGS, ("gains and offsets have no effect"),
                            ("%" GST_PTR_FORMAT " to %" GST_PTR_FORMAT " converts no colours", inputCaps, outputCaps));
    state.conversion = std::move(conversion);
    return true;
}

gboolean SetCaps(GstBaseTransform* base, GstCaps* inputCaps, GstCaps* outputCaps) {
    KyConvert* const self = Self(base);
    std::string error;
    if (!Configure(self, inputCaps, outputCaps, error)) {
        GST_ELEMENT_ERROR(self, STREAM, FORMAT, ("%s", error.c_str()),
                          ("%" GST_PTR_FORMAT " to %" GST_PTR_FORMAT, inputCaps, outputCaps));
        return FALSE;
    }
    UpdatePassthrough(self);
    return TRUE;
}

// ---- Buffers ----

/// Bytes of a frame without GstVideoMeta; 0 when the caps do not tell.
gsize FrameSize(KyConvert* self, const GstCaps* caps, bool isInput) {
    const Properties properties = GetProperties(self);
    Side side;
    std::string error;
    if (!ReadCaps(caps, isInput ? &properties : nullptr, side, error)) return 0;
    if (side.isRaw) return GST_VIDEO_INFO_SIZE(&side.info);
    KyImage image = side.layout;
    image.stride = kygst::PlainStride(side.layout, side.arePadded, G_MAXSIZE);
    std::size_t bytes = 0;
    if (KyImage_GetSize(&image, &bytes) != KY_STATUS_SUCCESS) return 0;
    return image.stride == 0 || (image.type & KY_TYPE_PLANAR) != 0 ? bytes : std::max(bytes, image.stride * image.height);
}

gboolean TransformSize(GstBaseTransform* base, GstPadDirection direction, GstCaps*, gsize, GstCaps* others, gsize* size) {
    *size = FrameSize(Self(base), others, direction == GST_PAD_SRC);
    return *size != 0;
}

void AddPool(KyConvert* self, GstQuery* query, GstCaps* caps, bool isVideo, guint size) {
    GstBufferPool* const pool = isVideo ? gst_video_buffer_pool_new() : gst_buffer_pool_new();
    GstStructure* const config = gst_buffer_pool_get_config(pool);
    gst_buffer_pool_config_set_params(config, caps, size, 0, 0);
    if (gst_buffer_pool_set_config(pool, config))
        gst_query_add_allocation_pool(query, pool, size, 0, 0);
    else
        GST_WARNING_OBJECT(self, "no pool of %u bytes", size);
    gst_object_unref(pool);
}

/// Upstream may have any strides, and buffers of a pool.
gboolean ProposeAllocation(GstBaseTransform* base, GstQuery* decided, GstQuery* query) {
    if (!GST_BASE_TRANSFORM_CLASS(ky_convert_parent_class)->propose_allocation(base, decided, query)) return FALSE;
    if (decided == nullptr) return TRUE;  // passthrough: downstream has answered
    GstCaps* caps = nullptr;
    gboolean needsPool = FALSE;
    gst_query_parse_allocation(query, &caps, &needsPool);
    const gsize size = caps == nullptr ? 0 : FrameSize(Self(base), caps, true);
    if (size == 0 || size > G_MAXUINT) return FALSE;
    if (needsPool) AddPool(Self(base), query, caps, Self(base)->state->input.isRaw, static_cast<guint>(size));
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    return TRUE;
}

/// Buffers come from downstream's pool or an own one, with strides of the pool's where downstream knows GstVideoMeta.
gboolean DecideAllocation(GstBaseTransform* base, GstQuery* query) {
    GstCaps* caps = nullptr;
    gst_query_parse_allocation(query, &caps, nullptr);
    GstVideoInfo info;
    if (caps == nullptr || !gst_video_info_from_caps(&info, caps)) return FALSE;

    GstBufferPool* pool = nullptr;
    guint size = 0, least = 0, most = 0;
    const bool hasPool = gst_query_get_n_allocation_pools(query) > 0;
    if (hasPool) gst_query_parse_nth_allocation_pool(query, 0, &pool, &size, &least, &most);
    if (pool == nullptr) pool = gst_video_buffer_pool_new();
    size = std::max(size, static_cast<guint>(GST_VIDEO_INFO_SIZE(&info)));

    GstStructure* const config = gst_buffer_pool_get_config(pool);
    gst_buffer_pool_config_set_params(config, caps, size, least, most);
    if (gst_buffer_pool_has_option(pool, GST_BUFFER_POOL_OPTION_VIDEO_META) &&
        gst_query_find_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr))
        gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
    gst_buffer_pool_set_config(pool, config);  // the base class checks what the pool made of it

    if (hasPool)
        gst_query_set_nth_allocation_pool(query, 0, pool, size, least, most);
    else
        gst_query_add_allocation_pool(query, pool, size, least, most);
    gst_object_unref(pool);
    return GST_BASE_TRANSFORM_CLASS(ky_convert_parent_class)->decide_allocation(base, query);
}

/// Metas that only depend on the picture's size and orientation hold for the output too, such as regions of interest.
gboolean TransformMeta(GstBaseTransform* base, GstBuffer* output, GstMeta* meta, GstBuffer* input) {
    const GQuark kept[] = {g_quark_from_static_string(GST_META_TAG_VIDEO_STR),
                           g_quark_from_static_string(GST_META_TAG_VIDEO_ORIENTATION_STR),
                           g_quark_from_static_string(GST_META_TAG_VIDEO_SIZE_STR)};
    const gchar* const* const tags = gst_meta_api_type_get_tags(meta->info->api);
    gsize keptTags = 0;
    for (const GQuark tag : kept) keptTags += gst_meta_api_type_has_tag(meta->info->api, tag) ? 1 : 0;
    if (tags != nullptr && g_strv_length(const_cast<gchar**>(tags)) == keptTags) return TRUE;
    return GST_BASE_TRANSFORM_CLASS(ky_convert_parent_class)->transform_meta(base, output, meta, input);
}

/// Gains may have changed since the buffer before.
GstFlowReturn SubmitInputBuffer(GstBaseTransform* base, gboolean isDiscont, GstBuffer* buffer) {
    UpdatePassthrough(Self(base));
    return GST_BASE_TRANSFORM_CLASS(ky_convert_parent_class)->submit_input_buffer(base, isDiscont, buffer);
}

GstFlowReturn Transform(GstBaseTransform* base, GstBuffer* inputBuffer, GstBuffer* outputBuffer) {
    KyConvert* const self = Self(base);
    State& state = *self->state;
    if (state.conversion == nullptr) return GST_FLOW_NOT_NEGOTIATED;
    kygst::Frame input, output;
    const Side& from = state.input;
    const bool isMapped =
        (from.isRaw ? input.MapVideo(inputBuffer, from.info, from.layout.type, GST_MAP_READ, state.inputStaging)
                    : input.MapPlain(inputBuffer, from.layout, from.arePadded)) &&
        output.MapVideo(outputBuffer, state.output.info, state.output.layout.type, GST_MAP_WRITE, state.outputStaging);
    if (!isMapped) {
        GST_ELEMENT_ERROR(self, RESOURCE, FAILED, ("A buffer cannot be mapped"), (nullptr));
        return GST_FLOW_ERROR;
    }
    if (state.conversion->Convert(input.GetImage(), output.GetImage(), GetProperties(self).settings) != KY_STATUS_SUCCESS) {
        GST_ELEMENT_ERROR(self, STREAM, FAILED, ("%s", KyImage_GetError()), (nullptr));
        return GST_FLOW_ERROR;
    }
    output.Finish();
    return GST_FLOW_OK;
}

gboolean Start(GstBaseTransform* base) {
    const Properties properties = GetProperties(Self(base));
    if (properties.pixelFormatError.empty()) return TRUE;
    GST_ELEMENT_ERROR(base, LIBRARY, SETTINGS, ("pixel-format: %s", properties.pixelFormatError.c_str()), (nullptr));
    return FALSE;
}

// ---- Properties ----

/// Three numbers of 0 or more, the integers of <2,1,1> among them.
bool ReadThree(const GValue* array, std::array<double, 3>& numbers) {
    if (gst_value_array_get_size(array) != numbers.size()) return false;
    std::array<double, 3> read = {};
    for (guint index = 0; index < read.size(); ++index) {
        GValue number = G_VALUE_INIT;
        g_value_init(&number, G_TYPE_DOUBLE);
        const bool isNumber = g_value_transform(gst_value_array_get_value(array, index), &number);
        read[index] = isNumber ? g_value_get_double(&number) : -1;
        if (!std::isfinite(read[index]) || read[index] < 0) return false;
    }
    numbers = read;
    return true;
}

void WriteThree(const std::array<double, 3>& numbers, GValue* array) {
    for (const double number : numbers) {
        GValue value = G_VALUE_INIT;
        g_value_init(&value, G_TYPE_DOUBLE);
        g_value_set_double(&value, number);
        gst_value_array_append_and_take_value(array, &value);
    }
}

void SetPixelFormat(Properties& properties, const char* name) {
    properties.pixelFormat = name == nullptr ? "" : name;
    properties.pixelFormatError.clear();
    properties.type = 0;
    properties.bayerPattern = 0;
    if (properties.pixelFormat.empty()) return;
    if (KyPixelFormat_Find(name, &properties.type, &properties.bayerPattern) != KY_STATUS_SUCCESS)
        properties.pixelFormatError = KyImage_GetError();
}

void SetProperty(GObject* object, guint id, const GValue* value, GParamSpec* spec) {
    KyConvert* const self = Self(object);
    Properties& properties = self->state->properties;
    bool isRight = true;
    GST_OBJECT_LOCK(self);
    switch (id) {
        case kPropPixelFormat: SetPixelFormat(properties, g_value_get_string(value)); break;
        case kPropStride: properties.stride = g_value_get_uint(value); break;
        case kPropDemosaic: properties.settings.interpolate = g_value_get_enum(value) == kBilinear; break;
        case kPropGains: isRight = ReadThree(value, properties.settings.gains); break;
        case kPropOffsets: isRight = ReadThree(value, properties.settings.offsets); break;
        case kPropThreads: properties.settings.threads = g_value_get_uint(value); break;
        default: G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, spec); break;
    }
    GST_OBJECT_UNLOCK(self);
    if (!isRight) g_warning("%s of %s: not three numbers of 0 or more", spec->name, GST_OBJECT_NAME(object));
}

void GetProperty(GObject* object, guint id, GValue* value, GParamSpec* spec) {
    const Properties properties = GetProperties(Self(object));
    switch (id) {
        case kPropPixelFormat: g_value_set_string(value, properties.pixelFormat.c_str()); break;
        case kPropStride: g_value_set_uint(value, properties.stride); break;
        case kPropDemosaic: g_value_set_enum(value, properties.settings.interpolate ? kBilinear : kNearest); break;
        case kPropGains: WriteThree(properties.settings.gains, value); break;
        case kPropOffsets: WriteThree(properties.settings.offsets, value); break;
        case kPropThreads: g_value_set_uint(value, properties.settings.threads); break;
        default: G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, spec); break;
    }
}

GType DemosaicType() {
    static const GEnumValue values[] = {{kNearest, "Nearest-neighbour: one colour for each 2x2 cell", "nearest"},
                                        {kBilinear, "Bilinear", "bilinear"},
                                        {0, nullptr, nullptr}};
    static const GType type = g_enum_register_static("KyConvertDemosaic", values);
    return type;
}

GParamFlags Flags(int mutability) { return static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS | mutability); }

void InstallProperties(GObjectClass* objectClass) {
    const GParamFlags beforeStart = Flags(GST_PARAM_MUTABLE_READY), anytime = Flags(GST_PARAM_MUTABLE_PLAYING);
    g_object_class_install_property(
        objectClass, kPropPixelFormat,
        g_param_spec_string("pixel-format", "Pixel format",
                            "What the input buffers hold, whatever the caps say: a name of PFNC (BayerRG12p), V4L2, GStreamer "
                            "or FFmpeg, a name of the library or an ID (0x00420012). Empty: as the caps say",
                            "", beforeStart));
    g_object_class_install_property(
        objectClass, kPropStride,
        g_param_spec_uint("stride", "Stride",
                          "Bytes from one line of the input to the next, where caps are not video/x-raw and buffers have no "
                          "GstVideoMeta. 0: no padding; video/x-bayer is padded to 4 bytes if the buffer is that large",
                          0, G_MAXINT, 0, beforeStart));
    g_object_class_install_property(
        objectClass, kPropDemosaic,
        g_param_spec_enum("demosaic", "Demosaic", "How Bayer mosaics become colours", DemosaicType(), kBilinear, anytime));
    g_object_class_install_property(
        objectClass, kPropGains,
        gst_param_spec_array("gains", "Gains", "Factors of red, green and blue, 0 or more: <1.9,1.0,1.6>. Default: <1,1,1>",
                             nullptr, anytime));
    g_object_class_install_property(
        objectClass, kPropOffsets,
        gst_param_spec_array("offsets", "Offsets",
                             "Added to red, green and blue after the gains, in values of an input sample (of a 12-bit sensor 0 "
                             "to 4095), of 8-bit RGB for YUV input: <0,0,8>. Default: <0,0,0>",
                             nullptr, anytime));
    g_object_class_install_property(
        objectClass, kPropThreads,
        g_param_spec_uint("n-threads", "Threads",
                          "Threads that convert the bands of a frame. 0: as many as the CPU has cores, fewer for small frames",
                          0, 1024, 0, anytime));
}

// ---- Class ----

void AppendTemplate(GstCaps* caps, const char* mediaType, const std::vector<Format>* formats) {
    GstStructure* const structure =
        gst_structure_new(mediaType, "width", GST_TYPE_INT_RANGE, 1, G_MAXINT, "height", GST_TYPE_INT_RANGE, 1, G_MAXINT, nullptr);
    if (formats != nullptr) {
        std::vector<std::string> names;
        for (const Format& format : *formats) names.push_back(format.name);
        SetFormats(structure, names);
    }
    gst_caps_append_structure(caps, structure);
}

void AddTemplates(GstElementClass* elementClass) {
    GstCaps* const input = gst_caps_new_empty();
    AppendTemplate(input, kBayer, &kygst::BayerFormats());
    AppendTemplate(input, kRaw, &kygst::RawFormats());
    AppendTemplate(input, kBytes, nullptr);
    AppendTemplate(input, kBayer, nullptr);  // with pixel-format, whatever a driver calls it
    gst_element_class_add_pad_template(elementClass, gst_pad_template_new("sink", GST_PAD_SINK, GST_PAD_ALWAYS, input));
    gst_caps_unref(input);
    GstCaps* const output = gst_caps_new_empty();
    AppendTemplate(output, kRaw, &kygst::RawFormats());  // those that are input only pass through
    gst_element_class_add_pad_template(elementClass, gst_pad_template_new("src", GST_PAD_SRC, GST_PAD_ALWAYS, output));
    gst_caps_unref(output);
}

void Finalize(GObject* object) {
    delete Self(object)->state;
    G_OBJECT_CLASS(ky_convert_parent_class)->finalize(object);
}

}  // namespace

void ky_convert_init(KyConvert* self) {
    self->state = new State;
    gst_base_transform_set_qos_enabled(Base(self), TRUE);
}

void ky_convert_class_init(KyConvertClass* klass) {
    GObjectClass* const objectClass = G_OBJECT_CLASS(klass);
    objectClass->set_property = SetProperty;
    objectClass->get_property = GetProperty;
    objectClass->finalize = Finalize;
    InstallProperties(objectClass);

    GstElementClass* const elementClass = GST_ELEMENT_CLASS(klass);
    gst_element_class_set_static_metadata(
        elementClass, "Machine-vision pixel format converter", "Filter/Converter/Video",
        "Converts Bayer mosaics, grayscale, YCbCr and packed pixels of industrial cameras, with white balance",
        "KyImgLib contributors");
    AddTemplates(elementClass);
    gst_type_mark_as_plugin_api(DemosaicType(), static_cast<GstPluginAPIFlags>(0));

    GstBaseTransformClass* const base = GST_BASE_TRANSFORM_CLASS(klass);
    base->start = Start;
    base->transform_caps = TransformCaps;
    base->fixate_caps = FixateCaps;
    base->set_caps = SetCaps;
    base->transform_size = TransformSize;
    base->propose_allocation = ProposeAllocation;
    base->decide_allocation = DecideAllocation;
    base->transform_meta = TransformMeta;
    base->submit_input_buffer = SubmitInputBuffer;
    base->transform = Transform;
}

#include <plugins/gstreamer/Frame.h>

#include <KyImgLib/KyImgLibC.h>

#include <algorithm>

namespace kygst {

namespace {

/// Bytes of the pixels in a line of a plane, and lines.
struct PlaneSize {
    std::size_t bytes, lines;
};

PlaneSize SizeOfPlane(const GstVideoFrame& frame, guint plane) {
    gint components[GST_VIDEO_MAX_COMPONENTS];
    gst_video_format_info_component(frame.info.finfo, plane, components);
    const auto component = static_cast<guint>(components[0]);
    return {static_cast<std::size_t>(GST_VIDEO_FRAME_COMP_WIDTH(&frame, component)) *
                static_cast<std::size_t>(GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, component)),
            static_cast<std::size_t>(GST_VIDEO_FRAME_COMP_HEIGHT(&frame, component))};
}

std::uint8_t* PlaneData(const GstVideoFrame& frame, guint plane) {
    return static_cast<std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, plane));
}

std::size_t PlaneStride(const GstVideoFrame& frame, guint plane) {
    return static_cast<std::size_t>(GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane));
}

}  // namespace

std::size_t PlainStride(const KyImage& layout, bool arePadded, std::size_t size) {
    if (layout.stride != 0 || !arePadded) return layout.stride;
    KyImage line = layout;
    line.height = 1;
    std::size_t bytes = 0;
    if (KyImage_GetSize(&line, &bytes) != KY_STATUS_SUCCESS) return 0;
    KyImage padded = layout;
    padded.stride = (bytes + 3) / 4 * 4;
    return KyImage_GetSize(&padded, &bytes) == KY_STATUS_SUCCESS && bytes <= size ? padded.stride : 0;
}

Frame::~Frame() {
    if (frame.buffer != nullptr) gst_video_frame_unmap(&frame);
    if (plain != nullptr) gst_buffer_unmap(plain, &map);
}

bool Frame::MapPlain(GstBuffer* buffer, const KyImage& layout, bool arePadded) {
    if (!gst_buffer_map(buffer, &map, GST_MAP_READ)) return false;
    plain = buffer;
    image = layout;
    std::size_t offset = 0;
    const GstVideoMeta* const meta = gst_buffer_get_video_meta(buffer);
    if (meta != nullptr && meta->stride[0] > 0) {
        image.stride = static_cast<std::size_t>(meta->stride[0]);
        offset = std::min(meta->offset[0], map.size);
        if (meta->n_planes > 1) image.planeStride = meta->offset[1] - meta->offset[0];
    } else {
        image.stride = PlainStride(layout, arePadded, map.size);
    }
    image.data = map.data + offset;
    image.size = map.size - offset;
    return true;
}

bool Frame::MapVideo(GstBuffer* buffer, const GstVideoInfo& info, std::int64_t type, GstMapFlags flags,
                     std::vector<std::uint8_t>& staging) {
    if (!gst_video_frame_map(&frame, &info, buffer, flags)) {
        frame.buffer = nullptr;
        return false;
    }
    image.type = type;
    image.width = static_cast<std::uint32_t>(GST_VIDEO_INFO_WIDTH(&info));
    image.height = static_cast<std::uint32_t>(GST_VIDEO_INFO_HEIGHT(&info));
    if (!DescribePlanes()) {
        Stage(staging);
        if ((flags & GST_MAP_READ) != 0) CopyStaged(false);
    }
    return true;
}

/// Whether KyImage can say where the planes are: in one piece of memory, at equal distances with equal strides, or for Cb and Cr
/// in planes of their own with half of the stride, the second right behind the first.
bool Frame::DescribePlanes() {
    const GstMapInfo& memory = frame.map[0];
    image.data = PlaneData(frame, 0);
    image.stride = PlaneStride(frame, 0);
    image.planeStride = 0;
    if (image.data < memory.data || image.data > memory.data + memory.size) return false;
    image.size = static_cast<std::size_t>(memory.data + memory.size - image.data);
    const guint planes = GST_VIDEO_FRAME_N_PLANES(&frame);
    if (planes == 1) return true;

    for (guint plane = 1; plane < planes; ++plane)
        if (PlaneData(frame, plane) <= PlaneData(frame, plane - 1) ||
            PlaneData(frame, plane) >= memory.data + memory.size)
            return false;
    image.planeStride = static_cast<std::size_t>(PlaneData(frame, 1) - image.data);
    if (planes == 2) return PlaneStride(frame, 1) == image.stride;

    const std::size_t last = static_cast<std::size_t>(PlaneData(frame, 2) - PlaneData(frame, 1));
    if (PlaneStride(frame, 1) != PlaneStride(frame, 2)) return false;
    if (GST_VIDEO_FORMAT_INFO_IS_RGB(frame.info.finfo))
        return PlaneStride(frame, 1) == image.stride && last == image.planeStride;
    return PlaneStride(frame, 1) == (image.stride + 1) / 2 && last == PlaneStride(frame, 1) * SizeOfPlane(frame, 1).lines;
}

/// The image without padding.
void Frame::Stage(std::vector<std::uint8_t>& staging) {
    std::size_t bytes = 0;
    for (guint plane = 0; plane < GST_VIDEO_FRAME_N_PLANES(&frame); ++plane)
        bytes += SizeOfPlane(frame, plane).bytes * SizeOfPlane(frame, plane).lines;
    staging.resize(bytes);
    image.data = staging.data();
    image.size = bytes;
    image.stride = image.planeStride = 0;
    isStaged = true;
}

void Frame::CopyStaged(bool toBuffer) {
    std::uint8_t* staged = image.data;
    for (guint plane = 0; plane < GST_VIDEO_FRAME_N_PLANES(&frame); ++plane) {
        const auto [bytes, lines] = SizeOfPlane(frame, plane);
        std::uint8_t* line = PlaneData(frame, plane);
        for (std::size_t y = 0; y < lines; ++y, staged += bytes, line += PlaneStride(frame, plane))
            toBuffer ? std::copy_n(staged, bytes, line) : std::copy_n(line, bytes, staged);
    }
}

void Frame::Finish() {
    if (isStaged) CopyStaged(true);
}

}  // namespace kygst

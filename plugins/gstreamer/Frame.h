#ifndef PLUGINS_GSTREAMER_FRAME_H
#define PLUGINS_GSTREAMER_FRAME_H

#include <KyImgLib/images/KyImage.h>

#include <gst/video/video.h>

#include <cstdint>
#include <vector>

namespace kygst {

/// A buffer, mapped and described as an image until the object is destroyed.
class Frame {
public:
    Frame() = default;
    ~Frame();
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    /// A buffer of video/x-raw, with the strides and offsets of its GstVideoMeta or else those of `info`. Where planes lie as no
    /// KyImage can say, the image is in `staging`, with the pixels of a buffer to read; Finish() writes them back.
    bool MapVideo(GstBuffer* buffer, const GstVideoInfo& info, std::int64_t type, GstMapFlags flags,
                  std::vector<std::uint8_t>& staging);
    /// A buffer to read of any other media type: lines are the stride of its GstVideoMeta apart, or else what PlainStride says
    /// for its size.
    bool MapPlain(GstBuffer* buffer, const KyImage& layout, bool arePadded);

    /// Writes staged pixels into the buffer.
    void Finish();

    const KyImage& GetImage() const { return image; }

private:
    bool DescribePlanes();
    void Stage(std::vector<std::uint8_t>& staging);
    void CopyStaged(bool toBuffer);

    KyImage image = {};
    GstVideoFrame frame = {};   ///< of MapVideo
    GstBuffer* plain = nullptr; ///< of MapPlain
    GstMapInfo map = {};
    bool isStaged = false;
};

/// Stride of an image without GstVideoMeta in `size` bytes, `layout.stride` unless that is 0. Lines of video/x-bayer are padded
/// to four bytes (`arePadded`), but not all cameras do: a buffer that is too small for that has lines without padding. 0: no
/// padding.
std::size_t PlainStride(const KyImage& layout, bool arePadded, std::size_t size);

}  // namespace kygst

#endif

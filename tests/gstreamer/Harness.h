#ifndef TESTS_GSTREAMER_HARNESS_H
#define TESTS_GSTREAMER_HARNESS_H

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>

#include <gst/check/gstharness.h>
#include <gst/video/video.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace gsttest {

using Bytes = std::vector<std::uint8_t>;

/// The element kyconvert between two pads of a test, with the messages that it posts.
class Element {
public:
    using Property = std::pair<const char*, const char*>;  ///< name and value, as for gst-launch-1.0

    Element(std::initializer_list<Property> properties = {});
    ~Element();
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

    /// Sets the caps upstream sends and those that downstream takes.
    void SetCaps(const std::string& input, const std::string& output);
    void Set(const char* property, const char* value);
    GstFlowReturn Push(const Bytes& bytes);
    /// The caps of the output, one field of them; empty when there are none.
    std::string OutputField(const char* field) const;
    /// The pixels of the next output buffer, without padding.
    Bytes PullPixels();
    /// The text of the next error or warning on the bus; empty when there is none.
    std::string Complaint();

    GstHarness* harness;

private:
    GstBus* bus;
};

Bytes RandomBytes(std::size_t size, unsigned seed = 1);
/// A buffer with a copy of these bytes.
GstBuffer* MakeBuffer(const Bytes& bytes);
Bytes BytesOf(GstBuffer* buffer);
/// Pixels of a buffer of video/x-raw, plane after plane, without padding. Takes the buffer.
Bytes PixelsOf(GstBuffer* buffer, GstCaps* caps);

/// An image in `bytes`.
KyImage ImageOf(const Bytes& bytes, std::int64_t type, std::uint32_t width, std::uint32_t height,
                std::size_t stride = 0);
std::int64_t TypeNamed(const char* name, std::uint32_t* bayerFlags = nullptr);
/// What the library makes of an image, without padding.
Bytes ConvertByLibrary(const KyImage& image, std::int64_t destination, std::uint32_t flags,
                       const KyRGBFilter* filter = nullptr);

}  // namespace gsttest

#endif

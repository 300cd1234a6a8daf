#ifndef KYIMGLIB_IMAGES_KYIMAGECONVERTER_H
#define KYIMGLIB_IMAGES_KYIMAGECONVERTER_H

#include <KyImgLib/images/KyImage.h>
#include <KyImgLib/platform/KyObject.h>
#include <KyImgLib/platform/KyStatus.h>

#include <cstdint>

class KyPixelConverter;

/// Converts images of one pixel type to images of another: the functions KyImage_Convert, KyImage_ConvertParallel and
/// KyImage_GetBandStep of KyImgLibC.h, for a pair of types that is looked up only once.
///
///     const KyImageConverter converter(0x00020010, KY_TYPE_RGB24);
///     if (converter.Convert(frame, picture, nullptr) != KY_STATUS_SUCCESS) std::puts(KyImageConverter::GetError());
///
/// Everything is checked before a byte is touched. The statuses are
/// - KY_STATUS_SUCCESS, also for images without pixels, of which nothing is touched;
/// - KY_STATUS_BAD_ARGUMENT: an image or the conversion is not as KyImage.h wants it;
/// - KY_STATUS_NOT_SUPPORTED: no converter is registered for the pair;
/// - KY_STATUS_OUT_OF_MEMORY, or an exception of an application's own converter;
/// - what an application's own converter returned instead of success.
/// GetError() says each of them in words. After the first three nothing has been written.
///
/// No function throws. Any number of threads may use one object at once.
class KYIMGLIB_API KyImageConverter : public KyObject {
public:
    /// Looks the pair up. Where it is not registered, conversions look it up again and otherwise return
    /// KY_STATUS_NOT_SUPPORTED. Throws std::bad_alloc when there is no memory.
    KyImageConverter(std::int64_t sourceType, std::int64_t destinationType);
    /// Converts with this converter, registered or not, which must outlive the object. Its two types must be registered by
    /// the time of the first conversion.
    explicit KyImageConverter(const KyPixelConverter& converter);
    ~KyImageConverter();
    KyImageConverter(const KyImageConverter&) = delete;
    KyImageConverter& operator=(const KyImageConverter&) = delete;

    /// Whether a converter was found.
    bool IsValid() const noexcept;

    /// Converts the source into the destination, which must be of the two types, of the same width and height, and not
    /// overlap.
    ///
    /// \param conversion  flags, filter and band; null: no flags, no filter, all lines
    std::uint32_t Convert(const KyImage& source, const KyImage& destination,
                          const KyConversion* conversion) const noexcept;

    /// The same by bands on several threads at once.
    ///
    /// \param executor  threads of the application; null: threads of the library's own
    std::uint32_t ConvertParallel(const KyImage& source, const KyImage& destination, const KyConversion* conversion,
                                  const KyExecutor* executor) const noexcept;

    /// Writes to `lines` what bands must begin and end at multiples of. The images need no data yet, and the band of
    /// `conversion` does not matter.
    std::uint32_t GetBandStep(const KyImage& source, const KyImage& destination, const KyConversion* conversion,
                              std::uint32_t& lines) const noexcept;

    /// Why the calling thread's last call that did not succeed, of this class, of KyPixelFormat or of a function KyImage_...
    /// or KyPixelFormat_..., did not. Empty when there was none. Valid until the thread's next such call.
    static const char* GetError() noexcept;

private:
    struct Record;
    Record* record;
};

#endif

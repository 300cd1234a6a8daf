#ifndef KYIMGLIB_CONVERTERS_BAYER_KYBAYERRGB8TORGB_H
#define KYIMGLIB_CONVERTERS_BAYER_KYBAYERRGB8TORGB_H

#include <KyImgLib/converters/bayer/KyBayerToRGB.h>

/// Base of the converters from Bayer mosaics of which one byte per pixel is read. Values pass the filter's 8-bit view.
class KYIMGLIB_API KyBayerRGB8ToRGB : public KyBayerToRGB {
protected:
    /// \param a         bytes of a sample in multiples of the step
    /// \param b         bytes of a destination pixel
    /// \param c         pipelining size
    /// \param swap      whether the destination is B, G, R in memory
    /// \param e         source bytes of a pixel less 1
    /// \param reserved  has no effect
    KyBayerRGB8ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t a,
                     std::uint32_t b, std::uint32_t c, bool swap, std::uint32_t e, std::uint32_t reserved);
};

/// Bayer mosaic to RGB16: 16-bit words 5-6-5, red in the high bits.
class KYIMGLIB_API KyBayerRGB8ToRGB16 : public KyBayerRGB8ToRGB {
public:
    /// \param e         source bytes of a pixel less 1: 0 for 8-bit samples, 1 reads the high byte of 16-bit words
    /// \param reserved  has no effect
    KyBayerRGB8ToRGB16(const std::int64_t& sourceType, std::uint32_t e, std::uint32_t reserved);

protected:
    std::uint32_t ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                  std::uint32_t count) const override;
    std::uint32_t ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                      std::uint32_t count) const override;
};

/// Bayer mosaic to RGB24, bytes R, G, B, or BGR24, bytes B, G, R.
class KYIMGLIB_API KyBayerRGB8ToRGB24 : public KyBayerRGB8ToRGB {
public:
    /// \param swap      destination BGR24 instead of RGB24; others as for KyBayerRGB8ToRGB16
    KyBayerRGB8ToRGB24(const std::int64_t& sourceType, bool swap, std::uint32_t e, std::uint32_t reserved);

protected:
    std::uint32_t ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                  std::uint32_t count) const override;
    std::uint32_t ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                      std::uint32_t count) const override;
};

/// Bayer mosaic to RGB32, bytes R, G, B, 0, or BGR32, bytes B, G, R, 0.
class KYIMGLIB_API KyBayerRGB8ToRGB32 : public KyBayerRGB8ToRGB {
public:
    /// \param swap      destination BGR32 instead of RGB32; others as for KyBayerRGB8ToRGB16
    KyBayerRGB8ToRGB32(const std::int64_t& sourceType, bool swap, std::uint32_t e, std::uint32_t reserved);

protected:
    std::uint32_t ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                  std::uint32_t count) const override;
    std::uint32_t ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                      std::uint32_t count) const override;
};

#endif

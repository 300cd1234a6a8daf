#ifndef KYIMGLIB_CONVERSION_KYRGBFILTER_H
#define KYIMGLIB_CONVERSION_KYRGBFILTER_H

#include <KyImgLib/platform/KyObject.h>
#include <KyImgLib/platform/KyStatus.h>

#include <cstdint>

/// Three look-up tables that a conversion passes red, green and blue through, for example for white balance.
///
/// A table has 1 << bit size entries of 16 bits, indexed by a sample of that size. Converters that work on bytes use
/// the 8-bit view: the first 256 entries, each at most 255. A new filter is the identity.
///
/// Copies share their tables: a change made through one is seen through all, and destroying any one of them frees the
/// tables under the others. So let exactly one of them be destroyed, and construct a new filter where you need an
/// independent one.
///
/// Any number of threads may read a filter, and convert with it, at once; change it only while nobody does.
class KYIMGLIB_API KyRGBFilter : public KyObject {
public:
    /// \param bitSize  bits of a sample, 0 to 16. Throws std::length_error above 16, std::bad_alloc without memory.
    explicit KyRGBFilter(std::uint32_t bitSize);
    KyRGBFilter(const KyRGBFilter& other);
    /// Leaves the tables this filter had to whichever other filter shares them.
    KyRGBFilter& operator=(const KyRGBFilter& other);

    virtual ~KyRGBFilter();

    virtual std::uint32_t GetBitSize() const;
    /// Entries of each table: 1 << bit size.
    virtual std::uint32_t GetEntryCount() const;

    /// Fills the tables: entry i becomes i x gain + offset, cut to an integer and limited to the largest entry.
    ///
    /// Gains are 0.0 or more, offsets are in sample values. A product that is no number counts as 0.
    /// Returns KY_STATUS_SUCCESS, or KY_STATUS_BAD_ARGUMENT (and nothing is changed) when a gain is below 0.
    virtual std::uint32_t SetMultipliers(double red, double green, double blue, std::uint16_t redOffset,
                                         std::uint16_t greenOffset, std::uint16_t blueOffset);
    /// The same with offsets of 0.
    virtual std::uint32_t SetMultipliers(double red, double green, double blue);

    /// Set one entry of a table, and of the 8-bit view (to at most 255) when `index` is below 256.
    /// Return KY_STATUS_SUCCESS, or KY_STATUS_BAD_ARGUMENT (and nothing is changed) unless both `index` and `value` are
    /// below GetEntryCount().
    ///@{
    virtual std::uint32_t SetRedValue(std::uint32_t index, std::uint16_t value);
    virtual std::uint32_t SetGreenValue(std::uint32_t index, std::uint16_t value);
    virtual std::uint32_t SetBlueValue(std::uint32_t index, std::uint16_t value);
    ///@}

    /// Entries of the 8-bit view, at `index` modulo 256.
    ///@{
    std::uint8_t GetRedValue8(std::uint32_t index) const { return tables->red8[index & 0xFF]; }
    std::uint8_t GetGreenValue8(std::uint32_t index) const { return tables->green8[index & 0xFF]; }
    std::uint8_t GetBlueValue8(std::uint32_t index) const { return tables->blue8[index & 0xFF]; }
    ///@}

    /// Entries of the tables, at `index` modulo the entry count.
    ///@{
    std::uint16_t GetRedValue16(std::uint32_t index) const { return tables->red16[index & tables->indexMask]; }
    std::uint16_t GetGreenValue16(std::uint32_t index) const { return tables->green16[index & tables->indexMask]; }
    std::uint16_t GetBlueValue16(std::uint32_t index) const { return tables->blue16[index & tables->indexMask]; }
    ///@}

protected:
    struct Record;  ///< the tables, and what the library knows of them

private:
    struct Tables : KyObject {
        std::uint32_t bitSize;
        std::uint32_t entryCount;
        std::uint8_t* red8;
        std::uint8_t* green8;
        std::uint8_t* blue8;
        std::uint16_t* red16;
        std::uint16_t* green16;
        std::uint16_t* blue16;
        std::uint32_t indexMask;
    };

    Tables* tables;  ///< a Record
};

#endif

#ifndef KYIMGLIB_CONVERSION_KYRGBFILTER_H
#define KYIMGLIB_CONVERSION_KYRGBFILTER_H

#include <KyImgLib/platform/KyObject.h>
#include <KyImgLib/platform/KyStatus.h>

#include <cstdint>

/// What is known of one channel's 8-bit view, so that a conversion need not look values up one by one.
struct KyFilterShape {
    /// Every entry is its own index.
    bool isIdentity;
    /// Every entry i, from 0 to 255, is min(offset + (addsIndex ? i : 0) + (i * multiplier >> shift), 255), but for the
    /// exceptions, which are one less.
    bool isLinear;
    bool addsIndex;
    std::uint8_t offset;
    std::uint8_t shift;  ///< 8 to 16
    std::uint16_t multiplier;
    std::uint8_t exceptionCount;  ///< at most 8
    std::uint8_t exceptions[8];
};

/// What is known of one channel's table.
struct KyFilterShape16 {
    /// Every entry is its own index.
    bool isIdentity;
    /// Entries up to `last` are offset + i * wholeGain + (i * fractionGain >> 32), those after it are the largest
    /// possible one.
    bool isLinear;
    std::uint16_t offset;
    std::uint16_t wholeGain;
    std::uint32_t fractionGain;
    std::uint16_t last;
};

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

    /// The 256 entries of the 8-bit view of each table, for converters; valid until the tables are freed.
    ///@{
    const std::uint8_t* GetRedTable8() const { return tables->red8; }
    const std::uint8_t* GetGreenTable8() const { return tables->green8; }
    const std::uint8_t* GetBlueTable8() const { return tables->blue8; }
    ///@}

    /// The GetEntryCount() entries of each table, for converters; valid until the tables are freed.
    ///@{
    const std::uint16_t* GetRedTable16() const { return tables->red16; }
    const std::uint16_t* GetGreenTable16() const { return tables->green16; }
    const std::uint16_t* GetBlueTable16() const { return tables->blue16; }
    /// The number of entries - 1, by which indexes of the tables are masked.
    std::uint32_t GetTableMask() const { return tables->indexMask; }
    ///@}

    /// The shapes of the 8-bit views, kept current by every change; valid until the tables are freed.
    ///@{
    const KyFilterShape& GetRedShape() const { return tables->redShape.view; }
    const KyFilterShape& GetGreenShape() const { return tables->greenShape.view; }
    const KyFilterShape& GetBlueShape() const { return tables->blueShape.view; }
    ///@}

    /// The shapes of the tables, kept current by every change; valid until the tables are freed.
    ///@{
    const KyFilterShape16& GetRedShape16() const { return tables->redShape.table; }
    const KyFilterShape16& GetGreenShape16() const { return tables->greenShape.table; }
    const KyFilterShape16& GetBlueShape16() const { return tables->blueShape.table; }
    ///@}

private:
    struct TrackedShape {
        KyFilterShape view;
        KyFilterShape16 table;
        std::uint32_t viewMismatches;   ///< entries of the 8-bit view that are not their own index
        std::uint32_t tableMismatches;  ///< entries of the table that are not their own index
    };
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
        TrackedShape redShape;
        TrackedShape greenShape;
        TrackedShape blueShape;
    };

    std::uint32_t SetValue(std::uint8_t* table8, std::uint16_t* table16, TrackedShape& shape, std::uint32_t index,
                           std::uint16_t value) const;
    void Fit(const std::uint8_t* view, const std::uint16_t* table, TrackedShape& shape) const;

    Tables* tables;
};

#endif

#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16PackedToGrayscale.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16PackedToRGB.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16Segmented.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16ToGrayscale.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16ToRGB.h>
#include <KyImgLib/converters/grayscale/KyGrayscale8ToRGB.h>
#include <KyImgLib/converters/grayscale/KyTapsToGrayscale.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/catalogue/Constructor.h>

namespace ky {

namespace {

/// A type of right-aligned samples in 16-bit words. Other types of the same format differ in flags of the ID.
struct Words {
    std::int64_t id;
    std::uint32_t bits;

    constexpr std::uint32_t ShiftTo8() const { return bits - 8; }
    constexpr std::uint32_t ShiftFromNormalized() const { return 16 - bits; }
    // The numbers of packed samples.
    constexpr short LeftShift() const { return static_cast<short>(bits - 8); }
    constexpr unsigned short LowMask() const { return static_cast<unsigned short>((1u << (bits - 8)) - 1); }
};
constexpr short kLowPosition = 4;

constexpr Words kGray10 = {0x00010002, 10}, kGray12 = {0x00010003, 12}, kGray14 = {0x00010004, 14};
constexpr Words kBayer10 = {0x00020011, 10}, kBayer12 = {0x00020012, 12}, kBayer14 = {0x00020016, 14};
constexpr Words kRGGB10 = {0x00020014, 10}, kRGGB12 = {0x00020015, 12};
constexpr std::int64_t kGray16 = 0x00010005;
constexpr std::int64_t kBayer8 = 0x00020010, kRGGB8 = 0x00020013;
constexpr std::int64_t kGEV10 = 0x00410008, kGEV12 = 0x00410009;
constexpr std::int64_t kQuad8 = 0x00010006, kQuad10 = 0x00010007;

constexpr std::int64_t kNormalized = KY_TYPE_NORMALIZED;
constexpr std::int64_t kPacked = KY_TYPE_PACKED;

// Variants of a format.
constexpr std::int64_t kFields[] = {0, KY_TYPE_INTERLACED};
constexpr std::int64_t kAlignments[] = {0, kNormalized};
constexpr std::int64_t kHalves[] = {KY_TAP_LEFT_RIGHT, KY_TAP_LEFT_RIGHT_INVERTED, KY_TAP_LEFT_INVERTED_RIGHT,
                                    KY_TAP_LEFT_INVERTED_RIGHT_INVERTED};
constexpr std::int64_t kOneOrTwoTaps[] = {KY_TAP_SINGLE, KY_TAP_LEFT_RIGHT, KY_TAP_LEFT_RIGHT_INVERTED,
                                          KY_TAP_LEFT_INVERTED_RIGHT, KY_TAP_LEFT_INVERTED_RIGHT_INVERTED};

/// Words to words and to 8 bits.
void ConstructDepths(Constructor& construct) {
    for (const std::int64_t field : kFields) {
        for (const Words& gray : {kGray10, kGray12, kGray14}) {
            const std::int64_t normalized = gray.id | kNormalized;
            construct.Add<KyGrayscale16ToGrayscale16RightShift>(normalized | field, gray.id,
                                                                gray.ShiftFromNormalized());
            construct.Add<KyGrayscale16ToGrayscale16LeftShift>(gray.id | field, normalized, gray.ShiftFromNormalized());
            construct.Add<KyGrayscale16ToGrayscale8>(gray.id | field, gray.ShiftTo8());
            construct.Add<KyGrayscale16NormalizedToGrayscale8>(normalized | field);
            for (const std::int64_t alignment : kAlignments)
                construct.Add<KyGrayscale16ToGrayscale16RightShift>(kGray16 | alignment | field, gray.id,
                                                                    gray.ShiftFromNormalized());
        }
        // 16 bits fill their words: normalized or not is the same.
        for (const std::int64_t alignment : kAlignments)
            construct.Add<KyGrayscale16NormalizedToGrayscale8>(kGray16 | alignment | field);
        construct.Add<KyIdentityConverter>(kGray16 | kNormalized | field, kGray16, 2u, 2u);
        construct.Add<KyIdentityConverter>(kGray16 | field, kGray16 | kNormalized, 2u, 2u);
    }
    for (const Words& bayer : {kBayer10, kRGGB10, kBayer12, kRGGB12, kBayer14})
        construct.Add<KyGrayscale16ToGrayscale16RightShift>(bayer.id | kNormalized, bayer.id,
                                                            bayer.ShiftFromNormalized());
    for (const Words& bayer : {kBayer10, kRGGB10})
        construct.Add<KyGrayscale16ToGrayscale16RightShift>(bayer.id | kNormalized | KY_TYPE_INTERLACED, bayer.id,
                                                            bayer.ShiftFromNormalized());
}

void ConstructPacked(Constructor& construct) {
    construct.Add<KyGrayscale10PackedGEVToGrayscale10>(kGEV10);
    construct.Add<KyGrayscale12PackedGEVToGrayscale12>(kGEV12);
    for (const std::int64_t source : {kGEV10, kGEV12}) construct.Add<KyGrayscale16PackedGEVToGrayscale8>(source);

    for (const std::int64_t tap : kOneOrTwoTaps) {
        for (const Words& gray : {kGray10, kGray12}) {
            const std::int64_t source = gray.id | kPacked | tap;
            for (const std::int64_t field : kFields)
                for (const std::int64_t alignment : kAlignments)
                    construct.Add<KyGrayscale16PackedToGrayscale16>(source | field, gray.id | alignment,
                                                                    gray.LeftShift(), gray.LowMask(), kLowPosition);
            const unsigned short leftShift = static_cast<unsigned short>(gray.LeftShift());
            construct.Add<KyGrayscale16PackedToGrayscale8>(source, leftShift, gray.LowMask());
            construct.Add<KyGrayscale16PackedToRGB16>(source, leftShift, gray.LowMask());
            for (const bool order : {kRGB, kBGR}) {
                construct.Add<KyGrayscale16PackedToRGB24>(source, order, leftShift, gray.LowMask());
                construct.Add<KyGrayscale16PackedToRGB32>(source, order, leftShift, gray.LowMask());
            }
        }
        for (const Words& bayer : {kBayer10, kRGGB10, kBayer12, kRGGB12})
            construct.Add<KyGrayscale16PackedToGrayscale16>(bayer.id | kPacked | tap, bayer.id, bayer.LeftShift(),
                                                            bayer.LowMask(), kLowPosition);
    }
}

void ConstructTaps(Constructor& construct) {
    for (const std::int64_t tap : kHalves) {
        for (const std::int64_t plain : {KY_TYPE_GRAYSCALE8, kBayer8, kRGGB8})
            construct.Add<KyDualGrayscale8ToGrayscale8>(plain | tap, plain);
        for (const Words& words : {kGray10, kGray12, kBayer10, kBayer12}) {
            construct.Add<KyGrayscale16SegmentedToGrayscale16>(words.id | tap, words.id, 0u);
            construct.Add<KyGrayscale16SegmentedToGrayscale16>(words.id | kNormalized | tap, words.id,
                                                               words.ShiftFromNormalized());
        }
        for (const Words& gray : {kGray10, kGray12})
            for (const bool order : {kRGB, kBGR})
                for (const std::uint32_t pixelBytes : {3u, 4u}) {
                    construct.Add<KyGrayscale16SegmentedToRGB24_32>(gray.id | tap, order, gray.ShiftTo8(), pixelBytes);
                    construct.Add<KyGrayscale16SegmentedToRGB24_32>(gray.id | kNormalized | tap, order, 8u, pixelBytes);
                }
    }
    construct.Add<KyDualLinesGrayscale8ToGrayscale8>(KY_TYPE_GRAYSCALE8 | KY_TAP_DUAL_LINES, KY_TYPE_GRAYSCALE8);
    construct.Add<Dalsa4x8ToGrayscale8>(kQuad8, KY_TYPE_GRAYSCALE8);
    for (const std::int64_t alignment : kAlignments)
        construct.Add<Dalsa4x16ToGrayscale16>(kQuad10 | alignment, kGray10.id | alignment);
}

void ConstructBytesToRGB(Constructor& construct, std::int64_t source, std::uint32_t bytesBefore) {
    construct.Add<KyGrayscale8ToRGB16>(source, bytesBefore);
    for (const bool order : {kRGB, kBGR}) {
        construct.Add<KyGrayscale8ToRGB24>(source, order, bytesBefore);
        construct.Add<KyGrayscale8ToRGB32>(source, order, bytesBefore);
    }
}

void ConstructToRGB(Constructor& construct) {
    for (const std::int64_t field : kFields) {
        ConstructBytesToRGB(construct, KY_TYPE_GRAYSCALE8 | field, 0);
        ConstructBytesToRGB(construct, kGray16 | field, 1);
        ConstructBytesToRGB(construct, kGray16 | kNormalized | field, 1);
        for (const Words& gray : {kGray10, kGray12, kGray14}) {
            ConstructBytesToRGB(construct, gray.id | kNormalized | field, 1);
            construct.Add<KyGrayscale16ToRGB16>(gray.id | field, gray.ShiftTo8());
            for (const bool order : {kRGB, kBGR}) {
                construct.Add<KyGrayscale16ToRGB24>(gray.id | field, order, gray.ShiftTo8());
                construct.Add<KyGrayscale16ToRGB32>(gray.id | field, order, gray.ShiftTo8());
            }
        }
    }
}

}  // namespace

void ConstructGrayscaleConverters(Constructor& construct) {
    ConstructDepths(construct);
    ConstructPacked(construct);
    ConstructTaps(construct);
    ConstructToRGB(construct);
}

}  // namespace ky

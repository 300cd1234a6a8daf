// Parts of images: their pixels, and what cannot be cut.
#include <tests/images/ImageCase.h>

#include <gtest/gtest.h>

namespace {

using Role = GuardedImage::Role;

/// The pixels of a part, read with its own strides.
Lines Read(const KyImage& part, const Shape& shape) {
    const std::uint32_t fields = shape.isInterlaced ? 2 : 1;
    Lines pixels;
    for (std::uint32_t i = 0; i < shape.planes * fields; ++i)
        for (std::uint32_t y = 0; y < part.height / fields; ++y) {
            const std::uint8_t* const line = part.data + i * part.planeStride + y * part.stride;
            pixels.insert(pixels.end(), line, line + shape.LineBytes(part.width));
        }
    return pixels;
}

Lines Cut(const Lines& whole, const Shape& shape, std::uint32_t width, std::uint32_t height, std::uint32_t x,
          std::uint32_t y, std::uint32_t partWidth, std::uint32_t partHeight) {
    const std::uint32_t fields = shape.isInterlaced ? 2 : 1;
    const std::size_t line = shape.LineBytes(width), first = x / shape.groupPixels * shape.groupBytes;
    Lines pixels;
    for (std::uint32_t part = 0; part < shape.planes * fields; ++part)
        for (std::uint32_t row = y / fields; row < (y + partHeight) / fields; ++row) {
            const std::uint8_t* const from = whole.data() + (part * (height / fields) + row) * line + first;
            pixels.insert(pixels.end(), from, from + shape.LineBytes(partWidth));
        }
    return pixels;
}

TEST(ImageCrop, EveryTypeGivesItsPixels) {
    RegisterApplicationConverters();
    support::Random random(21);
    std::int64_t type = 0;
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumPixelTypes(i, type); ++i) {
        if ((type & 0xF000) == 0xF000) continue;  // other tests' types
        const Shape shape(type);
        for (int repeat = 0; repeat < 5; ++repeat) {
            const std::uint32_t width = 1 + random.Below(30), height = (1 + random.Below(9)) * shape.lineStep;
            GuardedImage image(type, width, height, Role::kSource, random);
            std::uint32_t x = random.Below(width), partWidth = random.Below(width - x + 1);
            x -= x % shape.groupPixels;
            if (x + partWidth != width) partWidth -= partWidth % shape.groupPixels;
            if (shape.hasTaps) x = 0, partWidth = width;
            std::uint32_t y = random.Below(height), partHeight = random.Below(height - y + 1);
            y -= y % shape.lineStep, partHeight -= partHeight % shape.lineStep;

            KyImage part = image.image;
            ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Crop(&part, x, y, partWidth, partHeight, &part, nullptr))
                << KyImage_GetError() << ": " << Describe(image.image);
            EXPECT_EQ(partWidth, part.width);
            EXPECT_EQ(partHeight, part.height);
            if (partWidth == 0 || partHeight == 0) continue;
            EXPECT_EQ(Cut(image.Read(), shape, width, height, x, y, partWidth, partHeight), Read(part, shape));
            std::size_t needed = 0;
            EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&part, &needed));
            EXPECT_EQ(needed, part.size);
            EXPECT_LE(part.data + part.size, image.image.data + image.image.size);
        }
    }
}

/// A part is converted to the pixels that it has in the whole, but for the neighbours it lacks at its border: its flags tell
/// where the pattern begins there.
TEST(ImageCrop, PartsOfMosaicsConvertToThePixelsOfTheWhole) {
    support::Random random(22);
    constexpr std::uint32_t width = 24, height = 12, partWidth = 11, partHeight = 6;
    GuardedImage mosaic(kBayer8, width, height, Role::kSource, random);
    std::vector<std::uint8_t> whole(3 * width * height), cut(3 * partWidth * partHeight);
    const KyImage wholePicture = {KY_RGB24, width, height, whole.data(), whole.size(), 0, 0};
    const KyImage cutPicture = {KY_RGB24, partWidth, partHeight, cut.data(), cut.size(), 0, 0};
    for (const std::uint32_t pattern : {0u, 0x10u, 0x20u, 0x40u, 0x80u, 0xA0u})
        for (const auto& [x, y] : {std::pair(3u, 4u), {2u, 5u}, {3u, 5u}, {4u, 2u}}) {
            KyConversion conversion = Conversion(pattern | KY_FLAG_BAYER_INTERPOLATE);
            ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&mosaic.image, &wholePicture, &conversion));
            KyImage part;
            ASSERT_EQ(KY_STATUS_SUCCESS,
                      KyImage_Crop(&mosaic.image, x, y, partWidth, partHeight, &part, &conversion.flags));
            ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&part, &cutPicture, &conversion));
            for (std::uint32_t row = 1; row + 1 < partHeight; ++row)
                for (std::uint32_t i = 3; i < 3 * (partWidth - 1); ++i)
                    ASSERT_EQ(whole[3 * ((y + row) * width + x) + i], cut[3 * row * partWidth + i])
                        << i << " of line " << row << " from " << x << ", " << y << ", pattern " << pattern;
        }
    std::uint32_t flags = 5;
    GuardedImage gray(KY_GRAYSCALE8, 8, 8, Role::kSource, random);
    KyImage part;
    ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Crop(&gray.image, 1, 1, 4, 4, &part, &flags));
    EXPECT_EQ(5u, flags) << "no Bayer type";
}

TEST(ImageCrop, RefusesWhatCannotBeCut) {
    struct Row {
        std::int64_t type;
        std::uint32_t x, y, width, height;
        const char* text;
    };
    static const Row rows[] = {
        {kBayer8, 0, 0, 17, 4, "a part of 17x4 pixels at 0,0 reaches beyond the image, which has 16x12"},
        {kBayer8, 17, 0, 0, 4, "reaches beyond"},
        {kBayer8, 4, 4, 0xFFFFFFFF, 0xFFFFFFFF, "reaches beyond"},
        {kBayer8, 0, 13, 4, 0xFFFFFFF8, "reaches beyond"},
        {k422, 1, 0, 2, 2,
         "a part from x 1 to 3 tears a group of type 0x00040001 (YUV 8-bits 4:2:2) apart: expected "
         "multiples of 2 or the width, which is 16"},
        {k422, 2, 0, 3, 2, "from x 2 to 5 tears"},
        {0x00440006, 4, 0, 6, 2, "multiples of 4"},
        {0x00410009, 0, 0, 3, 2, "multiples of 2"},
        {0x01010001, 0, 0, 8, 2, "expected whole lines, from 0 to 16"},
        {0x00010006, 0, 0, 8, 2, "expected whole lines"},
        {0x10010001, 0, 1, 16, 2, "lines go in pairs"},
        {0x10010001, 0, 2, 16, 1, "lines go in pairs"},
        {0x00210001, 0, 1, 4, 2, "lines go in pairs: expected even numbers"},
        {0x00210001, 0, 2, 4, 3, "lines go in pairs"},
    };
    std::vector<std::uint8_t> bytes(16 * 12 * 2);
    for (const Row& row : rows) {
        const KyImage image = {row.type, 16, 12, bytes.data(), bytes.size(), 0, 0};
        KyImage part = {1, 2, 3, nullptr, 4, 5, 6};
        std::uint32_t flags = 7;
        EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyImage_Crop(&image, row.x, row.y, row.width, row.height, &part, &flags));
        EXPECT_NE(std::string::npos, std::string(KyImage_GetError()).find(row.text)) << KyImage_GetError();
        EXPECT_EQ(1, part.type) << "nothing is written";
        EXPECT_EQ(7u, flags);
    }
    const KyImage small = {kBayer8, 16, 12, bytes.data(), 16 * 12 - 1, 0, 0};
    KyImage part;
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyImage_Crop(&small, 0, 0, 1, 1, &part, nullptr));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyImage_Crop(nullptr, 0, 0, 1, 1, &part, nullptr));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyImage_Crop(&small, 0, 0, 1, 1, nullptr, nullptr));
}

}  // namespace

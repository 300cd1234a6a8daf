/* The flat interface from C99: a small frame becomes a picture. Returns 0 when every pixel is right. */
#include <KyImgLib/KyImgLibC.h>

#include <stdio.h>
#include <string.h>

enum { WIDTH = 11, HEIGHT = 6, PADDING = 2, LINE = 3 * WIDTH + PADDING };

static int failures = 0;

static void Check(bool holds, const char* what) {
    if (holds) return;
    fprintf(stderr, "failed: %s\n", what);
    ++failures;
}
#define CHECK(condition) Check(condition, #condition)

/* The whole picture has one colour, and nothing was written between its lines. */
static bool IsFlat(const uint8_t* picture, uint32_t width, uint8_t red, uint8_t green, uint8_t blue) {
    for (uint32_t y = 0; y < HEIGHT; ++y) {
        const uint8_t* const line = picture + y * LINE;
        for (uint32_t x = 0; x < width; ++x)
            if (line[3 * x] != red || line[3 * x + 1] != green || line[3 * x + 2] != blue) return false;
        for (uint32_t byte = 3 * width; byte < LINE; ++byte)
            if (line[byte] != 0xAA) return false;
    }
    return true;
}

int main(void) {
    /* A red of 200, a green of 100 and a blue of 50: R G R G ... above G B G B ... */
    uint8_t mosaic[WIDTH * HEIGHT], picture[LINE * HEIGHT];
    for (uint32_t i = 0; i < WIDTH * HEIGHT; ++i) {
        const uint32_t x = i % WIDTH % 2, y = i / WIDTH % 2;
        mosaic[i] = x != y ? 100 : x == 0 ? 200 : 50;
    }

    KyPixelType* const type = KyPixelTypeFactory_CreatePixelType(0x00020010);
    CHECK(type != NULL && KyPixelType_IsBayerPattern(type));
    CHECK(KyPixelType_GetBufferSizeFor(type, WIDTH, HEIGHT) == sizeof mosaic);
    CHECK(strcmp(KyPixelTypeFactory_GetPixelTypeName(KyPixelType_GetTypeID(type)), "Bayer RGB 8-bits") == 0);
    const KyPixelConverter* const converter = KyPixelTypeFactory_GetConverter(KyPixelType_GetTypeID(type), KY_RGB24);
    KyPixelType_Destroy(type);
    CHECK(converter != NULL);
    CHECK(KyPixelConverter_GetDestinationByteSize(converter, WIDTH) == 3 * WIDTH);

    const uint32_t bilinear = KY_FLAG_BAYER_RGGB | KY_FLAG_BAYER_INTERPOLATE;
    memset(picture, 0xAA, sizeof picture);
    CHECK(KyPixelConverter_ConvertArea(converter, mosaic, WIDTH, HEIGHT, picture, WIDTH, HEIGHT, WIDTH, HEIGHT,
                                       bilinear, PADDING) == KY_STATUS_SUCCESS);
    CHECK(IsFlat(picture, WIDTH, 200, 100, 50));
    memset(picture, 0xAA, sizeof picture);
    KyPixelConverter_ConvertArea(converter, mosaic, WIDTH, HEIGHT, picture, WIDTH, HEIGHT, WIDTH, HEIGHT,
                                 KY_FLAG_BAYER_RGGB, PADDING);
    CHECK(IsFlat(picture, WIDTH - 1, 200, 100, 50)); /* cells of two pixels */

    KyRGBFilter* const filter = KyRGBFilter_Init(8);
    CHECK(KyRGBFilter_SetMultipliers(filter, 0.5, 1.0, 2.0, 0, 7, 0) == KY_STATUS_SUCCESS);
    CHECK(KyRGBFilter_GetBlueValue8(filter, 50) == 100);
    CHECK(KyPixelConverter_ConvertAreaFilter(converter, filter, mosaic, WIDTH, HEIGHT, picture, WIDTH, HEIGHT, WIDTH,
                                             HEIGHT, bilinear, PADDING) == KY_STATUS_SUCCESS);
    CHECK(IsFlat(picture, WIDTH, 100, 107, 100));
    KyRGBFilter_Destroy(filter);

    return failures == 0 ? 0 : 1;
}

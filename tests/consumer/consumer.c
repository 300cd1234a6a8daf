/* Converts a small mosaic through the installed flat interface. */
#include <KyImgLib/KyImgLibC.h>

#include <stdio.h>

int main(void) {
    /* R G R G / G B G B of an evenly coloured scene: red 200, green 100, blue 50. */
    const uint8_t mosaic[8] = {200, 100, 200, 100, 100, 50, 100, 50};
    uint8_t rgb[24];
    uint32_t status;
    int i;

    const KyPixelConverter* converter = KyPixelTypeFactory_GetConverter(0x20010, KY_RGB24);
    if (!converter) {
        puts("no converter from Bayer 8 to RGB 24");
        return 1;
    }
    status = KyPixelConverter_ConvertArea(converter, mosaic, 4, 2, rgb, 4, 2, 4, 2,
                                          KY_FLAG_BAYER_RGGB | KY_FLAG_BAYER_INTERPOLATE, 0);
    for (i = 0; i < 24; i += 3) {
        if (status != KY_STATUS_SUCCESS || rgb[i] != 200 || rgb[i + 1] != 100 || rgb[i + 2] != 50) {
            printf("status %u, pixel %d is %d, %d, %d\n", (unsigned)status, i / 3, rgb[i], rgb[i + 1], rgb[i + 2]);
            return 1;
        }
    }
    return 0;
}

/* Converts a small mosaic through the installed flat interface. */
#include <KyImgLib/KyImgLibC.h>

#include <stdio.h>

int main(void) {
    /* R G R G / G B G B of an evenly coloured scene: red 200, green 100, blue 50. */
    uint8_t mosaic[8] = {200, 100, 200, 100, 100, 50, 100, 50};
    uint8_t rgb[24];
    const KyImage source = {0x20010, 4, 2, mosaic, sizeof mosaic, 0, 0};
    const KyImage destination = {KY_RGB24, 4, 2, rgb, sizeof rgb, 0, 0};
    const KyConversion conversion = {sizeof(KyConversion), KY_FLAG_BAYER_RGGB | KY_FLAG_BAYER_INTERPOLATE, NULL, 0, 0};
    int i;

    if (KyImage_Convert(&source, &destination, &conversion) != KY_STATUS_SUCCESS) {
        puts(KyImage_GetError());
        return 1;
    }
    for (i = 0; i < 24; i += 3) {
        if (rgb[i] != 200 || rgb[i + 1] != 100 || rgb[i + 2] != 50) {
            printf("pixel %d is %d, %d, %d\n", i / 3, rgb[i], rgb[i + 1], rgb[i + 2]);
            return 1;
        }
    }
    return 0;
}

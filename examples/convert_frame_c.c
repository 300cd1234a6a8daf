/* convert_frame FRAME PICTURE: turns a raw 8-bit Bayer frame of 1280x960 pixels into a PPM file. */

#include <KyImgLib/KyImgLibC.h>

#include <stdio.h>

enum { WIDTH = 1280, HEIGHT = 960 };

static uint8_t mosaic[WIDTH * HEIGHT], picture[3 * WIDTH * HEIGHT];

int main(int argc, char** argv) {
    FILE* input = argc == 3 ? fopen(argv[1], "rb") : NULL;
    if (input == NULL || fread(mosaic, 1, sizeof mosaic, input) != sizeof mosaic) return 1;
    fclose(input);

    const KyPixelConverter* converter = KyPixelTypeFactory_GetConverter(0x00020010, KY_RGB24);
    KyRGBFilter* white_balance = KyRGBFilter_Init(8);
    KyRGBFilter_SetMultipliers(white_balance, 1.9, 1.0, 1.6, 0, 0, 0);
    KyPixelConverter_ConvertAreaFilter(converter, white_balance, mosaic, WIDTH, HEIGHT, picture, WIDTH, HEIGHT, WIDTH,
                                       HEIGHT, KY_FLAG_BAYER_GRBG | KY_FLAG_BAYER_INTERPOLATE, 0);
    KyRGBFilter_Destroy(white_balance);

    FILE* output = fopen(argv[2], "wb");
    if (output == NULL || fprintf(output, "P6\n%d %d\n255\n", WIDTH, HEIGHT) < 0) return 1;
    int written = fwrite(picture, 1, sizeof picture, output) == sizeof picture;
    return fclose(output) == 0 && written ? 0 : 1;
}

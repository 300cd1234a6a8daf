/* convert_frame FRAME PICTURE: turns a raw 8-bit Bayer frame of 1280x960 pixels into a PPM file.

   Shows the usual conversion from C: two images, bilinear demosaicing with white balance, on all cores. */

#include <KyImgLib/KyImgLibC.h>

#include <stdio.h>

enum { WIDTH = 1280, HEIGHT = 960 };

static uint8_t mosaic[WIDTH * HEIGHT], rgb[3 * WIDTH * HEIGHT];

static uint32_t convert(void) {
    /* Type, width and height, bytes and how many there are; strides of 0: lines without padding. */
    const KyImage frame = {0x00020010, WIDTH, HEIGHT, mosaic, sizeof mosaic, 0, 0};
    const KyImage picture = {KY_RGB24, WIDTH, HEIGHT, rgb, sizeof rgb, 0, 0};
    KyRGBFilter* white_balance = KyRGBFilter_Init(8);
    KyConversion conversion = {sizeof(KyConversion), KY_FLAG_BAYER_GRBG | KY_FLAG_BAYER_INTERPOLATE, NULL, 0, 0};
    uint32_t status;

    KyRGBFilter_SetMultipliers(white_balance, 1.9, 1.0, 1.6, 0, 0, 0);
    conversion.filter = white_balance;
    status = KyImage_ConvertParallel(&frame, &picture, &conversion, NULL);
    if (status != KY_STATUS_SUCCESS) fprintf(stderr, "%s\n", KyImage_GetError());
    KyRGBFilter_Destroy(white_balance);
    return status;
}

int main(int argc, char** argv) {
    FILE* input = argc == 3 ? fopen(argv[1], "rb") : NULL;
    FILE* output;
    int written;

    if (input == NULL || fread(mosaic, 1, sizeof mosaic, input) != sizeof mosaic) {
        fprintf(stderr, "usage: convert-frame-c FRAME PICTURE, a frame of %u bytes\n", (unsigned)sizeof mosaic);
        return 1;
    }
    fclose(input);
    if (convert() != KY_STATUS_SUCCESS) return 1;

    output = fopen(argv[2], "wb");
    if (output == NULL || fprintf(output, "P6\n%d %d\n255\n", WIDTH, HEIGHT) < 0) return 1;
    written = fwrite(rgb, 1, sizeof rgb, output) == sizeof rgb;
    return fclose(output) == 0 && written ? 0 : 1;
}

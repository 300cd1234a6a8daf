/* Converts a part of a frame without a copy of it, and tells why a wrong one is refused. */

#include <KyImgLib/KyImgLibC.h>

#include <stdio.h>

enum { WIDTH = 640, HEIGHT = 480, LEFT = 101, TOP = 50, PART_WIDTH = 64, PART_HEIGHT = 48 };

static uint8_t mosaic[WIDTH * HEIGHT], picture[3 * PART_WIDTH * PART_HEIGHT];

/* Red is 200, green 100, blue 50; the first line is R G R G. */
static void expose(void) {
    int x, y;
    for (y = 0; y < HEIGHT; ++y)
        for (x = 0; x < WIDTH; ++x) mosaic[y * WIDTH + x] = (uint8_t)(x % 2 != y % 2 ? 100 : y % 2 == 0 ? 200 : 50);
}

int main(void) {
    const KyImage frame = {0x00020010, WIDTH, HEIGHT, mosaic, sizeof mosaic, 0, 0};
    const KyImage destination = {KY_RGB24, PART_WIDTH, PART_HEIGHT, picture, sizeof picture, 0, 0};
    KyConversion conversion = {sizeof(KyConversion), KY_FLAG_BAYER_RGGB | KY_FLAG_BAYER_INTERPOLATE, NULL, 0, 0};
    KyImage part;
    size_t bytes;

    expose();
    /* The part starts at an odd pixel, so its first line is G R G R: the flags get that pattern. */
    if (KyImage_Crop(&frame, LEFT, TOP, PART_WIDTH, PART_HEIGHT, &part, &conversion.flags) != KY_STATUS_SUCCESS ||
        KyImage_Convert(&part, &destination, &conversion) != KY_STATUS_SUCCESS) {
        fprintf(stderr, "%s\n", KyImage_GetError());
        return 1;
    }
    printf("pixel 0,0 of the part is R %d, G %d, B %d\n", picture[0], picture[1], picture[2]);
    if (picture[0] != 200 || picture[1] != 100 || picture[2] != 50) return 1;

    /* How large a buffer must be: ask instead of computing. */
    if (KyImage_GetSize(&destination, &bytes) != KY_STATUS_SUCCESS || bytes != sizeof picture) return 1;

    if (KyImage_Crop(&frame, WIDTH - 10, 0, PART_WIDTH, PART_HEIGHT, &part, NULL) == KY_STATUS_SUCCESS) return 1;
    printf("refused: %s\n", KyImage_GetError());
    return 0;
}

#include <KyImgLib/KyImgLibC.h>
#include <tests/flat/ImageCaller.h>

#include <string.h>

static void RunOneByOne(void* context, uint32_t tasks, void (*task)(void* state, uint32_t index), void* state) {
    uint32_t i;
    for (i = 0; i < tasks; ++i) task(state, i);
    *(uint32_t*)context = tasks;
}

const char* UseImagesFromC(void) {
    /* Three lines of five pixels, seven bytes apart. */
    uint8_t gray[19] = {10, 20, 30, 40, 50, 0, 0, 11, 21, 31, 41, 51, 0, 0, 12, 22, 32, 42, 52};
    uint8_t rgb[3 * 2 * 2 + 1];
    uint32_t tasks = 0, lines = 0;
    size_t bytes = 0;
    const KyImage image = {KY_GRAYSCALE8, 5, 3, gray, sizeof gray, 7, 0};
    const KyImage picture = {KY_RGB24, 2, 2, rgb, sizeof rgb - 1, 0, 0};
    KyImage part;
    KyConversion conversion = {sizeof(KyConversion), 0, NULL, 0, 0};
    KyExecutor executor = {1, NULL, RunOneByOne};
    executor.context = &tasks;
    memset(rgb, 99, sizeof rgb);

    if (KyImage_GetSize(&image, &bytes) != KY_STATUS_SUCCESS || bytes != sizeof gray) return "size";
    if (KyImage_Crop(&image, 3, 1, 2, 2, &part, NULL) != KY_STATUS_SUCCESS || part.data != gray + 10) return "crop";
    if (KyImage_GetBandStep(&part, &picture, &conversion, &lines) != KY_STATUS_SUCCESS || lines == 0)
        return "band step";
    if (KyImage_Convert(&part, &picture, &conversion) != KY_STATUS_SUCCESS) return KyImage_GetError();
    if (rgb[0] != 41 || rgb[3] != 51 || rgb[6] != 42 || rgb[11] != 52 || rgb[12] != 99) return "pixels";
    memset(rgb, 99, sizeof rgb);
    if (KyImage_ConvertParallel(&part, &picture, NULL, &executor) != KY_STATUS_SUCCESS) return KyImage_GetError();
    if (tasks != 1 || rgb[0] != 41 || rgb[11] != 52 || rgb[12] != 99) return "pixels of the executor";
    if (KyImage_Convert(&image, &picture, NULL) != KY_STATUS_BAD_ARGUMENT) return "unlike sizes";
    return strstr(KyImage_GetError(), "5x3") != NULL ? NULL : KyImage_GetError();
}

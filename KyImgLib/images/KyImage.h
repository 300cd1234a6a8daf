#ifndef KYIMGLIB_IMAGES_KYIMAGE_H
#define KYIMGLIB_IMAGES_KYIMAGE_H

/*
 * Images, and what is to be done with them: the structs of the checked interface, for C99 and C++17.
 *
 * The functions KyImage_... of KyImgLibC.h and the C++ class KyImageConverter take them. These check everything before
 * they touch a byte, take lines of any stride, and never read or write outside of the images.
 */

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
class KyRGBFilter;
#else
typedef struct KyRGBFilter KyRGBFilter;
#endif

/* An image in memory of the caller's, or a rectangle of one: lines of pixels, a fixed number of bytes apart.
 *
 * A line of pixels has no gaps. Types whose pixels share bytes have whole groups in every line, also where the width ends
 * inside of one:
 *
 *     4:2:2 with 8 bits             2 pixels in 4 bytes
 *     4:2:2 with 10 bits            2 pixels in 8 bytes
 *     4:1:1                         4 pixels in 6 bytes
 *     packed gray or Bayer, 10 and
 *     12 bits                       2 pixels in 3 bytes
 *
 * so 5 pixels of 8-bit 4:2:2 are 3 groups in 12 bytes. (KyPixelType::GetPixelGroup tells the groups of every type, extended
 * ones too.) (YUV types are told apart by the bits and bytes of a pixel: 16 in
 * 2, 20 in 4, 12 in 2.) Every other type has the bytes of its pixels one after the other;
 * RGB 24 and BGR 24 have 3 bytes a pixel, whatever KyPixelType_GetBufferSizeFor counts. For a type of an application's
 * own class, KyPixelType::GetBufferSizeFor() tells the bytes of a line. */
typedef struct KyImage {
    /* Pixel type ID. */
    int64_t type;
    /* Pixels of a line, and lines. Interlaced types and those with dual lines need an even height. */
    uint32_t width, height;
    /* First byte of the first line. The data of a source is never written. */
    uint8_t* data;
    /* Bytes from `data` on that belong to the image. Nothing beyond them is touched. The last line needs its pixels only,
       not the rest of its stride. */
    size_t size;
    /* Bytes from one line to the next, at least those of the pixels; of an interlaced image, from one line of a field to
       the next. 0: lines follow one another without padding. */
    size_t stride;
    /* Bytes from the first byte of a part to the first one of the next part:
       - planar RGB: the planes, in the order of the type's name. 0: stride x height.
       - YCbCr in planes (NV12, I420 ...): from the plane of Y to the next one. 0: stride x height. Where Cb and Cr have
         planes of their own, their lines are half of `stride` apart, rounded up, and the third plane follows the second. A
         stride of 0 means lines without padding in each plane.
       - interlaced types: the two fields, each of half the lines. 0: stride x height / 2.
       Parts may lie one after the other or, if all have the same lines, take turns line by line; they must not overlap. Not used for other types. (The
       destination of a conversion has its lines in the order of the picture even where its type is interlaced; then
       planeStride is not used.) */
    size_t planeStride;
} KyImage;

/* How images are converted. A null pointer in place of it means: no flags, no filter, all lines. */
typedef struct KyConversion {
    /* sizeof(KyConversion) of the header that the caller was compiled with, so that the struct can grow. */
    uint32_t structSize;
    /* Flags KY_FLAG_... of KyImgLibC.h, which are the constants FLAG_... of KyPixelConverter, combined by OR. */
    uint32_t flags;
    /* Tables that red, green and blue go through; null: none. Must not change before the call returns. */
    const KyRGBFilter* filter;
    /* The band of lines to convert, counted in the destination; both images are described whole. A lineCount of 0 means all
       lines from firstLine on. A band begins and ends at multiples of KyImage_GetBandStep or at the height. */
    uint32_t firstLine, lineCount;
} KyConversion;

/* Threads of the application that the bands of one image are converted on. A null pointer in place of it means: threads of
   the library's own, as many as there are cores that the calling thread may use, where the image is large enough. They
   start with the first such image and then wait for the next one, with all signals blocked but those of faults, until the
   library is unloaded. The child of a fork starts its own. */
typedef struct KyExecutor {
    /* Number of bands to make, fewer where the image has not so many band steps; 0: as many as there are cores that the
       calling thread may use. Without `run`, the number of the library's threads that may take part, the calling one among
       them. */
    uint32_t threads;
    /* Handed to `run`. */
    void* context;
    /* Calls task(state, index) once for each index from 0 to tasks - 1, in any order, on any threads, at once or one after
       the other, and returns when all these calls have returned. `tasks` is at least 1. No exception may leave it while a
       task is running. Null: the library's own threads, as with a null executor, but up to `threads`. */
    void (*run)(void* context, uint32_t tasks, void (*task)(void* state, uint32_t index), void* state);
} KyExecutor;

#endif

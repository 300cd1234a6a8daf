#include "PlainLoops.h"

#include <stddef.h>

/* PLAIN_LOOPS names the table of this compilation. */

typedef const uint8_t* restrict Source;
typedef uint8_t* restrict Destination;

static size_t Pixels(const PlainImage* image) { return (size_t)image->width * image->height; }

static uint8_t Clamp(int value) {
    value = value < 0 ? 0 : value;
    return (uint8_t)(value > 255 ? 255 : value);
}

static void BGR32ToRGB24(const PlainImage* image) {
    Source from = image->source;
    Destination to = image->destination;
    const size_t count = Pixels(image);
    for (size_t i = 0; i < count; ++i) {
        to[3 * i] = from[4 * i + 2];
        to[3 * i + 1] = from[4 * i + 1];
        to[3 * i + 2] = from[4 * i];
    }
}

static void RGB24ToRGB32(const PlainImage* image) {
    Source from = image->source;
    Destination to = image->destination;
    const size_t count = Pixels(image);
    for (size_t i = 0; i < count; ++i) {
        to[4 * i] = from[3 * i];
        to[4 * i + 1] = from[3 * i + 1];
        to[4 * i + 2] = from[3 * i + 2];
        to[4 * i + 3] = 0;
    }
}

static void NarrowWords(const uint8_t* bytes, uint8_t* destination, size_t count) {
    const uint16_t* restrict from = (const uint16_t*)(const void*)bytes;
    Destination to = destination;
    for (size_t i = 0; i < count; ++i) to[i] = (uint8_t)(from[i] >> 4);
}

static void RGB48ToRGB24(const PlainImage* image) { NarrowWords(image->source, image->destination, 3 * Pixels(image)); }

static void Gray12ToGray8(const PlainImage* image) { NarrowWords(image->source, image->destination, Pixels(image)); }

static void RGB24ToPlanar(const PlainImage* image) {
    Source from = image->source;
    const size_t count = Pixels(image);
    Destination red = image->destination;
    Destination green = image->destination + count;
    Destination blue = image->destination + 2 * count;
    for (size_t i = 0; i < count; ++i) {
        red[i] = from[3 * i];
        green[i] = from[3 * i + 1];
        blue[i] = from[3 * i + 2];
    }
}

/* YCbCr of BT.601 in fixed point with 20 fractional bits. */
enum { kBits = 20, kHalf = 1 << (kBits - 1) };
#define FIXED(factor) ((int)((factor) * (1 << kBits) + ((factor) < 0 ? -0.5 : 0.5)))

static void StoreLimited(int y, int cb, int cr, uint8_t* to) {
    const int luma = FIXED(255.0 / 219) * (y - 16) + kHalf;
    cb -= 128;
    cr -= 128;
    to[0] = Clamp((luma + FIXED(1.402 * 255 / 224) * cr) >> kBits);
    to[1] = Clamp((luma - FIXED(0.344136286 * 255 / 224) * cb - FIXED(0.714136286 * 255 / 224) * cr) >> kBits);
    to[2] = Clamp((luma + FIXED(1.772 * 255 / 224) * cb) >> kBits);
}

static void YUV444ToRGB24(const PlainImage* image) {
    Source from = image->source;
    Destination to = image->destination;
    const size_t count = Pixels(image);
    for (size_t i = 0; i < count; ++i) {
        const int luma = (from[3 * i] << kBits) + kHalf, cb = from[3 * i + 1] - 128, cr = from[3 * i + 2] - 128;
        to[3 * i] = Clamp((luma + FIXED(1.402) * cr) >> kBits);
        to[3 * i + 1] = Clamp((luma - FIXED(0.344136286) * cb - FIXED(0.714136286) * cr) >> kBits);
        to[3 * i + 2] = Clamp((luma + FIXED(1.772) * cb) >> kBits);
    }
}

static void YUYVToRGB32(const PlainImage* image) {
    Source from = image->source;
    Destination to = image->destination;
    const size_t pairs = Pixels(image) / 2;
    for (size_t i = 0; i < pairs; ++i) {
        StoreLimited(from[4 * i], from[4 * i + 1], from[4 * i + 3], to + 8 * i);
        to[8 * i + 3] = 0;
        StoreLimited(from[4 * i + 2], from[4 * i + 1], from[4 * i + 3], to + 8 * i + 4);
        to[8 * i + 7] = 0;
    }
}

static void YUYVToRGB24(const PlainImage* image) {
    Source from = image->source;
    Destination to = image->destination;
    const size_t pairs = Pixels(image) / 2;
    for (size_t i = 0; i < pairs; ++i) {
        StoreLimited(from[4 * i], from[4 * i + 1], from[4 * i + 3], to + 6 * i);
        StoreLimited(from[4 * i + 2], from[4 * i + 1], from[4 * i + 3], to + 6 * i + 3);
    }
}

static void UYVYToRGB24(const PlainImage* image) {
    Source from = image->source;
    Destination to = image->destination;
    const size_t pairs = Pixels(image) / 2;
    for (size_t i = 0; i < pairs; ++i) {
        StoreLimited(from[4 * i + 1], from[4 * i], from[4 * i + 2], to + 6 * i);
        StoreLimited(from[4 * i + 3], from[4 * i], from[4 * i + 2], to + 6 * i + 3);
    }
}

static void NV12ToRGB24(const PlainImage* image) {
    const size_t width = image->width;
    for (size_t y = 0; y < image->height; ++y) {
        Source luma = image->source + y * width;
        Source chroma = image->source + Pixels(image) + y / 2 * width;
        Destination to = image->destination + 3 * y * width;
        for (size_t x = 0; x < width; x += 2) {
            StoreLimited(luma[x], chroma[x], chroma[x + 1], to + 3 * x);
            StoreLimited(luma[x + 1], chroma[x], chroma[x + 1], to + 3 * x + 3);
        }
    }
}

static void I420ToRGB24(const PlainImage* image) {
    const size_t width = image->width;
    for (size_t y = 0; y < image->height; ++y) {
        Source luma = image->source + y * width;
        Source cb = image->source + Pixels(image) + y / 2 * (width / 2);
        Source cr = cb + Pixels(image) / 4;
        Destination to = image->destination + 3 * y * width;
        for (size_t x = 0; x < width / 2; ++x) {
            StoreLimited(luma[2 * x], cb[x], cr[x], to + 6 * x);
            StoreLimited(luma[2 * x + 1], cb[x], cr[x], to + 6 * x + 3);
        }
    }
}

static void StoreLuma(const uint8_t* source, uint8_t* destination, size_t count) {
    Source from = source;
    Destination to = destination;
    for (size_t i = 0; i < count; ++i)
        to[i] = (uint8_t)((FIXED(0.299 * 219 / 255) * from[3 * i] + FIXED(0.587 * 219 / 255) * from[3 * i + 1] +
                           FIXED(0.114 * 219 / 255) * from[3 * i + 2] + (16 << kBits) + kHalf) >>
                          kBits);
}

/* Of the sums of four pixels. */
static uint8_t Chroma(int toRed, int toGreen, int toBlue, const int sums[3]) {
    return (uint8_t)(((toRed * sums[0] + toGreen * sums[1] + toBlue * sums[2]) + (128 << kBits) + kHalf) >> kBits);
}
#define CHROMA_OF(factor) FIXED((factor)*224.0 / 255 / 4)

static void StoreChroma(const uint8_t* source, size_t width, uint8_t* cbs, uint8_t* crs, size_t step) {
    Source from = source;
    for (size_t x = 0; x < width / 2; ++x) {
        int sums[3];
        for (size_t c = 0; c < 3; ++c)
            sums[c] =
                from[6 * x + c] + from[6 * x + 3 + c] + from[3 * width + 6 * x + c] + from[3 * width + 6 * x + 3 + c];
        cbs[x * step] = Chroma(CHROMA_OF(-0.299 / 1.772), CHROMA_OF(-0.587 / 1.772), CHROMA_OF(0.5), sums);
        crs[x * step] = Chroma(CHROMA_OF(0.5), CHROMA_OF(-0.587 / 1.402), CHROMA_OF(-0.114 / 1.402), sums);
    }
}

static void RGB24ToNV12(const PlainImage* image) {
    const size_t width = image->width;
    uint8_t* const chroma = image->destination + Pixels(image);
    StoreLuma(image->source, image->destination, Pixels(image));
    for (size_t y = 0; y < image->height; y += 2)
        StoreChroma(image->source + 3 * y * width, width, chroma + y / 2 * width, chroma + y / 2 * width + 1, 2);
}

static void RGB24ToI420(const PlainImage* image) {
    const size_t width = image->width;
    uint8_t* const cb = image->destination + Pixels(image);
    uint8_t* const cr = cb + Pixels(image) / 4;
    StoreLuma(image->source, image->destination, Pixels(image));
    for (size_t y = 0; y < image->height; y += 2)
        StoreChroma(image->source + 3 * y * width, width, cb + y / 2 * (width / 2), cr + y / 2 * (width / 2), 1);
}

static void Mono10BEToGray10(const PlainImage* image) {
    const uint16_t* restrict from = (const uint16_t*)(const void*)image->source;
    uint16_t* restrict to = (uint16_t*)(void*)image->destination;
    const size_t count = Pixels(image);
    for (size_t i = 0; i < count; ++i) to[i] = (uint16_t)(from[i] << 8 | from[i] >> 8);
}

static void Gray8ToRGB24(const PlainImage* image) {
    Source from = image->source;
    Destination to = image->destination;
    const size_t count = Pixels(image);
    for (size_t i = 0; i < count; ++i) to[3 * i] = to[3 * i + 1] = to[3 * i + 2] = from[i];
}

static void Bayer8ToRGB24Nearest(const PlainImage* image) {
    const size_t width = image->width;
    for (size_t y = 0; y < image->height; y += 2) {
        Source upper = image->source + y * width;
        Source lower = upper + width;
        Destination above = image->destination + 3 * y * width;
        Destination below = above + 3 * width;
        for (size_t x = 0; x < width; x += 2) {
            const uint8_t pixels[6] = {upper[x + 1], upper[x], lower[x], upper[x + 1], lower[x + 1], lower[x]};
            for (size_t i = 0; i < 6; ++i) above[3 * x + i] = below[3 * x + i] = pixels[i];
        }
    }
}

/* Bilinear demosaicing of pixels 1 to width - 2 of a row; the first and the last repeat their neighbours. `own` is the
   offset of the colour of the row's non-green samples (0 red, 2 blue), `first` the column of the first of them. */
static void BilinearRow(const uint8_t* above, const uint8_t* row, const uint8_t* below, size_t width, size_t first,
                        size_t own, size_t step, uint8_t* destination) {
    Destination to = destination;
    const size_t other = 2 - own;
    for (size_t x = 1 + first; x + 1 < width; x += 2) { /* green */
        to[step * x + own] = (uint8_t)((row[x - 1] + row[x + 1]) >> 1);
        to[step * x + 1] = row[x];
        to[step * x + other] = (uint8_t)((above[x] + below[x]) >> 1);
    }
    for (size_t x = 1 + !first; x + 1 < width; x += 2) {
        to[step * x + own] = row[x];
        to[step * x + 1] = (uint8_t)((row[x - 1] + row[x + 1] + above[x] + below[x]) >> 2);
        to[step * x + other] = (uint8_t)((above[x - 1] + above[x + 1] + below[x - 1] + below[x + 1]) >> 2);
    }
    if (step == 4)
        for (size_t x = 0; x < width; ++x) to[4 * x + 3] = 0;
    for (size_t c = 0; c < step; ++c) {
        to[c] = to[step + c];
        to[step * (width - 1) + c] = to[step * (width - 2) + c];
    }
}

/* GRBG. */
static void Bilinear(const PlainImage* image, size_t step, const uint8_t* tables) {
    const size_t width = image->width, height = image->height;
    for (size_t y = 0; y < height; ++y) {
        const uint8_t* const row = image->source + y * width;
        Destination to = image->destination + step * y * width;
        BilinearRow(y > 0 ? row - width : row + width, row, y + 1 < height ? row + width : row - width, width,
                    y % 2 == 0, y % 2 == 0 ? 0 : 2, step, to);
        if (tables == NULL) continue;
        for (size_t i = 0; i < width; ++i)
            for (size_t c = 0; c < 3; ++c) to[3 * i + c] = tables[256 * c + to[3 * i + c]];
    }
}

static void Bayer8ToRGB24(const PlainImage* image) { Bilinear(image, 3, NULL); }
static void Bayer8ToRGB32(const PlainImage* image) { Bilinear(image, 4, NULL); }
static void Bayer8ToRGB24Tables(const PlainImage* image) { Bilinear(image, 3, image->tables[0]); }

static void RGB24Tables(const PlainImage* image) {
    Source from = image->source;
    Destination to = image->destination;
    const uint8_t* const red = image->tables[0];
    const uint8_t* const green = image->tables[1];
    const uint8_t* const blue = image->tables[2];
    const size_t count = Pixels(image);
    for (size_t i = 0; i < count; ++i) {
        to[3 * i] = red[from[3 * i]];
        to[3 * i + 1] = green[from[3 * i + 1]];
        to[3 * i + 2] = blue[from[3 * i + 2]];
    }
}

static void Mono12pToGray12(const PlainImage* image) {
    Source from = image->source;
    uint16_t* restrict to = (uint16_t*)(void*)image->destination;
    const size_t pairs = Pixels(image) / 2;
    for (size_t i = 0; i < pairs; ++i) {
        to[2 * i] = (uint16_t)(from[3 * i] | (from[3 * i + 1] & 0x0F) << 8);
        to[2 * i + 1] = (uint16_t)(from[3 * i + 1] >> 4 | from[3 * i + 2] << 4);
    }
}

/* Half of an operation that another library completes. */
static void Bayer12pToBayer8(const PlainImage* image) {
    Source from = image->source;
    Destination to = image->scratch;
    const size_t pairs = Pixels(image) / 2;
    for (size_t i = 0; i < pairs; ++i) {
        to[2 * i] = (uint8_t)(from[3 * i] >> 4 | from[3 * i + 1] << 4);
        to[2 * i + 1] = from[3 * i + 2];
    }
}

/* A row of demosaiced pixels at a time, so that it is in a cache when it is summed. */
static void Bayer8ToNV12(const PlainImage* image) {
    const size_t width = image->width, height = image->height;
    uint8_t* const chroma = image->destination + Pixels(image);
    for (size_t y = 0; y < height; ++y) {
        const uint8_t* const row = image->source + y * width;
        uint8_t* const rgb = image->scratch + 3 * (y % 2) * width;
        BilinearRow(y > 0 ? row - width : row + width, row, y + 1 < height ? row + width : row - width, width,
                    y % 2 == 0, y % 2 == 0 ? 0 : 2, 3, rgb);
        StoreLuma(rgb, image->destination + y * width, width);
        if (y % 2 == 1) StoreChroma(image->scratch, width, chroma + y / 2 * width, chroma + y / 2 * width + 1, 2);
    }
}

const PlainLoop PLAIN_LOOPS[] = {
    {"BGR32ToRGB24", BGR32ToRGB24},
    {"RGB24ToRGB32", RGB24ToRGB32},
    {"RGB48ToRGB24", RGB48ToRGB24},
    {"RGB24ToPlanar", RGB24ToPlanar},
    {"YUV444ToRGB24", YUV444ToRGB24},
    {"YUYVToRGB32", YUYVToRGB32},
    {"YUYVToRGB24", YUYVToRGB24},
    {"UYVYToRGB24", UYVYToRGB24},
    {"NV12ToRGB24", NV12ToRGB24},
    {"I420ToRGB24", I420ToRGB24},
    {"RGB24ToNV12", RGB24ToNV12},
    {"RGB24ToI420", RGB24ToI420},
    {"Gray12ToGray8", Gray12ToGray8},
    {"Mono10BEToGray10", Mono10BEToGray10},
    {"Gray8ToRGB24", Gray8ToRGB24},
    {"Bayer8ToRGB24/nearest", Bayer8ToRGB24Nearest},
    {"Bayer8ToRGB24/bilinear", Bayer8ToRGB24},
    {"Bayer8ToRGB32/bilinear", Bayer8ToRGB32},
    {"Bayer8ToRGB24/bilinear/tables", Bayer8ToRGB24Tables},
    {"RGB24ToRGB24/tables", RGB24Tables},
    {"Mono12pToGray12", Mono12pToGray12},
    {"Bayer12pToBayer8", Bayer12pToBayer8},
    {"Bayer8ToNV12/bilinear", Bayer8ToNV12},
    {NULL, NULL},
};

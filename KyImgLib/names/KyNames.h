#ifndef KYIMGLIB_NAMES_KYNAMES_H
#define KYIMGLIB_NAMES_KYNAMES_H

/* Names that pixel types have elsewhere. Usable from C99 and C++; the functions are in KyPixelFormat.h for C++ and in
   KyImgLibC.h for C. */

#include <stdint.h>

/* Whose names. */
enum {
    KY_NAMES_DISPLAY = 0,   /* the library's own: "Bayer RGB 8-bits" */
    KY_NAMES_PFNC = 1,      /* GenICam's Pixel Format Naming Convention and GigE Vision: "BayerRG8" */
    KY_NAMES_V4L2 = 2,      /* the four characters of Video4Linux, without blanks at the end: "RGGB", "Y10"; big-endian
                               formats, which have the same characters, end in _BE: "Y16_BE" */
    KY_NAMES_GSTREAMER = 3, /* of video/x-raw and video/x-bayer: "rggb" */
    KY_NAMES_FFMPEG = 4     /* FFmpeg's pixel formats: "bayer_rggb8" */
};

/* One of the names of a type. */
typedef struct KyPixelFormatName {
    const char* name;    /* valid while the library is loaded */
    uint32_t convention; /* whose name: KY_NAMES_... */
    uint32_t bayerFlags; /* the Bayer pattern that it says, a KY_FLAG_BAYER_... flag; 0: none */
    uint32_t pfncCode;   /* the 32-bit value that PFNC gives to the name; 0 for names of others */
} KyPixelFormatName;

#endif

#ifndef KYIMGLIB_TESTS_FLAT_IMAGECALLER_H
#define KYIMGLIB_TESTS_FLAT_IMAGECALLER_H

#ifdef __cplusplus
extern "C" {
#endif

/* Uses images as a C program does. Null when all is well, otherwise what is not. */
const char* UseImagesFromC(void);

#ifdef __cplusplus
}
#endif

#endif

#ifndef KYBENCH_PEERS_PLAINLOOPS_H
#define KYBENCH_PEERS_PLAINLOOPS_H

/*
 * The obvious loop in C for each operation, which the compiler vectorizes as well as it can. PlainLoops.c is compiled
 * once for each instruction set.
 */

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct PlainImage {
    const uint8_t* source;
    uint8_t* destination;
    uint8_t* scratch; /* as large as eight bytes a pixel */
    uint32_t width, height;
    const uint8_t (*tables)[256]; /* three, for the operations that have some */
} PlainImage;

typedef struct PlainLoop {
    const char* operation; /* null after the last one */
    void (*convert)(const PlainImage* image);
} PlainLoop;

extern const PlainLoop kPlainLoopsV2[], kPlainLoopsV3[], kPlainLoopsV4[];

#ifdef __cplusplus
}
#endif

#endif

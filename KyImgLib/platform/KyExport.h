#ifndef KYIMGLIB_PLATFORM_KYEXPORT_H
#define KYIMGLIB_PLATFORM_KYEXPORT_H

/* KYIMGLIB_API marks every class and function that the shared library exports. Usable from C and C++. */
#if defined(_WIN32)
#if defined(KYIMGLIB_BUILD)
#define KYIMGLIB_API __declspec(dllexport)
#else
#define KYIMGLIB_API __declspec(dllimport)
#endif
#else
#define KYIMGLIB_API __attribute__((visibility("default")))
#endif

#endif

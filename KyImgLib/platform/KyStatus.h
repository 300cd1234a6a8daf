#ifndef KYIMGLIB_PLATFORM_KYSTATUS_H
#define KYIMGLIB_PLATFORM_KYSTATUS_H

/* Status codes: unsigned 32-bit values returned by every operation of the library that can fail.
   Usable from C99 and C++. No operation of the flat interface reports in any other way. */
enum {
    /* The operation did what was asked. */
    KY_STATUS_SUCCESS = 0,
    /* An argument is out of its range, a handle is null, or the ID or pair is registered already. Nothing was changed. */
    KY_STATUS_BAD_ARGUMENT = 18,
    /* There is no memory, or an application's own type or converter has thrown an exception. Registering functions have changed
       nothing; conversions may have written a part of the destination. */
    KY_STATUS_OUT_OF_MEMORY = 24,
    /* KyPixelTypeFactory::ClonePixelConverters found no converter to copy. */
    KY_STATUS_NOTHING_CLONED = 25,
    /* The converter does not have the called form (one pixel, one line), no converter is registered for a pair of images, or no
       type for a name that is known; nothing was written. */
    KY_STATUS_NOT_SUPPORTED = 26
};

#endif

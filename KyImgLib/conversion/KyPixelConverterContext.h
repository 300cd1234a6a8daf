#ifndef KYIMGLIB_CONVERSION_KYPIXELCONVERTERCONTEXT_H
#define KYIMGLIB_CONVERSION_KYPIXELCONVERTERCONTEXT_H

#include <cstdint>

class KyRGBFilter;

/// What an area conversion tells the line calls it makes: one record for each thread that is converting.
///
/// A converter reads it in its line form between KyPixelConverter::GetContext() and ReleaseContext(). The record
/// belongs to the library and exists from a thread's outermost GetContext() to the matching release; a new one is
/// all zero but for the reference count.
struct KyPixelConverterContext {
    std::uint32_t referenceCount;       ///< GetContext() calls of this thread not yet released
    std::uint32_t sourceLineSize;       ///< source stride: bytes from one line to the next
    std::uint32_t sourceHeight;         ///< lines in the source buffer
    std::uint32_t destinationLineSize;  ///< destination stride: bytes from one line to the next
    std::uint32_t destinationHeight;    ///< lines in the destination buffer
    std::uint32_t planeOffsets[3];      ///< bytes from the start of a planar destination to its three planes
    std::uint32_t flags;                ///< flags of the call, a Bayer pattern added where none was given
    const KyRGBFilter* filter;          ///< filter that line calls apply; null outside a conversion
    std::uint32_t lineIndex;            ///< destination line, from 0, that the current line call starts at
};

#endif

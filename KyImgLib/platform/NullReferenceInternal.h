#ifndef KYIMGLIB_PLATFORM_NULLREFERENCEINTERNAL_H
#define KYIMGLIB_PLATFORM_NULLREFERENCEINTERNAL_H

/// Marks functions that return a null reference for what is absent, so that sanitizers let them. (That compilers do not
/// reason with it is up to a compiler flag of the library.)
#define KY_MAY_RETURN_NULL_REFERENCE __attribute__((no_sanitize("null")))

namespace ky {

/// The reference to what was found, null when nothing was. Volatile, so that no compiler can conclude that it is not.
template <typename T>
KY_MAY_RETURN_NULL_REFERENCE const T& ReferenceOrNull(const T* found) {
    const T* volatile pointer = found;
    return *pointer;
}

}  // namespace ky

#endif

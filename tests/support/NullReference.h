#ifndef KYIMGLIB_TESTS_SUPPORT_NULLREFERENCE_H
#define KYIMGLIB_TESTS_SUPPORT_NULLREFERENCE_H

namespace support {

/// The address behind a reference that may be null. A compiler may take `&reference` for never null, so the address
/// goes through a volatile pointer.
template <typename T>
const T* AddressOf(const T& reference) {
    const T* const volatile address = &reference;
    return address;
}

}  // namespace support

#endif

#ifndef KYIMGLIB_FLAT_GUARDINTERNAL_H
#define KYIMGLIB_FLAT_GUARDINTERNAL_H

namespace ky {

/// Makes a call on behalf of a flat function: `otherwise` when `object` is null, the call's result when it returns,
/// `whenThrown` when it throws, since no exception may leave the flat interface.
template <typename Object, typename Result, typename Call>
Result Guarded(Object* object, Result otherwise, Result whenThrown, Call call) noexcept {
    if (object == nullptr) return otherwise;
    try {
        return call(*object);
    } catch (...) {
        return whenThrown;
    }
}

/// The same for calls that have no object.
template <typename Result, typename Call>
Result Guarded(Result whenThrown, Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return whenThrown;
    }
}

/// The first for queries, which answer alike in both cases.
template <typename Object, typename Result, typename Call>
Result Guarded(Object* object, Result otherwise, Call call) noexcept {
    return Guarded(object, otherwise, otherwise, call);
}

}  // namespace ky

#endif

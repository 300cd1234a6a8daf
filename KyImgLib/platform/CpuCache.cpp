#include <KyImgLib/platform/CpuCacheInternal.h>

#if defined(__x86_64__)
#include <cpuid.h>
#elif !defined(_WIN32)
#include <unistd.h>
#endif

#include <initializer_list>

namespace ky {

namespace {

constexpr std::size_t kTypicalSize = std::size_t{16} << 20;

#if defined(__x86_64__)
/// The processor describes one cache by each sub-leaf: Intel's in leaf 4, AMD's in the same form in leaf 0x8000001D. Read
/// here because the C library adds up the last-level caches of a whole socket, of which a core fills only its own.
std::size_t SizeFromSystem() {
    std::size_t largest = 0;
    for (const unsigned leaf : {4u, 0x8000001Du}) {
        for (unsigned index = 0; index < 8; ++index) {
            unsigned a, b, c, d;
            if (__get_cpuid_count(leaf, index, &a, &b, &c, &d) == 0) break;
            const unsigned type = a & 0x1F;
            if (type == 0 || type > 3) break;
            const std::size_t ways = (b >> 22) + 1, partitions = (b >> 12 & 0x3FF) + 1, lineSize = (b & 0xFFF) + 1;
            const std::size_t size = ways * partitions * lineSize * (std::size_t{c} + 1);
            if (size > largest) largest = size;
        }
    }
    return largest;
}
#elif defined(_SC_LEVEL3_CACHE_SIZE)
std::size_t SizeFromSystem() {
    for (const int name : {_SC_LEVEL3_CACHE_SIZE, _SC_LEVEL2_CACHE_SIZE})
        if (const long size = ::sysconf(name); size > 0) return static_cast<std::size_t>(size);
    return 0;
}
#else
std::size_t SizeFromSystem() { return 0; }
#endif

}  // namespace

std::size_t LastLevelCacheSize() {
    static const std::size_t size = [] {
        const std::size_t told = SizeFromSystem();
        return told == 0 ? kTypicalSize : told;
    }();
    return size;
}

void FinishStreaming() {
#if defined(__x86_64__)
    __builtin_ia32_sfence();
#endif
}

}  // namespace ky

#include "BaselineKernels.h"

#include <array>
#include <cstring>
#include <numeric>
#include <stdexcept>
#include <string>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

// A step loads `Loads` blocks of 64 bytes and stores `Stores` such blocks. It must be unrolled to nothing but loads and
// stores, in registers, at any optimisation level.
#define KYBENCH_UNROLL _Pragma("GCC unroll 16")

namespace kybench {

namespace {

constexpr std::size_t kBlock = 64;

#if defined(__x86_64__)
enum class Way {
    kOrdinary,
    kStreaming,   // past the caches: the fastest way out to memory, slow where the destination would fit a cache
    kPrefetched,  // destination cache lines prefetched with the intent to write (PREFETCHW)
};

constexpr std::size_t kDestinationAhead = 6144;
constexpr std::size_t kSourceAhead = 2048;

template <std::size_t Loads, std::size_t Stores>
[[gnu::always_inline, gnu::target("prfchw")]] inline void Prefetch(const std::uint8_t* source,
                                                                   std::uint8_t* destination) {
    KYBENCH_UNROLL
    for (std::size_t i = 0; i < Stores; ++i) __builtin_prefetch(destination + kDestinationAhead + i * kBlock, 1);
    KYBENCH_UNROLL
    for (std::size_t i = 0; i < Loads; ++i) __builtin_prefetch(source + kSourceAhead + i * kBlock, 0);
}

template <std::size_t Loads, std::size_t Stores, Way way>
[[gnu::target("avx512f,prfchw")]] void Move512(const std::uint8_t* source, std::uint8_t* destination,
                                               std::size_t sourceBytes) {
    for (std::size_t steps = sourceBytes / (kBlock * Loads); steps > 0; --steps) {
        if constexpr (way == Way::kPrefetched) Prefetch<Loads, Stores>(source, destination);
        __m512i blocks[Loads];
        KYBENCH_UNROLL
        for (std::size_t i = 0; i < Loads; ++i) blocks[i] = _mm512_load_si512(source + i * kBlock);
        KYBENCH_UNROLL
        for (std::size_t i = Stores; i < Loads; ++i)
            blocks[i % Stores] = _mm512_or_si512(blocks[i % Stores], blocks[i]);
        KYBENCH_UNROLL
        for (std::size_t i = 0; i < Stores; ++i) {
            auto* const target = reinterpret_cast<__m512i*>(destination + i * kBlock);
            if constexpr (way == Way::kStreaming)
                _mm512_stream_si512(target, blocks[i % Loads]);
            else
                _mm512_store_si512(target, blocks[i % Loads]);
        }
        source += kBlock * Loads;
        destination += kBlock * Stores;
    }
    if constexpr (way == Way::kStreaming) _mm_sfence();
}

template <std::size_t Loads, std::size_t Stores, Way way>
[[gnu::target("avx2,prfchw")]] void Move256(const std::uint8_t* source, std::uint8_t* destination,
                                            std::size_t sourceBytes) {
    constexpr std::size_t half = kBlock / 2;
    for (std::size_t steps = sourceBytes / (kBlock * Loads); steps > 0; --steps) {
        if constexpr (way == Way::kPrefetched) Prefetch<Loads, Stores>(source, destination);
        __m256i halves[2 * Loads];
        KYBENCH_UNROLL
        for (std::size_t i = 0; i < 2 * Loads; ++i)
            halves[i] = _mm256_load_si256(reinterpret_cast<const __m256i*>(source + i * half));
        KYBENCH_UNROLL
        for (std::size_t i = 2 * Stores; i < 2 * Loads; ++i)
            halves[i % (2 * Stores)] = _mm256_or_si256(halves[i % (2 * Stores)], halves[i]);
        KYBENCH_UNROLL
        for (std::size_t i = 0; i < 2 * Stores; ++i) {
            auto* const target = reinterpret_cast<__m256i*>(destination + i * half);
            if constexpr (way == Way::kStreaming)
                _mm256_stream_si256(target, halves[i % (2 * Loads)]);
            else
                _mm256_store_si256(target, halves[i % (2 * Loads)]);
        }
        source += kBlock * Loads;
        destination += kBlock * Stores;
    }
    if constexpr (way == Way::kStreaming) _mm_sfence();
}
#endif

/// With whatever the compiler makes of it for any CPU of the architecture.
template <std::size_t Loads, std::size_t Stores>
void MovePortable(const std::uint8_t* source, std::uint8_t* destination, std::size_t sourceBytes) {
    using Words = std::array<std::uint64_t, kBlock / sizeof(std::uint64_t)>;
    for (std::size_t steps = sourceBytes / (kBlock * Loads); steps > 0; --steps) {
        Words blocks[Loads];
        std::memcpy(blocks, source, sizeof blocks);
        KYBENCH_UNROLL
        for (std::size_t i = Stores; i < Loads; ++i)
            for (std::size_t word = 0; word < Words{}.size(); ++word) blocks[i % Stores][word] |= blocks[i][word];
        KYBENCH_UNROLL
        for (std::size_t i = 0; i < Stores; ++i) std::memcpy(destination + i * kBlock, &blocks[i % Loads], kBlock);
        source += kBlock * Loads;
        destination += kBlock * Stores;
    }
}

template <std::size_t Loads, std::size_t Stores>
std::vector<BaselineKernel> Kernels() {
#if defined(__x86_64__)
    std::vector<BaselineKernel> kernels;
    if (__builtin_cpu_supports("avx512f"))
        kernels = {{"avx512", &Move512<Loads, Stores, Way::kOrdinary>},
                   {"avx512 streaming", &Move512<Loads, Stores, Way::kStreaming>},
                   {"avx512 prefetchw", &Move512<Loads, Stores, Way::kPrefetched>}};
    if (__builtin_cpu_supports("avx2"))
        kernels.insert(kernels.end(), {{"avx2", &Move256<Loads, Stores, Way::kOrdinary>},
                                       {"avx2 streaming", &Move256<Loads, Stores, Way::kStreaming>},
                                       {"avx2 prefetchw", &Move256<Loads, Stores, Way::kPrefetched>}});
    if (!kernels.empty()) return kernels;
#endif
    return {{"portable", &MovePortable<Loads, Stores>}};
}

struct Ratio {
    std::size_t sourceBytes;
    std::size_t destinationBytes;
    std::vector<BaselineKernel> (*kernels)();
};

/// Of source to destination bytes, reduced.
constexpr Ratio kRatios[] = {
    {1, 1, &Kernels<1, 1>},   {1, 2, &Kernels<1, 2>}, {1, 3, &Kernels<1, 3>},   {1, 4, &Kernels<1, 4>},
    {2, 1, &Kernels<2, 1>},   {2, 3, &Kernels<2, 3>}, {3, 2, &Kernels<3, 2>},   {3, 4, &Kernels<3, 4>},
    {4, 3, &Kernels<4, 3>},   {3, 8, &Kernels<3, 8>}, {8, 3, &Kernels<8, 3>},   {1, 8, &Kernels<1, 8>},
    {5, 8, &Kernels<5, 8>},   {7, 8, &Kernels<7, 8>}, {5, 12, &Kernels<5, 12>}, {5, 4, &Kernels<5, 4>},
    {1, 12, &Kernels<1, 12>},
};

}  // namespace

std::vector<BaselineKernel> BaselineKernelsFor(std::size_t sourceBytes, std::size_t destinationBytes) {
    const std::size_t divisor = std::gcd(sourceBytes, destinationBytes);
    const std::size_t source = sourceBytes / divisor, destination = destinationBytes / divisor;
    for (const Ratio& ratio : kRatios)
        if (ratio.sourceBytes == source && ratio.destinationBytes == destination) return ratio.kernels();
    throw std::runtime_error("no baseline kernel moves " + std::to_string(source) + " to " +
                             std::to_string(destination) + " bytes; add the ratio to BaselineKernels.cpp");
}

}  // namespace kybench

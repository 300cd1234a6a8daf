#ifndef KYIMGLIB_TESTS_SUPPORT_GUARDEDBUFFER_H
#define KYIMGLIB_TESTS_SUPPORT_GUARDEDBUFFER_H

#include <cstddef>
#include <cstdint>
#include <new>
#include <span>

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace support {

/// Bytes between two pages that end the program when anybody touches them:
///
///     | forbidden | slack | data ... | gap | forbidden |      Side::kEnd
///     | forbidden | gap | data ... | slack | forbidden |      Side::kStart
class GuardedBuffer {
public:
    enum class Side { kStart, kEnd };

    GuardedBuffer(std::size_t dataSize, Side side, std::size_t gap) : size(dataSize) {
        const std::size_t page = PageSize();
        const std::size_t accessible = (size + gap + page) / page * page;
        whole = accessible + 2 * page;
        memory = Reserve(whole, page);
        open = std::span(memory + page, accessible);
        bytes = side == Side::kStart ? open.data() + gap : open.data() + accessible - gap - size;
    }
    ~GuardedBuffer() { Free(memory, whole); }
    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;

    std::uint8_t* data() { return bytes; }
    std::span<std::uint8_t> Data() { return {bytes, size}; }

    /// Everything between the forbidden pages, and where the data starts in it.
    std::span<std::uint8_t> Accessible() { return open; }
    std::size_t DataOffset() const { return static_cast<std::size_t>(bytes - open.data()); }

private:
#if defined(_WIN32)
    static std::size_t PageSize() { return 4096; }
    static std::uint8_t* Reserve(std::size_t bytes, std::size_t page) {
        void* reserved = VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS);
        if (reserved == nullptr) throw std::bad_alloc();
        auto* const first = static_cast<std::uint8_t*>(reserved);
        if (VirtualAlloc(first + page, bytes - 2 * page, MEM_COMMIT, PAGE_READWRITE) == nullptr) throw std::bad_alloc();
        return first;
    }
    static void Free(std::uint8_t* reserved, std::size_t) { VirtualFree(reserved, 0, MEM_RELEASE); }
#else
    static std::size_t PageSize() {
        static const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        return page;
    }
    static std::uint8_t* Reserve(std::size_t bytes, std::size_t page) {
        void* mapped = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (mapped == MAP_FAILED) throw std::bad_alloc();
        auto* const first = static_cast<std::uint8_t*>(mapped);
        if (mprotect(first + page, bytes - 2 * page, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
        return first;
    }
    static void Free(std::uint8_t* mapped, std::size_t bytes) { munmap(mapped, bytes); }
#endif

    std::size_t size;
    std::size_t whole;
    std::uint8_t* memory;
    std::span<std::uint8_t> open;
    std::uint8_t* bytes;
};

}  // namespace support

#endif

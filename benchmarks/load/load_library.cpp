// load_library LIBRARY first|again: prints how many nanoseconds it took to load the library, convert a small frame and
// unload it again: the first time in this process, or the second time.
#include <dlfcn.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>

namespace {

void Require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

template <typename Function>
Function* Find(void* library, const char* name) {
    void* const address = dlsym(library, name);
    Require(address != nullptr, name);
    Function* function = nullptr;
    std::memcpy(&function, &address, sizeof function);
    return function;
}

void ConvertFrame(void* library) {
    using GetConverter = const void*(std::int64_t, std::int64_t);
    using ConvertArea =
        std::uint32_t(const void*, const std::uint8_t*, std::uint32_t, std::uint32_t, std::uint8_t*, std::uint32_t,
                      std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t);
    constexpr std::uint32_t width = 16, height = 2;
    const std::uint8_t mosaic[width * height] = {};
    std::uint8_t picture[3 * width * height];
    const void* const converter = Find<GetConverter>(library, "KyPixelTypeFactory_GetConverter")(0x20010, 0x20002);
    Require(converter != nullptr, "the library has no converter");
    const std::uint32_t status = Find<ConvertArea>(library, "KyPixelConverter_ConvertArea")(
        converter, mosaic, width, height, picture, width, height, width, height, 0, 0);
    Require(status == 0, "the conversion failed");
}

void LoadUseAndUnload(const char* path) {
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    Require(library != nullptr, "cannot load the library");
    ConvertFrame(library);
    Require(dlclose(library) == 0, "cannot unload the library");
}

/// Without this, a library that stays in memory would be very fast the second time.
void RequireUnloaded(const char* path) {
    Require(dlopen(path, RTLD_NOW | RTLD_NOLOAD) == nullptr, "the library is still there after it was unloaded");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s LIBRARY first|again\n", argv[0]);
        return 2;
    }
    try {
        RequireUnloaded(argv[1]);
        if (argv[2] == std::string("again")) {
            LoadUseAndUnload(argv[1]);
            RequireUnloaded(argv[1]);
        }
        const auto start = std::chrono::steady_clock::now();
        LoadUseAndUnload(argv[1]);
        const std::chrono::nanoseconds time = std::chrono::steady_clock::now() - start;
        RequireUnloaded(argv[1]);
        std::printf("%lld\n", static_cast<long long>(time.count()));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[1], error.what());
        return 1;
    }
    return 0;
}

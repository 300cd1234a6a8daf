// load_unload LIBRARY COUNT: loads the library COUNT times, converts a frame on two threads and unloads it again.
// Linked to nothing of it, this program sees whether unloading really frees what loading made.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <thread>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

class KyPixelType;
class KyPixelConverter;
class KyRGBFilter;

namespace {

#if defined(_WIN32)
using Handle = HMODULE;
Handle Load(const char* path) { return LoadLibraryA(path); }
bool Unload(Handle library) { return FreeLibrary(library) != 0; }
bool IsLoaded(const char* path) { return GetModuleHandleA(path) != nullptr; }
void* Symbol(Handle library, const char* name) {
    const FARPROC found = GetProcAddress(library, name);
    void* address = nullptr;
    std::memcpy(&address, &found, sizeof address);
    return address;
}
#else
using Handle = void*;
Handle Load(const char* path) { return dlopen(path, RTLD_NOW | RTLD_LOCAL); }
bool Unload(Handle library) { return dlclose(library) == 0; }
bool IsLoaded(const char* path) { return dlopen(path, RTLD_NOW | RTLD_NOLOAD) != nullptr; }
void* Symbol(Handle library, const char* name) { return dlsym(library, name); }
#endif

void Require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

template <typename Function>
Function* Find(Handle library, const char* name) {
    void* const address = Symbol(library, name);
    Require(address != nullptr, name);
    Function* function = nullptr;
    std::memcpy(&function, &address, sizeof function);
    return function;
}

using GetConverter = const KyPixelConverter*(std::int64_t, std::int64_t);
using ConvertAreaFilter = std::uint32_t(const KyPixelConverter*, const KyRGBFilter*, const std::uint8_t*, std::uint32_t,
                                        std::uint32_t, std::uint8_t*, std::uint32_t, std::uint32_t, std::uint32_t,
                                        std::uint32_t, std::uint32_t, std::uint32_t);

/// Whether a Bayer frame of one grey value becomes an RGB picture of it.
bool ConvertsFrame(Handle library, const KyRGBFilter* filter) {
    constexpr std::uint32_t width = 40, height = 6, interpolate = 0x100;
    std::uint8_t mosaic[width * height], picture[3 * width * height] = {};
    std::memset(mosaic, 123, sizeof mosaic);
    const KyPixelConverter* const converter =
        Find<GetConverter>(library, "KyPixelTypeFactory_GetConverter")(0x20010, 0x20002);
    Find<ConvertAreaFilter>(library, "KyPixelConverter_ConvertAreaFilter")(
        converter, filter, mosaic, width, height, picture, width, height, width, height, interpolate, 0);
    return std::count(std::begin(picture), std::end(picture), 123) == sizeof picture;
}

void UseAndUnload(const char* path) {
    const Handle library = Load(path);
    Require(library != nullptr, "cannot load the library");
    KyPixelType* const type = Find<KyPixelType*(std::int64_t)>(library, "KyPixelTypeFactory_CreatePixelType")(0x20010);
    Require(type != nullptr, "no pixel type");
    Find<void(KyPixelType*)>(library, "KyPixelType_Destroy")(type);

    KyRGBFilter* const filter = Find<KyRGBFilter*(std::uint32_t)>(library, "KyRGBFilter_Init")(8);
    bool convertedOnThread = false;
    std::thread([&] { convertedOnThread = ConvertsFrame(library, filter); }).join();
    Require(ConvertsFrame(library, filter) && convertedOnThread, "wrong picture");
    Find<void(KyRGBFilter*)>(library, "KyRGBFilter_Destroy")(filter);

    Require(Unload(library), "cannot unload the library");
    Require(!IsLoaded(path), "the library is still there after it was unloaded");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s LIBRARY COUNT\n", argv[0]);
        return 2;
    }
    try {
        for (int count = std::atoi(argv[2]); count > 0; --count) UseAndUnload(argv[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[1], error.what());
        return 1;
    }
    return 0;
}

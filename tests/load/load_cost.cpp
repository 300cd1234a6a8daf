// load_cost LIBRARY TYPES CONVERTERS [emulated]: measures what loading the library takes, given the lists of what it registers
// meanwhile. Every program that uses the library pays for it, even if it only asks for the version.
#include <tests/support/Sanitizers.h>

#include <cstdio>

#if defined(_WIN32) || defined(__SANITIZE_THREAD__)

// A DLL keeps the operators it was linked with, and the thread sanitizer's library does not let them be replaced.
int main() {
    std::puts("skipped: allocations cannot be counted here");
    return 77;
}

#else

#include <dlfcn.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

std::size_t allocations = 0, allocatedBytes = 0;

void* Allocate(std::size_t size) noexcept {
    ++allocations;
    allocatedBytes += size;
    return std::malloc(size == 0 ? 1 : size);
}

}  // namespace

// They serve the library too.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new(std::size_t size) {
    if (void* const memory = Allocate(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

std::size_t LinesOf(const char* path) {
    std::ifstream file(path);
    std::size_t count = 0;
    for (std::string line; std::getline(file, line);) ++count;
    return count;
}

struct Cost {
    std::size_t allocations = 0, bytes = 0;
    double microseconds = 0;
};

template <typename Work>
Cost CostOf(Work work) {
    const std::size_t allocationsBefore = allocations, bytesBefore = allocatedBytes;
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
    return {allocations - allocationsBefore, allocatedBytes - bytesBefore, time.count()};
}

Cost CostOfLoading(const char* path) {
    void* library = nullptr;
    const Cost cost = CostOf([&] { library = dlopen(path, RTLD_NOW | RTLD_LOCAL); });
    if (library == nullptr || dlclose(library) != 0) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::exit(1);
    }
    return cost;
}

/// What a registry cannot do without: an ordered map with an object for each entry, and as many allocations.
Cost CostOfMap(std::size_t entries, std::size_t allocationsWanted) {
    std::map<std::pair<std::size_t, std::size_t>, std::vector<std::unique_ptr<std::size_t[]>>> map;
    return CostOf([&] {
        const std::size_t each = allocationsWanted / entries - 2;  // beside the map's node and the vector's array
        for (std::size_t i = 0; i < entries; ++i) {
            auto& objects = map[{i * 7919 % entries, i}];
            objects.reserve(each);
            while (objects.size() < each) objects.emplace_back(new std::size_t[6]());
        }
    });
}

bool Check(const char* what, double value, double most) {
    std::printf("%-14s %9.0f, at most %9.0f\n", what, value, most);
    return value <= most;
}

}  // namespace

int main(int argc, char** argv) {
    const bool isEmulated = argc == 5 && argv[4] == std::string("emulated");
    if (argc != 4 && !isEmulated) {
        std::fprintf(stderr, "usage: %s LIBRARY TYPES CONVERTERS [emulated]\n", argv[0]);
        return 2;
    }
    const std::size_t registered = LinesOf(argv[2]) + LinesOf(argv[3]);
    const Cost cost = CostOfLoading(argv[1]);
    if (registered == 0 || cost.allocations < registered) {
        std::fprintf(stderr, "%zu allocations for %zu objects: they were not counted\n", cost.allocations, registered);
        return 1;
    }
    double loading = cost.microseconds, map = 1e9;
    for (int i = 0; i < 40; ++i) {  // the best of many: others use this machine too
        loading = std::min(loading, CostOfLoading(argv[1]).microseconds);
        map = std::min(map, CostOfMap(registered, 5 * registered).microseconds);
    }
    // Each object has itself, its record, its place in the registry and in a list, and a chain its stages. Beside them
    // there are the tables of the default filters, for three channels: words for 8 to 16 bits, and bytes.
    const double filters = 3 * (2 * (256 + 1024 + 4096 + 16384 + 65536) + 5 * 256);
    bool cheap = Check("allocations", static_cast<double>(cost.allocations), 5 * static_cast<double>(registered));
    cheap &= Check("bytes", static_cast<double>(cost.bytes), filters + 300 * static_cast<double>(registered));
    // Besides filling the registry, the loader has its relocations to do. Ten times is for work that grows faster than
    // the registry. (An emulator translates code that runs for the first time, which loading is full of.)
    if (!isEmulated) cheap &= Check("microseconds", loading, 10 * map);
    return cheap ? 0 : 1;
}

#endif

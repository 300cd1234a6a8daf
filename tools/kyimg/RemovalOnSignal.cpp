#include "RemovalOnSignal.h"

#if defined(_WIN32)

namespace kyimg {

RemovalOnSignal::RemovalOnSignal(const std::filesystem::path&) {}
RemovalOnSignal::~RemovalOnSignal() = default;

}  // namespace kyimg

#else

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <climits>
#include <cstring>
#include <mutex>

namespace kyimg {

namespace {

/// A handler may neither lock nor allocate: names are kept in static memory.
struct Slot {
    enum State { kFree, kTaken, kReady };

    std::atomic<int> state = kFree;
    char path[PATH_MAX];
};
static_assert(std::atomic<int>::is_always_lock_free);
Slot slots[64];

extern "C" void RemoveFiles(int signal) {
    for (const Slot& slot : slots)
        if (slot.state == Slot::kReady) unlink(slot.path);
    raise(signal);  // whose action is the default one again
}

void InstallHandlers() {
    struct sigaction action = {};
    action.sa_handler = RemoveFiles;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction former = {};
        sigaction(signal, nullptr, &former);
        if (former.sa_handler == SIG_DFL) sigaction(signal, &action, nullptr);
    }
}

}  // namespace

RemovalOnSignal::RemovalOnSignal(const std::filesystem::path& path) {
    static std::once_flag installed;
    std::call_once(installed, InstallHandlers);
    const std::string& name = path.native();
    if (name.size() >= sizeof Slot::path) return;
    for (Slot& candidate : slots) {
        int expected = Slot::kFree;
        if (!candidate.state.compare_exchange_strong(expected, Slot::kTaken)) continue;
        std::memcpy(candidate.path, name.c_str(), name.size() + 1);
        candidate.state = Slot::kReady;
        slot = &candidate;
        return;
    }
}

RemovalOnSignal::~RemovalOnSignal() {
    if (slot != nullptr) static_cast<Slot*>(slot)->state = Slot::kFree;
}

}  // namespace kyimg

#endif

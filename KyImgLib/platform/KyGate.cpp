#include <KyImgLib/platform/KyGate.h>

#include <mutex>

struct KyGate::Lock {
    std::recursive_mutex mutex;
};

KyGate::KyGate() : lock(new Lock) {}

KyGate::~KyGate() { delete lock; }

void KyGate::Enter() { lock->mutex.lock(); }

void KyGate::Leave() { lock->mutex.unlock(); }

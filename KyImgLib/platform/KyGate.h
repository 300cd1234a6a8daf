#ifndef KYIMGLIB_PLATFORM_KYGATE_H
#define KYIMGLIB_PLATFORM_KYGATE_H

#include <KyImgLib/platform/KyObject.h>

/// A recursive mutual-exclusion lock: the thread that is inside may enter again and leaves as often as it entered.
class KYIMGLIB_API KyGate : public KyObject {
public:
    KyGate();
    ~KyGate();
    KyGate(const KyGate&) = delete;
    KyGate& operator=(const KyGate&) = delete;

    /// Waits until no other thread is inside.
    void Enter();
    /// Must be called by the thread that entered.
    void Leave();

private:
    struct Lock;
    Lock* lock;
};

/// Keeps a gate entered for the life of the guard, exceptions included.
class KyGateGuard {
public:
    explicit KyGateGuard(KyGate& guarded) : gate(guarded) { gate.Enter(); }
    ~KyGateGuard() { gate.Leave(); }
    KyGateGuard(const KyGateGuard&) = delete;
    KyGateGuard& operator=(const KyGateGuard&) = delete;

private:
    KyGate& gate;
};

#endif

#include <KyImgLib/platform/KyGate.h>
#include <KyImgLib/platform/KyString.h>
#include <KyImgLib/platform/KyThread.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace {

TEST(String, OwnsItsText) {
    char text[] = "camera";
    KyString original(text);
    text[0] = 'X';
    KyString copy(original);
    copy += " 7";
    copy += nullptr;
    copy += copy.c_str();
    EXPECT_STREQ("camera", original.c_str());
    EXPECT_STREQ("camera 7camera 7", copy.c_str());
    EXPECT_EQ(16u, copy.GetLength());

    original = copy;
    EXPECT_STREQ(copy.c_str(), original.c_str());
    const KyString moved(std::move(copy));
    EXPECT_STREQ("camera 7camera 7", moved.c_str());
    EXPECT_STREQ("", KyString().c_str());
    EXPECT_STREQ("", KyString(nullptr).c_str());
    EXPECT_EQ(0u, KyString("").GetLength());
}

TEST(String, FormatsLikeSnprintf) {
    char buffer[8] = "unused.";
    EXPECT_EQ(6, KySprintf(buffer, sizeof buffer, "%u-bits", 8u));
    EXPECT_STREQ("8-bits", buffer);
    EXPECT_EQ(11, KySprintf(buffer, sizeof buffer, "%d and %d", 123, 456));
    EXPECT_STREQ("123 and", buffer);
}

TEST(GateThread, LetsOneThreadInAsOftenAsItEnters) {
    KyGate gate;
    int inside = 0, most = 0, total = 0;
    support::RunOnThreads(8, [&](int) {
        for (int round = 0; round < 500; ++round) {
            const KyGateGuard outer(gate);
            most = std::max(most, ++inside);
            {
                const KyGateGuard inner(gate);
                ++total;
            }
            --inside;
        }
    });
    EXPECT_EQ(1, most);
    EXPECT_EQ(4000, total);
}

TEST(ThreadID, IsUniqueAmongLivingThreads) {
    constexpr int threads = 8;
    std::vector<std::uint32_t> ids(threads);
    support::MeetingPoint allKnown(threads);
    support::RunOnThreads(threads, [&](int thread) {
        ids[static_cast<std::size_t>(thread)] = KyThread::GetCurrentThreadID();
        allKnown.Wait();
        EXPECT_EQ(ids[static_cast<std::size_t>(thread)], KyThread::GetCurrentThreadID());
    });
    std::set<std::uint32_t> different(ids.begin(), ids.end());
    different.insert(KyThread::GetCurrentThreadID());
    EXPECT_EQ(9u, different.size());
}

}  // namespace

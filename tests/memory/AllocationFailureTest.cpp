// What happens when memory runs out, at each single allocation of an operation.
#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>

#include <tests/support/Sanitizers.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

// The operators below serve the library too, but a DLL keeps those it was linked with. The thread sanitizer's library
// does not let itself be replaced.

namespace {

constexpr int kNeverFail = -1;
int allocationsLeft = kNeverFail;
bool hasFailed = false;

}  // namespace

#if !defined(_WIN32) && !defined(__SANITIZE_THREAD__)

static void* Allocate(std::size_t size) noexcept {
    if (allocationsLeft == 0) {
        hasFailed = true;
        return nullptr;
    }
    if (allocationsLeft > 0) --allocationsLeft;
    return std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new(std::size_t size) {
    if (void* const memory = Allocate(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

#endif

namespace {

class OutOfMemory : public testing::Test {
protected:
    void SetUp() override {
#if defined(_WIN32)
        GTEST_SKIP() << "a DLL keeps the allocation it was linked with";
#elif defined(__SANITIZE_THREAD__)
        GTEST_SKIP() << "the thread sanitizer keeps its own allocation";
#endif
    }
};

using Factory = KyPixelTypeFactory;

/// Runs `operation(n)` with memory for n allocations, for n = 0, 1, ... until that is enough for all of them, and hands
/// what it returned to `check(n, result)` with memory for everything.
template <typename Operation, typename Check>
void ForEachFailure(Operation operation, Check check) {
    for (int n = 0; !testing::Test::HasFailure(); ++n) {
        hasFailed = false;
        allocationsLeft = n;
        auto result = operation(n);
        allocationsLeft = kNeverFail;
        check(n, result);
        if (!hasFailed) return;
    }
}

/// The operation's status, or that of memory that has run out when it throws.
template <typename Operation>
std::uint32_t StatusOf(Operation operation) {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        return KY_STATUS_OUT_OF_MEMORY;
    }
}

std::uint32_t ExpectedStatus() { return hasFailed ? KY_STATUS_OUT_OF_MEMORY : KY_STATUS_SUCCESS; }

TEST_F(OutOfMemory, NewObjectsAreNull) {
    const auto isNull = [](int n, const auto& created) {
        EXPECT_EQ(hasFailed, created == nullptr) << "allocation " << n;
    };
    const KyBayerRGB8 type;
    ForEachFailure([&](int) { return std::unique_ptr<KyPixelType>(type.Clone()); }, isNull);
    ForEachFailure([](int) { return std::unique_ptr<KyPixelType>(KyPixelTypeFactory_CreatePixelType(0x20010)); },
                   isNull);
    ForEachFailure([](int) { return std::unique_ptr<KyRGBFilter>(KyRGBFilter_Init(10)); }, isNull);
}

TEST_F(OutOfMemory, TypesAreRegisteredWhollyOrNotAtAll) {
    const auto id = [](int n) -> std::int64_t { return 0x0021F600 + n; };
    ForEachFailure(
        [&](int n) {
            const KyPixelType type(id(n), 8, 1, false);
            return Factory::RegisterPixelType(id(n), &type, "a name that is too long for any small buffer");
        },
        [&](int n, std::uint32_t status) {
            EXPECT_EQ(ExpectedStatus(), status) << "allocation " << n;
            EXPECT_EQ(!hasFailed, Factory::HasPixelType(id(n))) << "allocation " << n;
            EXPECT_EQ(!hasFailed, Factory::HasConverter(id(n), id(n))) << "allocation " << n;
            EXPECT_EQ(!hasFailed, Factory::HasConverter(id(n), KyDeinterlacedTypeID(id(n)))) << "allocation " << n;
        });
}

TEST_F(OutOfMemory, ConvertersAreRegisteredOrReported) {
    static const KyIdentityConverter converter(0x0001F700, 0x0001F701, 1, 1);
    ForEachFailure([](int) { return Factory::RegisterPixelConverter(0x0001F700, 0x0001F702, &converter); },
                   [](int n, std::uint32_t status) {
                       EXPECT_EQ(ExpectedStatus(), status) << "allocation " << n;
                       EXPECT_EQ(!hasFailed, Factory::HasConverter(0x0001F700, 0x0001F702));
                   });
}

TEST_F(OutOfMemory, ChainsThatFailAreNotRegistered) {
    static KyIdentityConverter first(0x0001F710, 0x0001F711, 1, 1), second(0x0001F711, 0x0001F712, 1, 1);
    static std::unique_ptr<KyComplexConverter> chain;
    ForEachFailure(
        [](int) {
            return StatusOf([] {
                chain.reset(new KyComplexConverter(&first, &second));
                return std::uint32_t{KY_STATUS_SUCCESS};
            });
        },
        [](int n, std::uint32_t status) {
            const bool isRegistered = Factory::HasConverter(0x0001F710, 0x0001F712);
            EXPECT_TRUE(status == KY_STATUS_SUCCESS || !isRegistered) << "allocation " << n;
        });
}

TEST_F(OutOfMemory, ConversionsReportItAndWorkAgainLater) {
    const std::uint8_t mosaic[4] = {9, 9, 9, 9};
    std::uint8_t picture[12];
    KyIdentityConverter copy(0x20010, 0x20010, 1, 1);
    KyBayerRGB8ToRGB24 toRGB(0x20010, false, 0, 0);
    const KyRGBFilter filter(8);
    const auto check = [&](int n, std::uint32_t status) {
        if (status == KY_STATUS_OUT_OF_MEMORY) {
            EXPECT_TRUE(hasFailed);
        } else {
            EXPECT_EQ(KY_STATUS_SUCCESS, status) << "allocation " << n;
            EXPECT_EQ(12, std::count(picture, picture + 12, 9)) << "allocation " << n;
        }
        std::fill(picture, picture + 12, std::uint8_t{0});
    };
    ForEachFailure(
        [&](int) {
            return StatusOf([&] {
                // A new chain each time, without the buffer of an earlier conversion.
                const KyComplexConverter chain(&copy, &toRGB);
                return chain.Convert(filter, mosaic, 2, 2, picture, 2, 2, 2, 2, 0, 0);
            });
        },
        check);
    ForEachFailure(
        [&](int) {
            return KyPixelConverter_ConvertAreaFilter(&toRGB, &filter, mosaic, 2, 2, picture, 2, 2, 2, 2, 0, 0);
        },
        check);
}

TEST_F(OutOfMemory, NamesReportItAndAreFoundLater) {
    for (const auto& [name, expected] : {std::pair("BayerRG8", std::uint32_t{KY_STATUS_SUCCESS}),
                                         {"no bits of a type", std::uint32_t{KY_STATUS_BAD_ARGUMENT}}}) {
        std::int64_t type = 0;
        ForEachFailure([&, named = name](int) { return KyPixelFormat::Find(named, type); },
                       [&, status = expected](int n, std::uint32_t returned) {
                           EXPECT_EQ(hasFailed ? std::uint32_t{KY_STATUS_OUT_OF_MEMORY} : status, returned)
                               << "allocation " << n;
                       });
    }
}

TEST_F(OutOfMemory, ImagesReportItAndWorkAgainLater) {
    std::uint8_t mosaic[9] = {9, 9, 9, 9, 9, 9, 9, 9, 9}, picture[30];
    const KyImage source = {0x20010, 3, 3, mosaic, sizeof mosaic, 0, 0};
    const KyImage destination = {KY_RGB24, 3, 3, picture, sizeof picture, 10, 0};
    KyExecutor executor = {};
    executor.threads = 2;
    executor.run = [](void*, std::uint32_t tasks, void (*task)(void*, std::uint32_t), void* state) {
        for (std::uint32_t i = 0; i < tasks; ++i) task(state, i);
    };
    KyConversion conversion = {};
    conversion.structSize = sizeof conversion;
    conversion.flags = KY_FLAG_BAYER_INTERPOLATE;
    for (const bool parallel : {false, true})
        ForEachFailure(
            [&](int) {
                return StatusOf([&] {
                    // Chains keep their buffers, so this is a new one with none.
                    const KyIdentityConverter copy(0x20010, 0x20010, 1, 1);
                    const KyBayerRGB8ToRGB24 toRGB(0x20010, false, 0, 0);
                    const KyComplexConverter chain(&copy, &toRGB);
                    const KyImageConverter converter(chain);
                    return parallel ? converter.ConvertParallel(source, destination, &conversion, &executor)
                                    : converter.Convert(source, destination, &conversion);
                });
            },
            [&](int n, std::uint32_t status) {
                EXPECT_EQ(ExpectedStatus(), status) << "allocation " << n;
                EXPECT_TRUE(hasFailed || std::count(picture, picture + 29, 9) == 27);
                std::fill(picture, picture + 30, std::uint8_t{0});
            });
}

}  // namespace

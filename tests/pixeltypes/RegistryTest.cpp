// The registry with types and converters of an application's own, whose IDs are new in each test.
#include <KyImgLib/KyImgLib.h>
#include <tests/support/NullReference.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using Factory = KyPixelTypeFactory;

class ApplicationConverter : public KyPixelConverter {
public:
    ApplicationConverter(std::int64_t source, std::int64_t destination)
        : KyPixelConverter(source, destination, 1, 1, 1, 1) {}
};

/// Converters stay in the registry, so they live as long as the program.
const KyPixelConverter& MakeConverter(std::int64_t source, std::int64_t destination) {
    static std::vector<std::unique_ptr<KyPixelConverter>> converters;
    converters.push_back(std::make_unique<ApplicationConverter>(source, destination));
    return *converters.back();
}

std::vector<std::int64_t> DestinationsOf(std::int64_t source) {
    std::vector<std::int64_t> destinations;
    for (std::int64_t id = 0; Factory::EnumConverterFrom(static_cast<std::uint32_t>(destinations.size()), source, id);)
        destinations.push_back(id);
    return destinations;
}

std::vector<std::int64_t> SourcesOf(std::int64_t destination) {
    std::vector<std::int64_t> sources;
    for (std::int64_t id = 0; Factory::EnumConverterTo(static_cast<std::uint32_t>(sources.size()), destination, id);)
        sources.push_back(id);
    return sources;
}

TEST(Registry, FirstRegistrationOfATypeStays) {
    constexpr std::int64_t id = 0x0001FA01;
    char name[] = "Application's type";
    EXPECT_EQ(KY_STATUS_SUCCESS,
              Factory::RegisterPixelType(id, std::make_unique<KyPixelType>(id, 11, 2, false).get(), name));
    name[0] = 'X';
    const KyPixelType other(id, 12, 3, false);
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, Factory::RegisterPixelType(id, &other, "Another name"));

    EXPECT_TRUE(Factory::HasPixelType(id));
    EXPECT_STREQ("Application's type", Factory::GetPixelTypeName(id));
    EXPECT_EQ(11, Factory::GetPixelType(id).GetPixelBitSize());
    EXPECT_EQ(Factory::FindPixelType(id), &Factory::GetPixelType(id));
    const std::unique_ptr<KyPixelType> created(Factory::CreatePixelType(id));
    EXPECT_NE(Factory::FindPixelType(id), created.get());
    EXPECT_EQ(11, created->GetPixelBitSize());

    constexpr std::int64_t unnamed = 0x0042FA02;
    const KyPixelType bayer(unnamed, 10, 2, true);
    Factory::RegisterPixelType(unnamed, &bayer, nullptr);
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, Factory::RegisterPixelType(unnamed, &bayer, "a name at last"));
    EXPECT_STREQ("Bayer RGB 10-bits, Packed", Factory::GetPixelTypeName(unnamed));
}

TEST(Registry, TellsAbsenceWithoutFailing) {
    constexpr std::int64_t id = 0x0001FAFF;
    EXPECT_FALSE(Factory::HasPixelType(id));
    EXPECT_EQ(nullptr, Factory::FindPixelType(id));
    EXPECT_EQ(nullptr, support::AddressOf(Factory::GetPixelType(id)));
    EXPECT_EQ(nullptr, Factory::CreatePixelType(id));
    EXPECT_STREQ("Unregistered pixel type", Factory::GetPixelTypeName(id));
    EXPECT_FALSE(Factory::HasConverter(id, id));
    EXPECT_EQ(nullptr, Factory::FindConverter(id, 0x20002));
    EXPECT_EQ(nullptr, support::AddressOf(Factory::GetConverter(id, 0x20002)));

    std::int64_t untouched = 5, untouchedToo = 6;
    EXPECT_FALSE(Factory::EnumConverterFrom(0, id, untouched));
    EXPECT_FALSE(Factory::EnumConverterTo(0, id, untouched));
    EXPECT_FALSE(Factory::EnumConverters(1000000, untouched, untouchedToo));
    EXPECT_FALSE(Factory::EnumPixelTypes(1000000, untouched));
    EXPECT_EQ(5, untouched);
    EXPECT_EQ(6, untouchedToo);
}

TEST(Registry, TypesBringTheirIdentityConverters) {
    constexpr std::int64_t id = 0x0021FA03, plain = 0x0001FA03;
    const KyPixelConverter& own = MakeConverter(id, id);
    const KyPixelType type(id, 8, 5, false);
    EXPECT_EQ(KY_STATUS_SUCCESS, Factory::RegisterPixelType(id, &type, nullptr));
    EXPECT_EQ(&own, Factory::FindConverter(id, id)) << "a pair that is taken stays";
    ASSERT_TRUE(Factory::HasConverter(id, plain)) << "though the other type is unknown";
    EXPECT_EQ(5u, Factory::FindConverter(id, plain)->GetSourceByteSize());
    EXPECT_EQ(5u, Factory::FindConverter(id, plain)->GetDestinationByteSize());
    EXPECT_FALSE(Factory::HasConverter(plain, plain));
    EXPECT_EQ((std::vector<std::int64_t>{plain, id}), DestinationsOf(id));
}

TEST(Registry, FirstConverterOfAPairStaysUnlessReplaced) {
    constexpr std::int64_t source = 0x0001FA04, destination = 0x0002FA04;
    const KyPixelConverter& first = MakeConverter(source, destination);
    const KyPixelConverter& second = MakeConverter(source, destination);
    EXPECT_EQ(&first, &Factory::GetConverter(source, destination));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, Factory::RegisterPixelConverter(second));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, Factory::RegisterPixelConverter(source, destination, &second));
    EXPECT_EQ(&first, Factory::FindConverter(source, destination));

    const KyPixelConverter* previous = nullptr;
    EXPECT_EQ(KY_STATUS_SUCCESS, Factory::ReplacePixelConverter(second, &previous));
    EXPECT_EQ(&first, previous);
    EXPECT_EQ(&second, Factory::FindConverter(source, destination));
    EXPECT_EQ(KY_STATUS_SUCCESS, Factory::ReplacePixelConverter(first, nullptr));
    EXPECT_EQ(&first, Factory::FindConverter(source, destination));
}

/// Claims a pair only after it has been constructed, so that it registers nothing by itself.
class LateConverter : public ApplicationConverter {
public:
    LateConverter(std::int64_t sourceId, std::int64_t destinationId)
        : ApplicationConverter(0x20010, 0x20002), source(sourceId), destination(destinationId) {}
    const std::int64_t& GetSourceType() const override { return source; }
    const std::int64_t& GetDestinationType() const override { return destination; }

private:
    std::int64_t source, destination;
};

TEST(Registry, RegistersUnderTheTypesAConverterTells) {
    constexpr std::int64_t source = 0x0001FA05, a = 0x0002FA05, b = 0x0003FA05, c = 0x0004FA05;
    static const LateConverter toA(source, a), toB(source, b);
    const KyPixelConverter* previous = &toA;
    EXPECT_EQ(KY_STATUS_SUCCESS, Factory::ReplacePixelConverter(toA, &previous));
    EXPECT_EQ(nullptr, previous) << "the pair was free";
    EXPECT_EQ(KY_STATUS_SUCCESS, Factory::RegisterPixelConverter(toB));
    EXPECT_EQ(KY_STATUS_SUCCESS, Factory::RegisterPixelConverter(source, c, &toB));
    EXPECT_EQ((std::vector<std::int64_t>{a, b, c}), DestinationsOf(source));
    EXPECT_EQ(&toA, Factory::FindConverter(source, a));
    EXPECT_EQ(&toB, Factory::FindConverter(source, c));
}

TEST(Registry, ClonesTheConvertersOfASource) {
    constexpr std::int64_t source = 0x0001FA06, renamed = 0x0001FA07, a = 0x0002FA06, b = 0x0002FA07, c = 0x0002FA08;
    EXPECT_EQ(KY_STATUS_NOTHING_CLONED, Factory::ClonePixelConverters(source, renamed)) << "there are none";
    const KyPixelConverter& toB = MakeConverter(source, b);
    MakeConverter(source, c);
    MakeConverter(source, a);
    const KyPixelConverter& own = MakeConverter(renamed, c);
    EXPECT_EQ(KY_STATUS_SUCCESS, Factory::ClonePixelConverters(source, renamed));
    EXPECT_EQ((std::vector<std::int64_t>{a, b, c}), DestinationsOf(renamed));
    EXPECT_EQ(&toB, Factory::FindConverter(renamed, b));
    EXPECT_EQ(&own, Factory::FindConverter(renamed, c));
    EXPECT_EQ(KY_STATUS_NOTHING_CLONED, Factory::ClonePixelConverters(source, renamed));
    EXPECT_EQ(KY_STATUS_NOTHING_CLONED, Factory::ClonePixelConverters(source, source));
    EXPECT_EQ((std::vector<std::int64_t>{source, renamed}), SourcesOf(b));
}

TEST(Registry, CountsAndCreatesByAttributes) {
    constexpr std::int64_t low = 0x0092FA0C, high = 0x0092FA0D;
    const auto count = [](bool isBayer) {
        return Factory::CountPixelTypes(77, 0x20000, true, false, false, true, 0, isBayer);
    };
    const auto create = [](std::uint32_t index) {
        const std::unique_ptr<KyPixelType> type(
            Factory::CreatePixelType(77, 0x20000, true, false, false, true, 0, false, index));
        return type == nullptr ? 0 : type->GetTypeID();
    };
    EXPECT_EQ(0, create(0));
    const KyPixelType highType(high, 77, 1, false), lowType(low, 77, 1, false);
    Factory::RegisterPixelType(high, &highType, "high");
    Factory::RegisterPixelType(low, &lowType, "low");
    EXPECT_EQ(2u, count(false));
    EXPECT_EQ(0u, count(true));
    EXPECT_EQ(low, create(0));
    EXPECT_EQ(high, create(1));
    EXPECT_EQ(0, create(2));
}

TEST(RegistryThread, RegistersAndLooksUpOnManyThreads) {
    constexpr int threads = 8, each = 20;
    std::vector<int> registered(threads);
    support::RunOnThreads(threads, [&](int thread) {
        for (int i = 0; i < each; ++i) {
            const std::int64_t id = 0x0021F000 + i;  // every thread wants the same ones
            const KyPixelType type(id, 8, 1, false);
            if (Factory::RegisterPixelType(id, &type, nullptr) == KY_STATUS_SUCCESS)
                ++registered[static_cast<std::size_t>(thread)];
            EXPECT_STREQ("Grayscale 8-bits, Interlaced", Factory::GetPixelTypeName(id));
            EXPECT_EQ(2u, DestinationsOf(id).size());
            EXPECT_NE(nullptr, Factory::FindConverter(0x20010, 0x20002));
        }
    });
    int sum = 0;
    for (const int count : registered) sum += count;
    EXPECT_EQ(each, sum);
}

}  // namespace

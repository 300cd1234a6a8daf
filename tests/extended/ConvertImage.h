#ifndef KYIMGLIB_TESTS_EXTENDED_CONVERTIMAGE_H
#define KYIMGLIB_TESTS_EXTENDED_CONVERTIMAGE_H

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>
#include <tests/support/GuardedBuffer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

inline std::size_t ImageSize(std::int64_t type, std::uint32_t width, std::uint32_t height) {
    const KyImage image = {type, width, height, nullptr, 0, 0, 0};
    std::size_t size = 0;
    EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&image, &size)) << KyImage_GetError();
    return size;
}

/// From and to buffers that no byte is read or written behind.
inline Bytes ConvertImage(std::int64_t from, std::int64_t to, const Bytes& bytes, std::uint32_t width,
                          std::uint32_t height, std::uint32_t flags = 0, const KyRGBFilter* filter = nullptr) {
    constexpr auto kEnd = support::GuardedBuffer::Side::kEnd;
    support::GuardedBuffer source(bytes.size(), kEnd, 0), result(ImageSize(to, width, height), kEnd, 0);
    std::copy(bytes.begin(), bytes.end(), source.data());
    const KyImage image = {from, width, height, source.data(), bytes.size(), 0, 0};
    const KyImage destination = {to, width, height, result.data(), result.Data().size(), 0, 0};
    KyConversion conversion = {};
    conversion.structSize = sizeof conversion;
    conversion.flags = flags;
    conversion.filter = filter;
    EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&image, &destination, &conversion)) << KyImage_GetError();
    return {result.Data().begin(), result.Data().end()};
}

#endif

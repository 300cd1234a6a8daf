#ifndef KYIMGLIB_TESTS_SUPPORT_RANDOM_H
#define KYIMGLIB_TESTS_SUPPORT_RANDOM_H

#include <cstdint>
#include <random>
#include <vector>

namespace support {

/// The same sequence on every platform: the distributions of <random> differ between standard libraries.
class Random {
public:
    explicit Random(std::uint32_t seed) : engine(seed) {}

    std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(engine()) % limit; }
    double Real(double limit) { return limit * static_cast<double>(engine()) / 4294967296.0; }

    template <typename Container>
    const auto& Pick(const Container& choices) {
        return choices[Below(static_cast<std::uint32_t>(choices.size()))];
    }

    template <typename Bytes>
    void Fill(Bytes& bytes) {
        std::uint32_t number = 0, left = 0;
        for (auto& byte : bytes) {
            if (left == 0) number = static_cast<std::uint32_t>(engine());
            left = (left + 3) % 4;
            byte = static_cast<std::uint8_t>(number >> 8 * left);
        }
    }

    std::vector<std::uint8_t> Bytes(std::size_t count) {
        std::vector<std::uint8_t> bytes(count);
        Fill(bytes);
        return bytes;
    }

private:
    std::mt19937 engine;
};

}  // namespace support

#endif

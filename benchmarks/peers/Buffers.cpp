#include "Buffers.h"

#include <KyImgLib/KyImgLibC.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <stdexcept>

namespace kybench {

namespace {

/// Bytes of eight samples that may be 1.
std::uint64_t MaskOf(Samples samples) {
    switch (samples) {
        case Samples::kBytes: return ~std::uint64_t{0};
        case Samples::kWords12: return 0x0FFF0FFF0FFF0FFF;
        case Samples::kWords10BigEndian: return 0xFF03FF03FF03FF03;
    }
    return 0;
}

}  // namespace

std::size_t FrameBytes(std::int64_t type, Size size) {
    const KyImage image = {type, size.width, size.height, nullptr, 0, 0, 0};
    std::size_t bytes = 0;
    if (KyImage_GetSize(&image, &bytes) != KY_STATUS_SUCCESS) throw std::runtime_error(KyImage_GetError());
    return bytes;
}

Buffers::Buffers(const std::vector<const Operation*>& operations, const std::vector<Size>& sizes, bool hasOthers) {
    constexpr std::size_t kScratchBytes = 8;
    const auto grow = [](Buffer& buffer, std::size_t bytes) {
        buffer.resize(std::max(buffer.size(), bytes / sizeof(Block) + 1));
    };
    for (const Operation* const operation : operations)
        for (const Size size : sizes) {
            grow(sources[static_cast<std::size_t>(operation->samples)], FrameBytes(operation->source, size));
            grow(destination, FrameBytes(operation->destination, size));
            grow(arranged, hasOthers ? FrameBytes(operation->source, size) : 0);
            grow(scratch, hasOthers ? kScratchBytes * size.GetPixelCount() : 0);
        }
    std::mt19937_64 random;
    for (std::size_t kind = 0; kind < sources.size(); ++kind)
        for (Block& block : sources[kind])
            for (std::size_t i = 0; i < sizeof block; i += sizeof(std::uint64_t)) {
                const std::uint64_t bits = random() & MaskOf(static_cast<Samples>(kind));
                std::memcpy(block.bytes + i, &bits, sizeof bits);
            }
}

Work Buffers::MakeWork(const Operation& operation, Size size, const Contender* contender) {
    Work work = {BytesOf(sources[static_cast<std::size_t>(operation.samples)]),
                 BytesOf(destination),
                 BytesOf(scratch),
                 size.width,
                 size.height,
                 FrameBytes(operation.source, size),
                 FrameBytes(operation.destination, size)};
    if (contender != nullptr && contender->arrange != nullptr) {
        contender->arrange(work, BytesOf(arranged));
        work.source = BytesOf(arranged);
    }
    return work;
}

}  // namespace kybench

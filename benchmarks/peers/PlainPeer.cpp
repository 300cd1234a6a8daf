#include "Peer.h"
#include "PlainLoops.h"

#include <string_view>

namespace kybench {

namespace {

const PlainLoop* LoopsOf(InstructionSet set) {
    switch (set) {
        case InstructionSet::kSSE4: return kPlainLoopsV2;
        case InstructionSet::kAVX2: return kPlainLoopsV3;
        case InstructionSet::kAVX512: return kPlainLoopsV4;
    }
    return kPlainLoopsV2;
}

void Run(const PlainLoop& loop, const Work& work) {
    const PlainImage image = {work.source, work.destination, work.scratch, work.width, work.height, Tables()};
    loop.convert(&image);
}

}  // namespace

Peer MakePlainLoops(InstructionSet set) {
    Peer peer{"plain C", true, {}};
    for (const PlainLoop* loop = LoopsOf(set); loop->operation != nullptr; ++loop)
        peer.contenders.push_back({loop->operation, [loop](const Work& work) { Run(*loop, work); }});
    return peer;
}

std::function<void(const Work&)> PlainLoopOf(InstructionSet set, const char* operation) {
    for (const PlainLoop* loop = LoopsOf(set); loop->operation != nullptr; ++loop)
        if (loop->operation == std::string_view(operation)) return [loop](const Work& work) { Run(*loop, work); };
    return nullptr;
}

}  // namespace kybench

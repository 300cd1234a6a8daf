#ifndef KYBENCH_PEERS_PEER_H
#define KYBENCH_PEERS_PEER_H

#include "Operations.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kybench {

/// Instruction sets that all contenders are held to.
enum class InstructionSet { kSSE4, kAVX2, kAVX512 };

/// What is to be converted: all of an image, once. Buffers are 64-byte aligned and without padding.
struct Work {
    const std::uint8_t* source;
    std::uint8_t* destination;
    std::uint8_t* scratch;  ///< eight bytes a pixel, for libraries that need two steps
    std::uint32_t width;
    std::uint32_t height;
    std::size_t sourceBytes;
    std::size_t destinationBytes;

    int GetWidth() const { return static_cast<int>(width); }
    int GetHeight() const { return static_cast<int>(height); }
    std::size_t GetPixelCount() const { return std::size_t{width} * height; }
};

/// How a peer does an operation.
struct Contender {
    const char* operation;
    std::function<void(const Work&)> convert;
    /// Writes B, G, R where the operation has R, G, B: there is no function for the other order.
    bool swapsRedBlue = false;
    /// Not null: the peer has the same pixels in another layout, written once before the clock starts.
    void (*arrange)(const Work& original, std::uint8_t* arranged) = nullptr;
    std::uint32_t cores = 0;  ///< that it may use; 0 is a call that uses one thread anyway
};

/// Who converts: the library, another one, or the plain loops.
struct Peer {
    std::string name;
    bool isOther;  ///< not the library itself
    std::vector<Contender> contenders;
};

/// The library as the fastest call has it, on one thread: the area form of a converter.
Peer MakeOurs();

/// The library on a number of cores, as applications convert large images: KyImage_ConvertParallel.
Peer MakeOurs(std::uint32_t threads);

/// For a CPU level of the library; throws std::runtime_error when peers have nothing like it.
InstructionSet InstructionSetOf(const std::string& level);

/// Hold another library to an instruction set, for all of the process, and tell what it can do.
///@{
Peer MakeLibyuv(InstructionSet set);
Peer MakeOpenCV(InstructionSet set);
Peer MakeSwscale(InstructionSet set);
Peer MakePlainLoops(InstructionSet set);
///@}

/// One of the plain loops, by name.
std::function<void(const Work&)> PlainLoopOf(InstructionSet set, const char* name);

/// OpenCV reads from the environment which instructions to leave out, as it is loaded. Starts the program anew, with what
/// `set` takes in the environment, unless it is there.
void RestrictOpenCV(InstructionSet set, char** argv);

}  // namespace kybench

#endif

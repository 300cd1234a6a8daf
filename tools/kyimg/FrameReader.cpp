#include "FrameReader.h"

#include "Errors.h"
#include "SizeHints.h"

#include <fmt/format.h>

#include <algorithm>

namespace kyimg {

FrameReader::FrameReader(const ConvertOptions& options, const SourceFrame& wantedSource, const FrameRange& wantedRange,
                         const std::string& hint)
    : source(wantedSource), range(wantedRange), severalHint(hint), input(options.input) {
    if (options.skipBytes > 0) input.Skip(options.skipBytes);
    if (const auto available = input.GetRemainingSize()) CheckInputSize(*available);
}

void FrameReader::CheckInputSize(std::uint64_t available) const {
    const std::uint64_t needed = source.GetFileBytes();
    const std::uint64_t whole = available / needed;
    if (range.last == FrameRange::kNoEnd) {
        if (available % needed != 0 || whole == 0)
            throw Failure(fmt::format("input holds {} bytes, which is no whole number of frames: {} needs {} each",
                                      available, source.Describe(), needed));
    } else if (range.mayBeMore) {
        if (whole < range.last)
            throw Failure(fmt::format("input holds {} bytes, frame {} of {} ends at {}", available, range.last,
                                      source.Describe(), range.last * needed));
    } else if (available != needed) {
        const bool severalFrames = whole > 1 && available % needed == 0;
        throw Failure(fmt::format("frame holds {} bytes, {} needs {}{}{}", available, source.Describe(), needed,
                                  severalFrames ? fmt::format(" (for {} frames give {})", whole, severalHint) : "",
                                  ExplainSize(source, available)));
    }
}

bool FrameReader::Next() {
    while (number < range.last) {
        ++number;
        if (!Read()) return false;
        if (number >= range.first) return true;
    }
    return false;
}

/// False at the end of an input that may end here.
bool FrameReader::Read() {
    const std::uint64_t needed = source.GetFileBytes();
    const std::uint64_t held = Fill();
    if (held == 0 && number > 1 && range.last == FrameRange::kNoEnd) return false;
    if (held < needed)
        throw Failure(fmt::format("frame {}holds {} bytes, {} needs {}",
                                  range.mayBeMore || range.last > 1 ? fmt::format("{} ", number) : "", held,
                                  source.Describe(), needed));

    std::uint8_t next = 0;
    if (!range.mayBeMore && range.IsSingle() && input.Read(&next, 1) != 0)
        throw Failure(fmt::format("frame holds more than the {} bytes that {} needs (for several give {})", needed,
                                  source.Describe(), severalHint));
    return true;
}

/// Reads a frame, and returns how many bytes there were. The buffer grows with what comes: a mistyped size is no reason to
/// ask for all memory.
std::uint64_t FrameReader::Fill() {
    constexpr std::uint64_t kPiece = 256 << 20;
    const std::uint64_t needed = source.GetFileBytes();
    std::uint64_t held = 0;
    while (held < needed) {
        const std::uint64_t wanted = std::min(needed - held, kPiece);
        if (frame.size() < held + wanted) frame.resize(held + wanted);
        const std::uint64_t got = input.Read(frame.data() + held, wanted);
        held += got;
        if (got < wanted) return held;
    }
    frame.resize(source.GetBufferBytes());
    return held;
}

}  // namespace kyimg

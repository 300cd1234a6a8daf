#include "FrameReader.h"

#include "Errors.h"

#include <fmt/format.h>

namespace kyimg {

FrameReader::FrameReader(const ConvertOptions& options, const Conversion& wantedConversion,
                         const FrameRange& wantedRange, const std::string& hint)
    : conversion(wantedConversion), range(wantedRange), severalHint(hint), input(options.input) {
    if (options.skipBytes > 0) input.Skip(options.skipBytes);
    if (const auto available = input.GetRemainingSize()) CheckInputSize(*available);
    frame.resize(conversion.GetSourceFrameSize());
}

void FrameReader::CheckInputSize(std::uint64_t available) const {
    const std::uint64_t needed = conversion.GetSourceFrameSize();
    const std::uint64_t whole = available / needed;
    if (range.last == FrameRange::kNoEnd) {
        if (available % needed != 0 || whole == 0)
            throw Failure(fmt::format("input holds {} bytes, which is no whole number of frames: {} needs {} each",
                                      available, conversion.DescribeSource(), needed));
    } else if (range.mayBeMore) {
        if (whole < range.last)
            throw Failure(fmt::format("input holds {} bytes, frame {} of {} ends at {}", available, range.last,
                                      conversion.DescribeSource(), range.last * needed));
    } else if (available != needed) {
        const bool severalFrames = whole > 1 && available % needed == 0;
        throw Failure(fmt::format("frame holds {} bytes, {} needs {}{}", available, conversion.DescribeSource(), needed,
                                  severalFrames ? fmt::format(" (for {} frames give {})", whole, severalHint) : ""));
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
    const std::uint64_t needed = conversion.GetSourceFrameSize();
    const std::uint64_t held = input.Read(frame.data(), needed);
    if (held == 0 && number > 1 && range.last == FrameRange::kNoEnd) return false;
    if (held < needed)
        throw Failure(fmt::format("frame {}holds {} bytes, {} needs {}",
                                  range.mayBeMore || range.last > 1 ? fmt::format("{} ", number) : "", held,
                                  conversion.DescribeSource(), needed));

    std::uint8_t next = 0;
    if (!range.mayBeMore && range.IsSingle() && input.Read(&next, 1) != 0)
        throw Failure(fmt::format("frame holds more than the {} bytes that {} needs (for several give {})", needed,
                                  conversion.DescribeSource(), severalHint));
    return true;
}

}  // namespace kyimg

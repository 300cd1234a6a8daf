#include "ConvertCommand.h"

#include "Conversion.h"
#include "FrameReader.h"
#include "FrameWriter.h"
#include "StandardStreams.h"

#include <fmt/format.h>

#include <cstdio>
#include <utility>

namespace kyimg {

void RunConvert(const ConvertOptions& options) {
    const FrameRange range = ParseFrames(options.frames);
    const FrameWriter writer(options, range);
    Conversion conversion(options, writer.GetFormat() == OutputFormat::Dng);
    writer.Check(conversion.DescribeDestination());
    FrameReader reader(options, conversion.GetSource(), range, "--frames all");

    const bool showsProgress = !options.quiet && !range.IsSingle() && IsTerminal(stderr);
    bool isFirst = true;
    while (reader.Next()) {
        if (std::exchange(isFirst, false)) conversion.Adapt(reader.GetFrame());  // to all frames of a film
        writer.Write(conversion.Convert(reader.GetFrame()), reader.GetNumber());
        if (showsProgress) fmt::print(stderr, "\rframe {}", reader.GetNumber());
    }
    if (showsProgress) fmt::print(stderr, "\n");
    if (!options.quiet) conversion.PrintNotes();
}

}  // namespace kyimg

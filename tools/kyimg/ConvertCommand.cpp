#include "ConvertCommand.h"

#include "Conversion.h"
#include "FrameReader.h"
#include "FrameWriter.h"
#include "StandardStreams.h"

#include <fmt/format.h>

#include <cstdio>

namespace kyimg {

void RunConvert(const ConvertOptions& options) {
    const FrameRange range = ParseFrames(options.frames);
    const FrameWriter writer(options, range);
    const Conversion conversion(options, writer.GetFormat() == OutputFormat::Dng);
    writer.Check(conversion.DescribeDestination());
    FrameReader reader(options, conversion.GetSource(), range, "--frames all");

    const bool showsProgress = !options.quiet && !range.IsSingle() && IsTerminal(stderr);
    while (reader.Next()) {
        writer.Write(conversion.Convert(reader.GetFrame()), reader.GetNumber());
        if (showsProgress) fmt::print(stderr, "\rframe {}", reader.GetNumber());
    }
    if (showsProgress) fmt::print(stderr, "\n");
    if (!options.quiet) conversion.PrintNotes();
}

}  // namespace kyimg

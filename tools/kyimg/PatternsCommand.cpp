#include "PatternsCommand.h"

#include "ContactSheet.h"
#include "Conversion.h"
#include "Errors.h"
#include "FrameReader.h"
#include "OutputFile.h"
#include "OutputFormat.h"
#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

#include <fmt/format.h>

namespace kyimg {

namespace {

Conversion WithPattern(ConvertOptions options, const char* pattern) {
    options.bayer = pattern;
    options.destination = "RGB24";
    return Conversion(options);
}

}  // namespace

void RunPatterns(const ConvertOptions& options) {
    const std::int64_t type = FindType(options.type);
    if (!KyPixelTypeFactory::FindPixelType(type)->IsBayerPattern())
        throw UsageError(fmt::format("only Bayer mosaics have a Bayer pattern, not {}", DescribeType(type)));
    const Conversion any = WithPattern(options, "GRBG");
    const FrameRange range = ParseFrames(options.frames);
    const OutputFormat format = FindOutputFormat(options.output, options.format);
    if (format == OutputFormat::Raw) throw UsageError("a sheet is a picture: png and ppm can be written");
    CheckOutput(options.output);

    FrameReader reader(options, any.GetSource(), range, "--frame N");
    reader.Next();
    std::vector<SheetTile> tiles;
    for (const char* const pattern : {"GRBG", "GBRG", "RGGB", "BGGR"})
        tiles.push_back({pattern, ShrinkForSheet(WithPattern(options, pattern).Convert(reader.GetFrame()))});
    WriteOutput(options.output, Encode(format, ArrangeSheet(tiles)));
    if (!options.quiet) any.PrintNotes();
}

}  // namespace kyimg

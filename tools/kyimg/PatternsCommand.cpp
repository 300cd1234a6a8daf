#include "PatternsCommand.h"

#include "ContactSheet.h"
#include "Conversion.h"
#include "Errors.h"
#include "FrameReader.h"
#include "FrameWriter.h"
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
    const FrameWriter writer(options, range);
    if (writer.GetFormat() == OutputFormat::Raw) throw UsageError("a sheet is a picture: raw cannot be written");
    writer.Check(any.DescribeDestination());

    FrameReader reader(options, any.GetSource(), range, "--frame N");
    reader.Next();
    std::vector<SheetTile> tiles;
    for (const char* const pattern : {"GRBG", "GBRG", "RGGB", "BGGR"})
        tiles.push_back({pattern, ShrinkForSheet(WithPattern(options, pattern).Convert(reader.GetFrame()))});
    writer.Write(ArrangeSheet(tiles), reader.GetNumber());
    if (!options.quiet) any.PrintNotes();
}

}  // namespace kyimg

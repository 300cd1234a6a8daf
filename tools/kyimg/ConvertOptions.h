#ifndef KYIMG_CONVERTOPTIONS_H
#define KYIMG_CONVERTOPTIONS_H

#include "OutputFormat.h"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace kyimg {

/// The command line of `kyimg convert` or `kyimg patterns`, as typed.
struct ConvertOptions {
    std::string input = "-";
    std::string type;
    std::string size;
    std::string bayer;            ///< Bayer pattern; empty: not given
    std::string demosaic;         ///< "nearest" or "bilinear"; empty: not given, which is bilinear
    std::string destination;      ///< empty: the usual one for the source
    std::vector<double> gains;    ///< empty, one for all channels, or for red, green, blue
    std::vector<double> offsets;  ///< likewise
    std::string whiteBalance;     ///< "auto", or empty
    std::string black;            ///< black level: a sample value or "auto"; empty: none
    std::string levels;           ///< two percentiles, "0.1,99.9"; empty: none
    std::string gamma;            ///< a number or "sRGB"; empty: none
    std::string table;            ///< file; empty: none
    std::string crop;             ///< "X,Y,WxH"; empty: all
    std::uint32_t rotate = 0;     ///< degrees, clockwise
    std::string flip;             ///< "horizontal", "vertical" or empty
    std::uint32_t shrink = 1;     ///< factor
    std::string frames;           ///< empty: the input is one frame
    std::uint64_t skipBytes = 0;
    std::uint64_t stride = 0;  ///< in bytes; 0: not given
    bool isContinuous = false;
    std::uint32_t threads = 0;  ///< 0: not given
    std::string output;
    std::string format;  ///< empty: by the extension of the output
    Encoding encoding;
    bool noClobber = false;
    bool quiet = false;
};

/// Add a command to `app`; parsing fills `options`.
///@{
CLI::App* AddConvertCommand(CLI::App& app, ConvertOptions& options);
CLI::App* AddPatternsCommand(CLI::App& app, const char* name, ConvertOptions& options);
///@}

/// Add options of commands that read a frame, or a picture that needs none of them: with the input itself, and without.
///@{
void AddInputOptions(CLI::App* command, ConvertOptions& options);
void AddInputLayout(CLI::App* command, ConvertOptions& options);
///@}

struct ImageSize {
    std::uint32_t width;
    std::uint32_t height;
};

/// "1920x1080". Throws UsageError when it is something else, or too large for the 32-bit sizes of the library.
///
/// \param option  to name then
ImageSize ParseSize(const std::string& text, const char* option = "--size");

struct CropArea {
    std::uint32_t left, top;
    ImageSize size;
};

/// "X,Y,WxH". Throws UsageError.
CropArea ParseCrop(const std::string& text);

/// Which frames of the input are wanted; the first one is number 1.
struct FrameRange {
    static constexpr std::uint64_t kNoEnd = ~std::uint64_t{0};

    std::uint64_t first;
    std::uint64_t last;
    bool mayBeMore;  ///< whether the input may go on after the last one

    bool IsSingle() const { return first == last; }
};

/// "" (the input is a single frame), "all", "N" (the first N) or "N-M". Throws UsageError.
FrameRange ParseFrames(const std::string& text);

}  // namespace kyimg

#endif

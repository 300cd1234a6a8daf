#ifndef KYIMG_OUTPUTFILE_H
#define KYIMG_OUTPUTFILE_H

#include "RemovalOnSignal.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

namespace kyimg {

/// What must stay as it is.
struct OutputLimits {
    std::string input;       ///< the file that is read, or "-": never written to
    bool noClobber = false;  ///< nor is any other file that exists
};

/// Whether what is written to `path` goes on where the last output ended: "-", the names of open descriptors
/// (/dev/stdout, /dev/fd/3), pipes and devices.
bool IsStream(const std::string& path);

/// Throws UsageError when a picture would go to a terminal, Failure when the limits do not allow to write.
void CheckOutput(const std::string& path, const OutputLimits& limits);

/// A file that is written from its start to its end, or a stream.
///
/// A file appears complete or not at all: the bytes go to a temporary file in the same folder, which takes the place of
/// the target at last. It is removed when the object goes without Finish(), and by the signals INT, TERM and HUP.
class OutputFile {
public:
    /// Throws Failure when the file cannot be written or the limits do not allow it.
    OutputFile(const std::string& path, const OutputLimits& limits);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Throws Failure.
    void Write(std::span<const std::uint8_t> bytes);

    /// Throws Failure when not everything could be written.
    void Finish();

private:
    class TemporaryFile;

    struct Closer {
        void operator()(std::FILE* opened) const { std::fclose(opened); }
    };

    void OpenStream();
    void OpenTemporary();

    std::string name;
    OutputLimits limits;
    std::unique_ptr<TemporaryFile> temporary;  ///< null for a stream
    std::unique_ptr<std::FILE, Closer> file;
};

/// Writes a file at once. Throws Failure.
void WriteFile(const std::string& path, const OutputLimits& limits, std::span<const std::uint8_t> bytes);

}  // namespace kyimg

#endif

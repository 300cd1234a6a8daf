#include "OutputFile.h"

#include "Errors.h"
#include "StandardStreams.h"

#include <fmt/format.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <optional>
#include <random>
#include <string_view>

namespace kyimg {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void FailToWrite(const std::string& path, const std::string& reason) {
    throw Failure(fmt::format("cannot write {}: {}", path == "-" ? "standard output" : path, reason));
}

[[noreturn]] void FailToWrite(const std::string& path) { FailToWrite(path, std::strerror(errno)); }

/// The open descriptor that `path` names. Opening it anew would fail for some, and write others from their start.
std::optional<int> FindDescriptor(const std::string& path) {
    if (path == "-" || path == "/dev/stdout") return 1;
    if (path == "/dev/stderr") return 2;
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        if (!path.starts_with(folder)) continue;
        int descriptor = 0;
        const char* const end = path.data() + path.size();
        const auto [parsed, error] = std::from_chars(path.data() + folder.size(), end, descriptor);
        if (error == std::errc() && parsed == end && descriptor >= 0) return descriptor;
    }
    return std::nullopt;
}

/// The file that a stream leads to, under a name of its own.
fs::path PathOf(const std::string& path, const char* stream) { return path == "-" ? fs::path(stream) : fs::path(path); }

void CheckLimits(const std::string& path, const OutputLimits& limits) {
    std::error_code error;
    const fs::path target = PathOf(path, "/dev/stdout");
    if (!fs::is_regular_file(target, error)) return;
    if (fs::equivalent(PathOf(limits.input, "/dev/stdin"), target, error)) FailToWrite(path, "it is the input");
    if (limits.noClobber && !FindDescriptor(path)) FailToWrite(path, "it exists, and --no-clobber is given");
}

/// Replacing a file needs no permission to write to it: ask for that too.
void CheckMayOverwrite(const std::string& path) {
    std::FILE* const file = std::fopen(path.c_str(), "r+b");
    if (file == nullptr) FailToWrite(path);
    std::fclose(file);
}

}  // namespace

/// A name beside the target's, whose file is removed again unless it has replaced the target.
class OutputFile::TemporaryFile {
public:
    explicit TemporaryFile(const fs::path& outputTarget)
        : target(outputTarget), path(target.parent_path() / fmt::format(".kyimg-{:08x}.tmp", std::random_device()())),
          removal(path) {}

    ~TemporaryFile() {
        std::error_code ignored;
        if (isThere) fs::remove(path, ignored);
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// Null when it cannot be made.
    std::FILE* Open() {
        std::FILE* const opened = std::fopen(path.string().c_str(), "wbx");
        isThere = opened != nullptr;
        return opened;
    }

    std::error_code ReplaceTarget() {
        std::error_code error;
        const fs::file_status existing = fs::status(target, error);
        if (fs::exists(existing)) fs::permissions(path, existing.permissions(), error);
        fs::rename(path, target, error);
        isThere = static_cast<bool>(error);
        return error;
    }

private:
    fs::path target;
    fs::path path;
    RemovalOnSignal removal;
    bool isThere = false;
};

bool IsStream(const std::string& path) {
    std::error_code error;
    const fs::file_status existing = fs::status(path, error);
    return FindDescriptor(path) || (fs::exists(existing) && fs::is_other(existing));
}

void CheckOutput(const std::string& path, const OutputLimits& limits) {
    const std::optional<int> descriptor = FindDescriptor(path);
    if (descriptor && IsTerminal(*descriptor))
        throw UsageError("pictures are not for a terminal: redirect standard output or name a file");
    CheckLimits(path, limits);
}

OutputFile::OutputFile(const std::string& path, const OutputLimits& givenLimits) : name(path), limits(givenLimits) {
    CheckLimits(name, limits);
    if (IsStream(name))
        OpenStream();
    else
        OpenTemporary();
    if (file == nullptr) FailToWrite(name);
}

OutputFile::~OutputFile() {
    file.reset();  // an open file cannot be removed on Windows
}

void OutputFile::OpenStream() {
    const std::optional<int> descriptor = FindDescriptor(name);
    file.reset(descriptor ? OpenDescriptor(*descriptor) : std::fopen(name.c_str(), "wb"));
}

void OutputFile::OpenTemporary() {
    std::error_code error;
    // What a symbolic link points to is replaced, not the link.
    const fs::path target = fs::is_symlink(name, error) ? fs::weakly_canonical(name, error) : fs::path(name);
    if (fs::is_directory(target, error)) FailToWrite(name, "it is a directory");
    if (fs::exists(target, error)) CheckMayOverwrite(name);
    temporary = std::make_unique<TemporaryFile>(target);
    file.reset(temporary->Open());
}

void OutputFile::Write(std::span<const std::uint8_t> bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) FailToWrite(name);
}

void OutputFile::Finish() {
    if (std::fclose(file.release()) != 0) FailToWrite(name);
    if (temporary == nullptr) return;
    CheckLimits(name, limits);
    if (const std::error_code error = temporary->ReplaceTarget()) FailToWrite(name, error.message());
}

void WriteFile(const std::string& path, const OutputLimits& limits, std::span<const std::uint8_t> bytes) {
    OutputFile file(path, limits);
    file.Write(bytes);
    file.Finish();
}

}  // namespace kyimg

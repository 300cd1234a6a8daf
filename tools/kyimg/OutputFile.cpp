#include "OutputFile.h"

#include "Errors.h"
#include "StandardStreams.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>

namespace kyimg {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void FailToWrite(const std::string& path, const std::string& reason) {
    throw Failure(fmt::format("cannot write {}: {}", path, reason));
}

[[noreturn]] void FailToWrite(const std::string& path) { FailToWrite(path, std::strerror(errno)); }

bool WriteAll(std::FILE* file, std::span<const std::uint8_t> bytes) {
    return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0;
}

void WriteDirectly(const std::string& path, std::span<const std::uint8_t> bytes) {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) FailToWrite(path);
    const bool written = WriteAll(file, bytes);
    const int reason = errno;
    std::fclose(file);
    if (!written) FailToWrite(path, std::strerror(reason));
}

/// A file of its own beside the target, removed again unless it has replaced it.
class TemporaryFile {
public:
    TemporaryFile(const std::string& outputName, const fs::path& outputTarget)
        : name(outputName), target(outputTarget),
          path(target.parent_path() / fmt::format(".kyimg-{:08x}.tmp", std::random_device()())),
          file(std::fopen(path.string().c_str(), "wbx")) {
        if (file == nullptr) FailToWrite(name);
    }

    ~TemporaryFile() {
        if (file != nullptr) std::fclose(file);
        std::error_code ignored;
        if (!replaced) fs::remove(path, ignored);
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void Write(std::span<const std::uint8_t> bytes) {
        if (!WriteAll(file, bytes)) FailToWrite(name);
        std::FILE* const finished = file;
        file = nullptr;
        if (std::fclose(finished) != 0) FailToWrite(name);
    }

    void ReplaceTarget() {
        std::error_code error;
        const fs::file_status existing = fs::status(target, error);
        if (fs::exists(existing)) fs::permissions(path, existing.permissions(), error);
        fs::rename(path, target, error);
        if (error) FailToWrite(name, error.message());
        replaced = true;
    }

private:
    std::string name;
    fs::path target;
    fs::path path;
    std::FILE* file;
    bool replaced = false;
};

/// Replacing a file needs no permission to write to it: ask for that too.
void CheckMayOverwrite(const std::string& path) {
    std::FILE* const file = std::fopen(path.c_str(), "r+b");
    if (file == nullptr) FailToWrite(path);
    std::fclose(file);
}

}  // namespace

void CheckOutput(const std::string& path) {
    if (path == "-" && IsTerminal(stdout))
        throw UsageError("pictures are not for a terminal: redirect standard output or name a file");
}

void WriteOutput(const std::string& path, std::span<const std::uint8_t> bytes) {
    if (path == "-") {
        SetBinary(stdout);
        if (!WriteAll(stdout, bytes)) FailToWrite("standard output");
        return;
    }
    std::error_code error;
    // What a symbolic link points to is replaced, not the link.
    const fs::path target = fs::is_symlink(path, error) ? fs::weakly_canonical(path, error) : fs::path(path);
    const fs::file_status existing = fs::status(target, error);
    if (fs::is_directory(existing)) FailToWrite(path, "it is a directory");
    if (fs::exists(existing) && !fs::is_regular_file(existing)) return WriteDirectly(path, bytes);
    if (fs::exists(existing)) CheckMayOverwrite(path);

    TemporaryFile file(path, target);
    file.Write(bytes);
    file.ReplaceTarget();
}

}  // namespace kyimg

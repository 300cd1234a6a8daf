#include "RawInput.h"

#include "Errors.h"
#include "StandardStreams.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

namespace kyimg {

namespace fs = std::filesystem;

RawInput::RawInput(const std::string& path) : name(path) {
    if (path == "-") {
        name = "standard input";
        SetBinary(stdin);
        file.reset(stdin);
        return;
    }
    std::error_code error;
    if (fs::is_directory(path, error)) throw Failure(fmt::format("cannot read {}: it is a directory", name));
    file.reset(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) throw Failure(fmt::format("cannot read {}: {}", name, std::strerror(errno)));
    if (!fs::is_regular_file(path, error)) return;
    const std::uint64_t size = fs::file_size(path, error);
    if (!error) remaining = size;
}

std::uint64_t RawInput::Read(std::uint8_t* buffer, std::uint64_t size) {
    const std::size_t count = std::fread(buffer, 1, size, file.get());
    if (std::ferror(file.get()) != 0) throw Failure(fmt::format("cannot read {}: {}", name, std::strerror(errno)));
    if (remaining) *remaining -= std::min<std::uint64_t>(*remaining, count);
    return count;
}

void RawInput::Skip(std::uint64_t size) {
    // Read, as a pipe cannot seek.
    std::vector<std::uint8_t> buffer(static_cast<std::size_t>(std::min<std::uint64_t>(size, 1 << 20)));
    for (std::uint64_t left = size; left > 0;) {
        const std::uint64_t count = Read(buffer.data(), std::min<std::uint64_t>(left, buffer.size()));
        if (count == 0)
            throw Failure(fmt::format("{} ends after {} of the {} bytes to be skipped", name, size - left, size));
        left -= count;
    }
}

}  // namespace kyimg

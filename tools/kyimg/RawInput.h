#ifndef KYIMG_RAWINPUT_H
#define KYIMG_RAWINPUT_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace kyimg {

/// A file, or standard input, that is read from its start to its end.
class RawInput {
public:
    /// \param path  file name, or "-" for standard input. Throws Failure when it cannot be opened.
    explicit RawInput(const std::string& path);

    /// Bytes from here to the end; nothing when only reading can tell, as for a pipe.
    std::optional<std::uint64_t> GetRemainingSize() const { return remaining; }

    /// Reads up to `size` bytes and returns how many there were; fewer only at the end. Throws Failure.
    std::uint64_t Read(std::uint8_t* buffer, std::uint64_t size);

    /// Leaves out `size` bytes. Throws Failure when there are fewer.
    void Skip(std::uint64_t size);

private:
    struct Closer {
        void operator()(std::FILE* opened) const {
            if (opened != stdin) std::fclose(opened);
        }
    };

    std::string name;
    std::unique_ptr<std::FILE, Closer> file;
    std::optional<std::uint64_t> remaining;
};

}  // namespace kyimg

#endif

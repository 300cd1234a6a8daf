#ifndef KYIMG_REMOVALONSIGNAL_H
#define KYIMG_REMOVALONSIGNAL_H

#include <filesystem>

namespace kyimg {

/// While an object lives, the signals INT, TERM and HUP remove the file that it names before they end the program, unless
/// they are ignored. Any number of threads may have objects; beyond some dozens at once, files are not removed. On Windows,
/// which removes no open file, nothing happens.
class RemovalOnSignal {
public:
    /// The file need not exist yet.
    explicit RemovalOnSignal(const std::filesystem::path& path);
    ~RemovalOnSignal();
    RemovalOnSignal(const RemovalOnSignal&) = delete;
    RemovalOnSignal& operator=(const RemovalOnSignal&) = delete;

private:
    void* slot = nullptr;
};

}  // namespace kyimg

#endif

#ifndef ZR_COMMON_HUTFILE_H
#define ZR_COMMON_HUTFILE_H

#include <cstddef>
#include <string>

class HUTFile {
public:
    explicit HUTFile(const std::string& path) : m_path(path) {}
    // Absolute, with symbolic links, "." and ".." resolved as far as the path exists.
    bool getCanonicalName(std::string& out) const;
    const std::string& getPath() const { return m_path; }

private:
    std::string m_path;
};

class HUTFileUtils {
public:
    // Prefixes a relative path with the working directory.
    static void makeAbsolutePath(std::string& path);

    // The most bytes that any input file is read up to, packed or unpacked.
    static constexpr std::size_t kMaxInputBytes = 32u * 1024 * 1024;

    // Empty when `path` is a regular file (links followed) of at most
    // `maxBytes`; otherwise why it may not be read. Never opens the file, so a
    // named pipe or a device cannot block or flood the caller.
    static std::string inputRefusal(const std::string& path, std::size_t maxBytes = kMaxInputBytes);

    // Reads the whole of `path` into `out` if inputRefusal lets it, opening it
    // without blocking and checking again what was opened. False with `why` set otherwise.
    static bool readInput(const std::string& path, std::string& out, std::string& why,
                          std::size_t maxBytes = kMaxInputBytes);
};

#endif

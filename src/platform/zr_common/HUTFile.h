#ifndef ZR_COMMON_HUTFILE_H
#define ZR_COMMON_HUTFILE_H

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
};

#endif

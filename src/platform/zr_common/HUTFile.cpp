#include "HUTFile.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <boost/filesystem.hpp>

namespace fs = boost::filesystem;

bool HUTFile::getCanonicalName(std::string& out) const {
    if (m_path.empty())
        return false;
    boost::system::error_code ec;
    fs::path abs = fs::absolute(fs::path(m_path), ec);
    if (ec)
        return false;
    // Resolves the existing head of the path and tidies the rest by text.
    fs::path canon = fs::weakly_canonical(abs, ec);
    if (ec)
        return false;
    std::string s = canon.lexically_normal().string();
    // "a/b/." and "a/b/" both name a/b.
    while (s.size() > 1 && (s.back() == '/' || (s.size() > 2 && s.compare(s.size() - 2, 2, "/.") == 0)))
        s.erase(s.back() == '/' ? s.size() - 1 : s.size() - 2);
    out = s;
    return true;
}

void HUTFileUtils::makeAbsolutePath(std::string& path) {
    if (path.empty())
        return;
    fs::path p(path);
    if (p.is_absolute())
        return;
    boost::system::error_code ec;
    fs::path abs = fs::absolute(p, ec);
    if (!ec)
        path = abs.string();
}

namespace {

std::string kindRefusal(const struct stat& st, std::size_t maxBytes) {
    if (S_ISDIR(st.st_mode))
        return "it is a directory";
    if (S_ISFIFO(st.st_mode))
        return "it is a named pipe";
    if (S_ISCHR(st.st_mode) || S_ISBLK(st.st_mode))
        return "it is a device";
    if (S_ISSOCK(st.st_mode))
        return "it is a socket";
    if (!S_ISREG(st.st_mode))
        return "it is not a regular file";
    if (static_cast<unsigned long long>(st.st_size) > maxBytes)
        return "it has " + std::to_string(static_cast<unsigned long long>(st.st_size)) + " bytes, more than the " +
               std::to_string(maxBytes) + " bytes an input file may have";
    return std::string();
}

}  // namespace

std::string HUTFileUtils::inputRefusal(const std::string& path, std::size_t maxBytes) {
    struct stat st;
    if (::stat(path.c_str(), &st) != 0)
        return std::string("it cannot be read: ") + std::strerror(errno);
    return kindRefusal(st, maxBytes);
}

bool HUTFileUtils::readInput(const std::string& path, std::string& out, std::string& why, std::size_t maxBytes) {
    out.clear();
    why = inputRefusal(path, maxBytes);
    if (!why.empty())
        return false;
    // The path may have been replaced since: what was opened is checked again.
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        why = std::string("it cannot be opened: ") + std::strerror(errno);
        return false;
    }
    struct stat st;
    if (::fstat(fd, &st) != 0 || !(why = kindRefusal(st, maxBytes)).empty()) {
        if (why.empty())
            why = std::string("it cannot be read: ") + std::strerror(errno);
        ::close(fd);
        return false;
    }
    out.resize(static_cast<std::size_t>(st.st_size));
    std::size_t got = 0;
    // A file that grows while it is read is cut at its size when opened.
    while (got < out.size()) {
        const ssize_t n = ::read(fd, &out[got], out.size() - got);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            why = std::string("it cannot be read: ") + std::strerror(errno);
            ::close(fd);
            out.clear();
            return false;
        }
        if (n == 0)
            break;
        got += static_cast<std::size_t>(n);
    }
    out.resize(got);
    ::close(fd);
    return true;
}

#include "HUTFile.h"

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

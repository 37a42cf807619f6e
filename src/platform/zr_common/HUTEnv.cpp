// Where the host's data lies: from the environment, or beside the loaded library.
#include "HUTEnv.h"

#include <dlfcn.h>

#include <cstdlib>

#include <boost/filesystem.hpp>

namespace fs = boost::filesystem;

namespace {

// Any function of this library serves dladdr to find the library's own file.
void libraryAnchor() {}

bool libraryDir(fs::path& out) {
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&libraryAnchor), &info) == 0 || !info.dli_fname || !*info.dli_fname)
        return false;
    boost::system::error_code ec;
    fs::path lib = fs::weakly_canonical(fs::absolute(fs::path(info.dli_fname), ec), ec);
    if (ec)
        return false;
    out = lib.parent_path();
    return true;
}

bool sameDir(const fs::path& a, const fs::path& b) {
    boost::system::error_code ec;
    fs::path ca = fs::weakly_canonical(a, ec);
    if (ec)
        ca = a.lexically_normal();
    fs::path cb = fs::weakly_canonical(b, ec);
    if (ec)
        cb = b.lexically_normal();
    return ca == cb;
}

// The installation root: the library directory less the install-relative library
// directory ("lib", or "lib/<multiarch>"), so that the tree can be moved as a whole.
fs::path installRoot(const fs::path& libDir) {
    fs::path root = libDir;
    fs::path rel(ZR_INSTALL_LIBDIR_REL);
    if (rel.is_absolute())
        return libDir.parent_path();
    int depth = 0;
    for (const fs::path& part : rel)
        if (part != "." && !part.empty())
            ++depth;
    if (depth == 0)
        depth = 1;
    for (int i = 0; i < depth && root.has_parent_path(); ++i)
        root = root.parent_path();
    return root;
}

}  // namespace

std::vector<std::string> HUTEnv::getQDEDataDirList() {
    std::vector<std::string> dirs;
    const char* env = std::getenv("ZR_DATA_DIRS");
    if (env) {
        std::string all(env);
        std::size_t start = 0;
        while (start <= all.size()) {
            std::size_t colon = all.find(':', start);
            if (colon == std::string::npos)
                colon = all.size();
            if (colon > start)
                dirs.push_back(all.substr(start, colon - start));
            start = colon + 1;
        }
        // Set but naming no directory (empty, or separators only): a host without
        // data directories. Only an unset variable means the default.
        return dirs;
    }
    fs::path libDir;
    if (!libraryDir(libDir))
        return dirs;
    if (sameDir(libDir, fs::path(ZR_BUILD_LIB_DIR))) {
        dirs.push_back(ZR_SOURCE_DATA_DIR);
        return dirs;
    }
    fs::path data(ZR_INSTALL_DATADIR_REL);
    if (!data.is_absolute())
        data = installRoot(libDir) / data;
    dirs.push_back(data.lexically_normal().string());
    return dirs;
}

bool HUTEnv::getQDEAppRoot(std::string& out) {
    const char* env = std::getenv("ZR_APP_ROOT");
    if (env && *env) {
        out = env;
        return true;
    }
    fs::path libDir;
    if (!libraryDir(libDir))
        return false;
    out = installRoot(libDir).string();
    return true;
}

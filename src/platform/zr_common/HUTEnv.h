#ifndef ZR_COMMON_HUTENV_H
#define ZR_COMMON_HUTENV_H

#include <string>
#include <vector>

class HUTEnv {
public:
    // ZR_DATA_DIRS (colon separated) or, when it is unset, the default data
    // directory. Set but empty, it means no data directory at all.
    static std::vector<std::string> getQDEDataDirList();
    // ZR_APP_ROOT, or the installation root; returns false when neither is known.
    static bool getQDEAppRoot(std::string& out);
};

#endif

#ifndef ZR_COMMON_HSTSTRINGUTILS_H
#define ZR_COMMON_HSTSTRINGUTILS_H

#include <string>

class HSTStringUtils {
public:
    // Byte-wise comparison after folding ASCII case.
    static bool iequals(const std::string& a, const char* b);
};

#endif

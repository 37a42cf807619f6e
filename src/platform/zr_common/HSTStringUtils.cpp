#include "HSTStringUtils.h"

#include <cstring>

bool HSTStringUtils::iequals(const std::string& a, const char* b) {
    if (!b)
        return false;
    std::size_t n = std::strlen(b);
    if (a.size() != n)
        return false;
    for (std::size_t i = 0; i < n; ++i) {
        unsigned char x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
        if (x >= 'A' && x <= 'Z')
            x = static_cast<unsigned char>(x - 'A' + 'a');
        if (y >= 'A' && y <= 'Z')
            y = static_cast<unsigned char>(y - 'A' + 'a');
        if (x != y)
            return false;
    }
    return true;
}

// Placeholders of a message format in order: "%s%d" gives "sd".
#ifndef ZR_TESTS_PLACEHOLDERS_H
#define ZR_TESTS_PLACEHOLDERS_H

#include <cstddef>
#include <string>

inline std::string placeholders(const std::string& text) {
    std::string kinds;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '%')
            continue;
        if (text[i + 1] == 's' || text[i + 1] == 'd')
            kinds += text[i + 1];
        ++i;
    }
    return kinds;
}

#endif

// Case folding of the classic locale, byte by byte: only ASCII letters change.
// Written out rather than asked of a locale object, because board reading
// folds names in its inner loops.
#ifndef HBOCASE_H
#define HBOCASE_H

#include <cstddef>
#include <string>

namespace HBOCase {

inline char lowerByte(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }
inline char upperByte(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

inline std::string lower(std::string s) {
    for (char& c : s)
        c = lowerByte(c);
    return s;
}

inline std::string upper(std::string s) {
    for (char& c : s)
        c = upperByte(c);
    return s;
}

inline bool iequals(const std::string& a, const std::string& b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (lowerByte(a[i]) != lowerByte(b[i]))
            return false;
    return true;
}

}  // namespace HBOCase

#endif

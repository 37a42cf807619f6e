// Port and pin indices that a board file gives as text. Models keep such an
// index as a number when the number gives the very same text back.
#ifndef HBOINDEXTEXT_H
#define HBOINDEXTEXT_H

#include <string>

namespace HBOIndexText {

// Digits only, no leading zero, at most nine of them.
inline bool toNumber(const std::string& text, int& out) {
    if (text.empty() || text.size() > 9 || (text[0] == '0' && text.size() > 1))
        return false;
    int value = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            return false;
        value = value * 10 + (c - '0');
    }
    out = value;
    return true;
}

}  // namespace HBOIndexText

#endif

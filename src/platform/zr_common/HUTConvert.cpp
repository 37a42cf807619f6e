#include "HUTConvert.h"

#include <cctype>
#include <charconv>
#include <cstring>
#include <string_view>

namespace {

std::string_view trimmed(const std::string& text) {
    std::string_view v(text);
    while (!v.empty() && std::isspace(static_cast<unsigned char>(v.front())))
        v.remove_prefix(1);
    while (!v.empty() && std::isspace(static_cast<unsigned char>(v.back())))
        v.remove_suffix(1);
    return v;
}

bool wordIs(std::string_view v, const char* word) {
    std::size_t n = std::strlen(word);
    if (v.size() != n)
        return false;
    for (std::size_t i = 0; i < n; ++i)
        if (std::tolower(static_cast<unsigned char>(v[i])) != word[i])
            return false;
    return true;
}

// Decimal numbers only: sign, digits with an optional point, an optional exponent.
// Words such as "inf" or "nan" and hexadecimal forms are no numbers here.
bool isDecimalNumber(std::string_view v) {
    std::size_t i = 0, n = v.size();
    if (i < n && (v[i] == '+' || v[i] == '-'))
        ++i;
    std::size_t digits = 0;
    while (i < n && std::isdigit(static_cast<unsigned char>(v[i])))
        ++i, ++digits;
    if (i < n && v[i] == '.') {
        ++i;
        while (i < n && std::isdigit(static_cast<unsigned char>(v[i])))
            ++i, ++digits;
    }
    if (digits == 0)
        return false;
    if (i < n && (v[i] == 'e' || v[i] == 'E')) {
        ++i;
        if (i < n && (v[i] == '+' || v[i] == '-'))
            ++i;
        std::size_t expDigits = 0;
        while (i < n && std::isdigit(static_cast<unsigned char>(v[i])))
            ++i, ++expDigits;
        if (expDigits == 0)
            return false;
    }
    return i == n;
}

}  // namespace

bool HUTConvert::stringToBoolean(const std::string& text, bool& out, bool strict) {
    std::string_view v = strict ? std::string_view(text) : trimmed(text);
    if (wordIs(v, "1") || wordIs(v, "true") || wordIs(v, "yes") || wordIs(v, "on")) {
        out = true;
        return true;
    }
    if (wordIs(v, "0") || wordIs(v, "false") || wordIs(v, "no") || wordIs(v, "off")) {
        out = false;
        return true;
    }
    return false;
}

bool HUTConvert::toBool(const std::string& text) {
    bool b = false;
    return stringToBoolean(text, b, false) && b;
}

bool HUTConvert::stringToFloat(const std::string& text, double& out) {
    std::string_view v = trimmed(text);
    if (!isDecimalNumber(v))
        return false;
    if (v.front() == '+')
        v.remove_prefix(1);
    // from_chars ignores the global locale, so "1.5" reads the same everywhere.
    double d = 0;
    auto res = std::from_chars(v.data(), v.data() + v.size(), d);
    if (res.ec != std::errc() || res.ptr != v.data() + v.size())
        return false;
    out = d;
    return true;
}

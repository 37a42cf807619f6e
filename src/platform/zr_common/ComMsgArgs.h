// Turns message arguments into the texts that a message carries.
#ifndef ZR_COMMON_COMMSGARGS_H
#define ZR_COMMON_COMMSGARGS_H

#include <cstdio>
#include <string>
#include <type_traits>

namespace zr_msg_detail {
inline std::string toArg(const std::string& s) { return s; }
inline std::string toArg(const char* s) { return s ? s : ""; }
inline std::string toArg(char* s) { return s ? s : ""; }
template <class T>
typename std::enable_if<std::is_arithmetic<T>::value, std::string>::type toArg(const T& v) {
    return std::to_string(v);
}
template <class T>
std::string toArg(const T* p) {
    char buf[32];
    snprintf(buf, sizeof buf, "%p", static_cast<const void*>(p));
    return buf;
}
}  // namespace zr_msg_detail

#endif

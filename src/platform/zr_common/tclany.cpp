#include "tclany.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <cxxabi.h>

namespace zrc {
namespace tcltasks {

tclany_iholder::~tclany_iholder() = default;

namespace detail {

std::string demangled(const std::type_info& type) {
    int status = 0;
    std::unique_ptr<char, void (*)(void*)> name(abi::__cxa_demangle(type.name(), nullptr, nullptr, &status),
                                                std::free);
    return status == 0 && name ? std::string(name.get()) : std::string(type.name());
}

std::string pointer_text(const std::type_info& type, const void* p) {
    char address[32];
    std::snprintf(address, sizeof address, "%p", p);
    return demangled(type) + "(" + address + ")";
}

}  // namespace detail
}  // namespace tcltasks
}  // namespace zrc

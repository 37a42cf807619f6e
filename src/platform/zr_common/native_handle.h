// The Tcl object that stands for a native object in scripts. It prints as the
// text it was made with; once its object is gone it is marked invalid and
// answers null, so that a script can be told instead of touching freed memory.
#ifndef ZR_COMMON_NATIVE_HANDLE_H
#define ZR_COMMON_NATIVE_HANDLE_H

#include <string>
#include <typeinfo>

#include <tcl.h>

namespace zrc {
namespace tcltasks {

class native_handle {
public:
    // A new object with no references.
    static Tcl_Obj* make(const std::type_info& type, void* native, const std::string& text);
    static bool is_handle(Tcl_Obj* obj);
    // The native object; null for an invalid handle or another object.
    static void* native(Tcl_Obj* obj);
    // The native type; null for another object.
    static const std::type_info* type(Tcl_Obj* obj);
    static bool is_invalid(Tcl_Obj* obj);
    // Does nothing to an object that is no handle (any more).
    static void mark_invalid(Tcl_Obj* obj);
};

}  // namespace tcltasks
}  // namespace zrc

#endif

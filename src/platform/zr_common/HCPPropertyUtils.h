// Helpers for property functions.
#ifndef ZR_COMMON_HCPPROPERTYUTILS_H
#define ZR_COMMON_HCPPROPERTYUTILS_H

#include <tcl.h>

#include "HATAttrAny.h"

namespace HCPProperty {

class Utils {
public:
    // Makes the value the interpreter's result: a string, a boolean, an integer
    // or a list (its elements joined by blanks, unquoted); nothing without an interpreter.
    static void setAttrResult(Tcl_Interp* interp, const HATAttrAny& value);
    static Tcl_Obj* newTclObj(const HATAttrAny& value);
};

}  // namespace HCPProperty

#endif

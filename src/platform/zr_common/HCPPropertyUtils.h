// Helpers for property functions.
#ifndef ZR_COMMON_HCPPROPERTYUTILS_H
#define ZR_COMMON_HCPPROPERTYUTILS_H

#include <tcl.h>

#include "HATAttrAny.h"

namespace HCPProperty {

class Utils {
public:
    // Makes the value the interpreter's result: a string, a boolean, an integer
    // or a list (its elements joined by blanks, unquoted). Without an
    // interpreter, in Python mode, the Python manager's result instead.
    static void setAttrResult(Tcl_Interp* interp, const HATAttrAny& value);
    static Tcl_Obj* newTclObj(const HATAttrAny& value);
};

}  // namespace HCPProperty

#endif

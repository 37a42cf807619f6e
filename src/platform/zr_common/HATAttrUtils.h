// Writing a property value into its result slot.
#ifndef ZR_COMMON_HATATTRUTILS_H
#define ZR_COMMON_HATATTRUTILS_H

#include <string>

#include "HATAttrAny.h"

class HATAttrUtils {
public:
    static void setAny(HATAttrAny& out, const std::string& value);
    // Kept apart from bool, which a bare text would otherwise turn into.
    static void setAny(HATAttrAny& out, const char* value);
    static void setAny(HATAttrAny& out, bool value);
    static void setAny(HATAttrAny& out, int value);
    static void setAny(HATAttrAny& out, const HATStringList& value);
};

#endif

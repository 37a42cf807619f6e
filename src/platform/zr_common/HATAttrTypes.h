// Attribute types of the property service; the values are fixed by the host.
#ifndef ZR_COMMON_HATATTRTYPES_H
#define ZR_COMMON_HATATTRTYPES_H

namespace HATAttrTypes {
enum AttrType {
    ATTR_BOOL = 0,
    ATTR_INT = 1,
    ATTR_STRING = 3,
    ATTR_STRING_LIST = 6  // a tcl_collection of strings
};
const char* typeName(AttrType type);
}  // namespace HATAttrTypes

#endif

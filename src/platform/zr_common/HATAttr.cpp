#include "HATAttr.h"
#include "HATAttrAny.h"
#include "HATAttrUtils.h"

const char* HATAttrTypes::typeName(AttrType type) {
    switch (type) {
    case ATTR_BOOL:
        return "bool";
    case ATTR_INT:
        return "int";
    case ATTR_STRING:
        return "string";
    case ATTR_STRING_LIST:
        return "string*";
    }
    return "unknown";
}

std::string HATAttr::getCharStringVal() const {
    switch (m_type) {
    case HATAttrTypes::ATTR_BOOL:
        return m_bool ? "1" : "0";
    case HATAttrTypes::ATTR_INT:
        return std::to_string(m_int);
    case HATAttrTypes::ATTR_STRING_LIST:
        return m_list.get_string_rep();
    case HATAttrTypes::ATTR_STRING:
        break;
    }
    return m_string;
}

HATAttr HATAttrAny::toAttr() const {
    if (const std::string* s = get<std::string>())
        return HATAttr(*s);
    if (const bool* b = get<bool>())
        return HATAttr(*b);
    if (const int* i = get<int>())
        return HATAttr(*i);
    if (const HATStringList* l = get<HATStringList>())
        return HATAttr(*l);
    return HATAttr(std::string());
}

void HATAttrUtils::setAny(HATAttrAny& out, const std::string& value) { out.value() = value; }
void HATAttrUtils::setAny(HATAttrAny& out, const char* value) { out.value() = std::string(value ? value : ""); }
void HATAttrUtils::setAny(HATAttrAny& out, bool value) { out.value() = value; }
void HATAttrUtils::setAny(HATAttrAny& out, int value) { out.value() = value; }
void HATAttrUtils::setAny(HATAttrAny& out, const HATStringList& value) { out.value() = value; }

// One typed attribute value: a boolean, an integer, a string or a list of strings.
#ifndef ZR_COMMON_HATATTR_H
#define ZR_COMMON_HATATTR_H

#include <string>

#include "HATAttrTypes.h"
#include "HATStringList.h"

class HATAttr {
public:
    HATAttr() = default;
    explicit HATAttr(bool value) : m_type(HATAttrTypes::ATTR_BOOL), m_bool(value) {}
    explicit HATAttr(int value) : m_type(HATAttrTypes::ATTR_INT), m_int(value) {}
    explicit HATAttr(const std::string& value) : m_type(HATAttrTypes::ATTR_STRING), m_string(value) {}
    explicit HATAttr(const char* value) : HATAttr(std::string(value ? value : "")) {}
    explicit HATAttr(const HATStringList& value) : m_type(HATAttrTypes::ATTR_STRING_LIST), m_list(value) {}

    HATAttrTypes::AttrType getType() const { return m_type; }
    bool getBoolVal() const { return m_bool; }
    int getIntVal() const { return m_int; }
    const HATStringList& getListVal() const { return m_list; }
    // The value as text: booleans as 1 and 0, integers in decimal, lists as their string rep.
    std::string getCharStringVal() const;

private:
    HATAttrTypes::AttrType m_type = HATAttrTypes::ATTR_STRING;
    bool m_bool = false;
    int m_int = 0;
    std::string m_string;
    HATStringList m_list;
};

#endif

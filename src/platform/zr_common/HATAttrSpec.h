// What the property service knows of one property besides its value.
#ifndef ZR_COMMON_HATATTRSPEC_H
#define ZR_COMMON_HATATTRSPEC_H

#include <string>

#include "HATAttrTypes.h"

class HATAttrSpec {
public:
    HATAttrTypes::AttrType getAttrType() const { return m_type; }
    void setAttrType(HATAttrTypes::AttrType type) { m_type = type; }
    bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly) { m_readOnly = readOnly; }
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible) { m_visible = visible; }

    // Text shown as a warning whenever the property is read; empty for none.
    std::string advisoryText;

private:
    HATAttrTypes::AttrType m_type = HATAttrTypes::ATTR_STRING;
    bool m_readOnly = false;
    bool m_visible = true;
};

#endif

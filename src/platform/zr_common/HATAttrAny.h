// The result slot of a property read: holds a string, a boolean, an integer
// or a list of strings, whichever the property function published.
#ifndef ZR_COMMON_HATATTRANY_H
#define ZR_COMMON_HATATTRANY_H

#include <string>

#include <boost/any.hpp>

#include "HATAttr.h"

class HATAttrAny {
public:
    bool empty() const { return m_value.empty(); }
    void clear() { m_value = boost::any(); }
    boost::any& value() { return m_value; }
    const boost::any& value() const { return m_value; }

    // The held value, or null when it holds another type.
    template <class T>
    const T* get() const {
        return boost::any_cast<T>(&m_value);
    }

    // The same value as a typed attribute; an empty slot gives the empty string.
    HATAttr toAttr() const;
    std::string toString() const { return toAttr().getCharStringVal(); }

private:
    boost::any m_value;
};

#endif

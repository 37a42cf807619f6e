// What the file models read of an element: attributes with a missing one as
// empty text, and tags compared without regard to case.
#ifndef HBMELEMENTTEXT_H
#define HBMELEMENTTEXT_H

#include <string>

#include "HSTStringUtils.h"
#include "HXMLWElement.h"

namespace HBMElementText {

inline std::string attr(const HXMLWElement* e, const char* name) {
    const char* value = e->getAttribute(name);
    return value ? value : "";
}

inline bool hasTag(const HXMLWElement* e, const char* tag) {
    const char* name = e->getTagName();
    return HSTStringUtils::iequals(name ? name : "", tag);
}

}  // namespace HBMElementText

#endif

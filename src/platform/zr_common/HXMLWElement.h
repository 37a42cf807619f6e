// A read-only XML element tree.
#ifndef ZR_COMMON_HXMLWELEMENT_H
#define ZR_COMMON_HXMLWELEMENT_H

#include <memory>
#include <vector>

class HXMLWElement;
using HXMLWElementList = std::vector<HXMLWElement*>;

class HXMLWElement {
public:
    virtual ~HXMLWElement();
    virtual const char* getTagName() const = 0;
    // Concatenated character data directly inside this element.
    virtual const char* getText() const = 0;
    // Null when the attribute is missing.
    virtual const char* getAttribute(const char* name) const = 0;
    virtual int getAttributeCount() const = 0;
    virtual const char* getAttributeName(int index) const = 0;
    virtual int getChildCount() const = 0;
    virtual HXMLWElement* getChild(int index) const = 0;
    // Stays empty when there are no children.
    virtual void getChildren(std::shared_ptr<HXMLWElementList>& out) const = 0;
    // Where the element's start tag begins in its document, 1-based; 0 when
    // not known (the column of a tag that a parser reports without one).
    virtual int getLine() const { return 0; }
    virtual int getColumn() const { return 0; }
};

#endif

// Small helpers for building Tcl text.
#ifndef ZR_COMMON_HTCTASKHELPERS_H
#define ZR_COMMON_HTCTASKHELPERS_H

#include <string>

class HTCTaskHelpers {
public:
    // `text` in Tcl braces: "{" text "}", always, so that a reader sees one element.
    static std::string brace(const std::string& text);
};

#endif

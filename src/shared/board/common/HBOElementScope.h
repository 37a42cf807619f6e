// The position of one element of a board file for every message built while
// the reader handles it (see ComMsgPositionScope); `file` must outlive it.
#ifndef HBOELEMENTSCOPE_H
#define HBOELEMENTSCOPE_H

#include <string>

#include "ComMsgPosition.h"
#include "HXMLWElement.h"

class HBOElementScope : public ComMsgPositionScope {
public:
    HBOElementScope(const std::string& file, const HXMLWElement* e)
        : ComMsgPositionScope(file, e ? e->getLine() : 0, e ? e->getColumn() : 0) {}
};

#endif

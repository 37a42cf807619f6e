// A list of strings as properties publish it.
#ifndef ZR_COMMON_HATSTRINGLIST_H
#define ZR_COMMON_HATSTRINGLIST_H

#include <string>

#include "HSTVector.h"
#include "tcl_collection.h"

typedef zrc::tcltasks::tcl_collection<HSTVector<std::string>> HATStringList;

#endif

#ifndef ZR_COMMON_HEXERROR_H
#define ZR_COMMON_HEXERROR_H
#include "HEXAll.h"
#endif

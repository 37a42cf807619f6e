#ifndef ZR_COMMON_HUTFILEUTILS_H
#define ZR_COMMON_HUTFILEUTILS_H
#include "HUTFile.h"
#endif

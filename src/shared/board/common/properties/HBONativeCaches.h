// The Tcl and Python native caches of the fourteen scripted pointer types,
// instantiated once here for the library and its users.
#ifndef HBONATIVECACHES_H
#define HBONATIVECACHES_H

#include "native_cache.h"
#include "py_native_cache.h"

class HBMPin;
class HBOBoard;
class HBOBoardBus;
class HBOBoardBusNet;
class HBOBoardComponent;
class HBOBusIf;
class HBOBusIfPreference;
class HBOComponentMode;
class HBOImage;
class HBOIpPreset;
class HBOJumper;
class HBOModelPort;
class HBOParameter;
class HBOPinProps;

extern template class zrc::tcltasks::native_cache<HBMPin*>;
extern template class zrc::tcltasks::native_cache<HBOBoard*>;
extern template class zrc::tcltasks::native_cache<HBOBoardBus*>;
extern template class zrc::tcltasks::native_cache<HBOBoardBusNet*>;
extern template class zrc::tcltasks::native_cache<HBOBoardComponent*>;
extern template class zrc::tcltasks::native_cache<HBOBusIf*>;
extern template class zrc::tcltasks::native_cache<HBOBusIfPreference*>;
extern template class zrc::tcltasks::native_cache<HBOComponentMode*>;
extern template class zrc::tcltasks::native_cache<HBOImage*>;
extern template class zrc::tcltasks::native_cache<HBOIpPreset*>;
extern template class zrc::tcltasks::native_cache<HBOJumper*>;
extern template class zrc::tcltasks::native_cache<HBOModelPort*>;
extern template class zrc::tcltasks::native_cache<HBOParameter*>;
extern template class zrc::tcltasks::native_cache<HBOPinProps*>;

extern template class zrc::pyinfra::py_native_cache<HBMPin*>;
extern template class zrc::pyinfra::py_native_cache<HBOBoard*>;
extern template class zrc::pyinfra::py_native_cache<HBOBoardBus*>;
extern template class zrc::pyinfra::py_native_cache<HBOBoardBusNet*>;
extern template class zrc::pyinfra::py_native_cache<HBOBoardComponent*>;
extern template class zrc::pyinfra::py_native_cache<HBOBusIf*>;
extern template class zrc::pyinfra::py_native_cache<HBOBusIfPreference*>;
extern template class zrc::pyinfra::py_native_cache<HBOComponentMode*>;
extern template class zrc::pyinfra::py_native_cache<HBOImage*>;
extern template class zrc::pyinfra::py_native_cache<HBOIpPreset*>;
extern template class zrc::pyinfra::py_native_cache<HBOJumper*>;
extern template class zrc::pyinfra::py_native_cache<HBOModelPort*>;
extern template class zrc::pyinfra::py_native_cache<HBOParameter*>;
extern template class zrc::pyinfra::py_native_cache<HBOPinProps*>;

#endif

#include "HBONativeCaches.h"

template class zrc::tcltasks::native_cache<HBMPin*>;
template class zrc::tcltasks::native_cache<HBOBoard*>;
template class zrc::tcltasks::native_cache<HBOBoardBus*>;
template class zrc::tcltasks::native_cache<HBOBoardBusNet*>;
template class zrc::tcltasks::native_cache<HBOBoardComponent*>;
template class zrc::tcltasks::native_cache<HBOBusIf*>;
template class zrc::tcltasks::native_cache<HBOBusIfPreference*>;
template class zrc::tcltasks::native_cache<HBOComponentMode*>;
template class zrc::tcltasks::native_cache<HBOImage*>;
template class zrc::tcltasks::native_cache<HBOIpPreset*>;
template class zrc::tcltasks::native_cache<HBOJumper*>;
template class zrc::tcltasks::native_cache<HBOModelPort*>;
template class zrc::tcltasks::native_cache<HBOParameter*>;
template class zrc::tcltasks::native_cache<HBOPinProps*>;

template class zrc::pyinfra::py_native_cache<HBMPin*>;
template class zrc::pyinfra::py_native_cache<HBOBoard*>;
template class zrc::pyinfra::py_native_cache<HBOBoardBus*>;
template class zrc::pyinfra::py_native_cache<HBOBoardBusNet*>;
template class zrc::pyinfra::py_native_cache<HBOBoardComponent*>;
template class zrc::pyinfra::py_native_cache<HBOBusIf*>;
template class zrc::pyinfra::py_native_cache<HBOBusIfPreference*>;
template class zrc::pyinfra::py_native_cache<HBOComponentMode*>;
template class zrc::pyinfra::py_native_cache<HBOImage*>;
template class zrc::pyinfra::py_native_cache<HBOIpPreset*>;
template class zrc::pyinfra::py_native_cache<HBOJumper*>;
template class zrc::pyinfra::py_native_cache<HBOModelPort*>;
template class zrc::pyinfra::py_native_cache<HBOParameter*>;
template class zrc::pyinfra::py_native_cache<HBOPinProps*>;

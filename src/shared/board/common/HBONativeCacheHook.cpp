#include "HBONativeCacheHook.h"

#include <typeindex>
#include <unordered_map>

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOImage.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBOModelPort.h"
#include "HBONativeCaches.h"
#include "HBOParameter.h"
#include "HBOPinProps.h"
#include "HCPProperty.h"

namespace HBONativeCacheHook {

namespace {

typedef void (*Remover)(const void*);

// The Tcl handles first, then the Python ones; a failure of either must not
// keep the other from running.
template <class T>
void removeFromCaches(const void* obj) {
    try {
        zrc::tcltasks::native_cache<T*>::remove(static_cast<const T*>(obj));
    } catch (...) {
    }
    zrc::pyinfra::py_native_cache<T*>::remove(static_cast<const T*>(obj));
}

// Undo and redo of a jumper write touch the jumper and its board; once either
// is gone, the history that names it can't be replayed.
template <class T>
void removeFromCachesAndHistory(const void* obj) {
    removeFromCaches<T>(obj);
    HCPProperty::clearHistory();
}

// Per scripted type, the remover of its Tcl and Python caches.
const std::unordered_map<std::type_index, Remover>& cacheRemovers() {
    static const std::unordered_map<std::type_index, Remover> removers = {
        {typeid(HBOBoard), removeFromCachesAndHistory<HBOBoard>},
        {typeid(HBOBoardBus), removeFromCaches<HBOBoardBus>},
        {typeid(HBOBoardBusNet), removeFromCaches<HBOBoardBusNet>},
        {typeid(HBOBoardComponent), removeFromCaches<HBOBoardComponent>},
        {typeid(HBOBusIf), removeFromCaches<HBOBusIf>},
        {typeid(HBOBusIfPreference), removeFromCaches<HBOBusIfPreference>},
        {typeid(HBOComponentMode), removeFromCaches<HBOComponentMode>},
        {typeid(HBOImage), removeFromCaches<HBOImage>},
        {typeid(HBOIpPreset), removeFromCaches<HBOIpPreset>},
        {typeid(HBOJumper), removeFromCachesAndHistory<HBOJumper>},
        {typeid(HBOModelPort), removeFromCaches<HBOModelPort>},
        {typeid(HBOParameter), removeFromCaches<HBOParameter>},
        {typeid(HBOPinProps), removeFromCaches<HBOPinProps>},
    };
    return removers;
}

}  // namespace

void removeObject(const std::type_info& type, const void* obj) noexcept {
    // A destructor must go on whatever the script layers answer.
    try {
        // A board is freed in runs of objects of one type: the remover of the
        // last type answers most calls without hashing the type's name.
        thread_local const std::type_info* lastType = nullptr;
        thread_local Remover lastRemover = nullptr;
        if (!lastType || *lastType != type) {
            auto it = cacheRemovers().find(type);
            lastRemover = it != cacheRemovers().end() ? it->second : nullptr;
            lastType = &type;
        }
        if (lastRemover)
            lastRemover(obj);
    } catch (...) {
    }
}

}  // namespace HBONativeCacheHook

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

template <class T>
void removeFromTcl(const void* obj) {
    zrc::tcltasks::native_cache<T*>::remove(static_cast<const T*>(obj));
}

// Undo and redo of a jumper write touch the jumper and its board; once either
// is gone, the history that names it can't be replayed.
template <class T>
void removeFromTclAndHistory(const void* obj) {
    removeFromTcl<T>(obj);
    HCPProperty::clearHistory();
}

// Per scripted type, the remover of its Tcl cache. The Python caches' removers
// go beside these, to be called after the Tcl one.
const std::unordered_map<std::type_index, Remover>& tclRemovers() {
    static const std::unordered_map<std::type_index, Remover> removers = {
        {typeid(HBOBoard), removeFromTclAndHistory<HBOBoard>},
        {typeid(HBOBoardBus), removeFromTcl<HBOBoardBus>},
        {typeid(HBOBoardBusNet), removeFromTcl<HBOBoardBusNet>},
        {typeid(HBOBoardComponent), removeFromTcl<HBOBoardComponent>},
        {typeid(HBOBusIf), removeFromTcl<HBOBusIf>},
        {typeid(HBOBusIfPreference), removeFromTcl<HBOBusIfPreference>},
        {typeid(HBOComponentMode), removeFromTcl<HBOComponentMode>},
        {typeid(HBOImage), removeFromTcl<HBOImage>},
        {typeid(HBOIpPreset), removeFromTcl<HBOIpPreset>},
        {typeid(HBOJumper), removeFromTclAndHistory<HBOJumper>},
        {typeid(HBOModelPort), removeFromTcl<HBOModelPort>},
        {typeid(HBOParameter), removeFromTcl<HBOParameter>},
        {typeid(HBOPinProps), removeFromTcl<HBOPinProps>},
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
            auto it = tclRemovers().find(type);
            lastRemover = it != tclRemovers().end() ? it->second : nullptr;
            lastType = &type;
        }
        if (lastRemover)
            lastRemover(obj);
    } catch (...) {
    }
}

}  // namespace HBONativeCacheHook

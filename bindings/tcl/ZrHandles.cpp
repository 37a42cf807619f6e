#include "ZrHandles.h"

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBOModelPort.h"
#include "HBONativeCaches.h"
#include "HBOParameter.h"
#include "HBOPinProps.h"
#include "native_handle.h"

namespace zrtcl {

using zrc::tcltasks::native_cache;
using zrc::tcltasks::native_handle;

namespace {

struct TypeOps {
    const std::type_info* type;
    Tcl_Obj* (*handle)(void*);
    // Live handles of this type whose text is text.
    void (*byText)(const std::string& text, std::vector<Ref>& out);
};

template <class T>
Tcl_Obj* handleOfT(void* p) {
    return handleOf(static_cast<T*>(p));
}
template <class T>
void byTextT(const std::string& text, std::vector<Ref>& out) {
    for (const auto& entry : native_cache<T*>::get_t2n_cache())
        if (native_handle::is_handle(entry.first) && !native_handle::is_invalid(entry.first) &&
            text == Tcl_GetString(entry.first))
            out.push_back(refOf(entry.second));
}

template <class T>
TypeOps opsOf() {
    return TypeOps{&typeid(T*), handleOfT<T>, byTextT<T>};
}

const std::vector<TypeOps>& types() {
    static const std::vector<TypeOps> all = {
        opsOf<HBOBoard>(),
        opsOf<HBOBoardComponent>(),
        opsOf<HBOBusIf>(),
        opsOf<HBOModelPort>(),
        opsOf<HBOPinProps>(),
        opsOf<HBOComponentMode>(),
        opsOf<HBOJumper>(),
        opsOf<HBOParameter>(),
        opsOf<HBOBoardBus>(),
        opsOf<HBOBoardBusNet>(),
        opsOf<HBOBusIfPreference>(),
        opsOf<HBOIpPreset>(),
    };
    return all;
}

const TypeOps* opsFor(const std::type_info& type) {
    for (const TypeOps& ops : types())
        if (*ops.type == type)
            return &ops;
    return nullptr;
}

void setError(Tcl_Interp* interp, const std::string& text) {
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text.data(), static_cast<int>(text.size())));
}

// One value: a live handle, or the text of exactly one live handle (a script
// may have turned the handle into plain text, say by using it as a list).
bool resolveOne(Tcl_Interp* interp, Tcl_Obj* value, std::vector<Ref>& out) {
    if (native_handle::is_handle(value)) {
        if (native_handle::is_invalid(value)) {
            setError(interp, std::string("object '") + Tcl_GetString(value) + "' no longer exists");
            return false;
        }
        Ref r;
        r.type = native_handle::type(value);
        r.object = native_handle::native(value);
        out.push_back(r);
        return true;
    }
    std::string text = Tcl_GetString(value);
    std::vector<Ref> found;
    for (const TypeOps& ops : types())
        ops.byText(text, found);
    if (found.size() == 1) {
        out.push_back(found[0]);
        return true;
    }
    setError(interp, found.empty() ? "'" + text + "' is not a board object"
                                   : "'" + text + "' names several board objects; pass the object itself");
    return false;
}

}  // namespace

template <class T>
Tcl_Obj* handleOf(T* object) {
    auto range = native_cache<T*>::get_n2t_cache().equal_range(object);
    for (auto it = range.first; it != range.second; ++it)
        if (native_handle::is_handle(it->second) && !native_handle::is_invalid(it->second))
            return it->second;
    Tcl_Obj* h = native_handle::make(typeid(T*), object, nameOf(refOf(object)));
    native_cache<T*>::add(object, h);
    return h;
}

template Tcl_Obj* handleOf(HBOBoard*);
template Tcl_Obj* handleOf(HBOBoardBus*);
template Tcl_Obj* handleOf(HBOBoardBusNet*);
template Tcl_Obj* handleOf(HBOBoardComponent*);
template Tcl_Obj* handleOf(HBOBusIf*);
template Tcl_Obj* handleOf(HBOBusIfPreference*);
template Tcl_Obj* handleOf(HBOComponentMode*);
template Tcl_Obj* handleOf(HBOIpPreset*);
template Tcl_Obj* handleOf(HBOJumper*);
template Tcl_Obj* handleOf(HBOModelPort*);
template Tcl_Obj* handleOf(HBOParameter*);
template Tcl_Obj* handleOf(HBOPinProps*);

bool resolve(Tcl_Interp* interp, Tcl_Obj* value, std::vector<Ref>& out) {
    if (native_handle::is_handle(value))
        return resolveOne(interp, value, out);
    int n = 0;
    Tcl_Obj** items = nullptr;
    // A single text that is not a list is tried as one object.
    if (Tcl_ListObjGetElements(nullptr, value, &n, &items) != TCL_OK)
        return resolveOne(interp, value, out);
    for (int i = 0; i < n; ++i)
        if (!resolveOne(interp, items[i], out))
            return false;
    return true;
}

Tcl_Obj* handleList(const std::vector<Ref>& refs) {
    Tcl_Obj* list = Tcl_NewListObj(0, nullptr);
    for (const Ref& r : refs)
        Tcl_ListObjAppendElement(nullptr, list, opsFor(*r.type)->handle(r.object));
    return list;
}

}  // namespace zrtcl

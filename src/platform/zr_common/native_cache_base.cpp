#include "native_cache_base.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "ComMsgMgr.h"
#include "native_handle.h"

namespace zrc {
namespace tcltasks {

namespace {
// A plain flag: it must outlive every cache and still read right during exit.
bool g_exiting = false;
void onProcessExit() { g_exiting = true; }
}  // namespace

bool native_cache_base::tcl_exiting() { return g_exiting; }
void native_cache_base::set_tcl_exiting(bool exiting) { g_exiting = exiting; }

void native_cache_base::error(const char* text) {
    ComMsgMgr::sendMessage(
        ComMsgMgrInstance(1, __FILE__, __LINE__, "common", ComMsgMgr::MSG_ERROR, "%s", {text ? text : ""}));
}

void native_cache_base::mark_invalid(Tcl_Obj* obj) { native_handle::mark_invalid(obj); }
void native_cache_base::decr_refcount(Tcl_Obj* obj) { Tcl_DecrRefCount(obj); }

// Each cache calls this right after it is made, so the handler runs before that
// cache's destructor (exit handlers and static destructors run in reverse order).
void native_cache_base::watch_process_exit() { std::atexit(onProcessExit); }

// ---- Handles ----

namespace {

struct HandleRep {
    void* native;
    const std::type_info* type;
    std::string text;
};

void freeRep(Tcl_Obj* obj);
void dupRep(Tcl_Obj* src, Tcl_Obj* dup);
void updateString(Tcl_Obj* obj);

// No setFromAny: a handle can't be made from text, only by the layer that owns the object.
const Tcl_ObjType handleType = {"zrc_native_handle", freeRep, dupRep, updateString, nullptr};

HandleRep* repOf(Tcl_Obj* obj) {
    return obj && obj->typePtr == &handleType ? static_cast<HandleRep*>(obj->internalRep.twoPtrValue.ptr1)
                                              : nullptr;
}

void freeRep(Tcl_Obj* obj) {
    delete static_cast<HandleRep*>(obj->internalRep.twoPtrValue.ptr1);
    obj->typePtr = nullptr;
}

// A copy is no handle: only the original is known to the caches, and a copy
// that outlived its object would never be told.
void dupRep(Tcl_Obj*, Tcl_Obj* dup) { dup->typePtr = nullptr; }

void updateString(Tcl_Obj* obj) {
    const std::string& text = static_cast<HandleRep*>(obj->internalRep.twoPtrValue.ptr1)->text;
    obj->bytes = Tcl_Alloc(static_cast<unsigned>(text.size() + 1));
    std::copy(text.begin(), text.end(), obj->bytes);
    obj->bytes[text.size()] = '\0';
    obj->length = static_cast<int>(text.size());
}

}  // namespace

Tcl_Obj* native_handle::make(const std::type_info& type, void* native, const std::string& text) {
    Tcl_Obj* obj = Tcl_NewObj();
    Tcl_InvalidateStringRep(obj);
    obj->internalRep.twoPtrValue.ptr1 = new HandleRep{native, &type, text};
    obj->internalRep.twoPtrValue.ptr2 = nullptr;
    obj->typePtr = &handleType;
    return obj;
}

bool native_handle::is_handle(Tcl_Obj* obj) { return repOf(obj) != nullptr; }

void* native_handle::native(Tcl_Obj* obj) {
    HandleRep* rep = repOf(obj);
    return rep ? rep->native : nullptr;
}

const std::type_info* native_handle::type(Tcl_Obj* obj) {
    HandleRep* rep = repOf(obj);
    return rep ? rep->type : nullptr;
}

bool native_handle::is_invalid(Tcl_Obj* obj) {
    HandleRep* rep = repOf(obj);
    return rep && !rep->native;
}

void native_handle::mark_invalid(Tcl_Obj* obj) {
    if (HandleRep* rep = repOf(obj))
        rep->native = nullptr;
}

}  // namespace tcltasks
}  // namespace zrc

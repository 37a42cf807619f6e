#include "py_native_cache_base.h"

#include <cstdlib>

#include "ComMsgMgr.h"

namespace zrc {
namespace pyinfra {

namespace {
// Plain values: they must outlive every cache and still read right during exit.
bool g_exiting = false;
py_native_cache_base::marker g_marker = nullptr;
void onProcessExit() { g_exiting = true; }
}  // namespace

bool py_native_cache_base::py_exiting() { return g_exiting; }
void py_native_cache_base::set_py_exiting(bool exiting) { g_exiting = exiting; }

void py_native_cache_base::error(const char* text) {
    ComMsgMgr::sendMessage(
        ComMsgMgrInstance(1, __FILE__, __LINE__, "common", ComMsgMgr::MSG_ERROR, "%s", {text ? text : ""}));
}

void py_native_cache_base::mark_invalid(PyObject* obj) {
    if (g_marker && obj)
        g_marker(obj);
}

void py_native_cache_base::set_marker(marker m) { g_marker = m; }

// Each cache calls this right after it is made, so the handler runs before
// that cache's destructor (exit handlers and static destructors run in
// reverse order).
void py_native_cache_base::watch_process_exit() { std::atexit(onProcessExit); }

}  // namespace pyinfra
}  // namespace zrc

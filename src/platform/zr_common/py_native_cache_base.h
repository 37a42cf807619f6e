// What every per-type Python cache shares: the exit test, error reports, and
// the invalidation of a Python handle. The handles themselves belong to the
// Python layer, which installs its marker when it loads; until then no
// handle can exist, and there is nothing to mark.
#ifndef ZR_COMMON_PY_NATIVE_CACHE_BASE_H
#define ZR_COMMON_PY_NATIVE_CACHE_BASE_H

#include "py_object.h"

namespace zrc {
namespace pyinfra {

class py_native_cache_base {
public:
    typedef void (*marker)(PyObject*);

    // True once the interpreter or the process is shutting down; the caches
    // are no longer trusted then.
    static bool py_exiting();
    static void set_py_exiting(bool exiting);
    static void error(const char* text);
    static void mark_invalid(PyObject* obj);
    static void set_marker(marker m);

protected:
    // Sets the exit flag when the process ends, before the caches made so far
    // are destroyed.
    static void watch_process_exit();
};

}  // namespace pyinfra
}  // namespace zrc

#endif

// What every per-type native cache shares: the exit test, error reports, and
// the invalidation of a Tcl handle.
#ifndef ZR_COMMON_NATIVE_CACHE_BASE_H
#define ZR_COMMON_NATIVE_CACHE_BASE_H

#include <tcl.h>

namespace zrc {
namespace tcltasks {

class native_cache_base {
public:
    // True once the interpreter or the process is shutting down; the caches are
    // no longer trusted then.
    static bool tcl_exiting();
    static void set_tcl_exiting(bool exiting);
    static void error(const char* text);
    static void mark_invalid(Tcl_Obj* obj);
    static void decr_refcount(Tcl_Obj* obj);

protected:
    // Sets the exit flag when the process ends, before the caches made so far
    // are destroyed.
    static void watch_process_exit();
};

}  // namespace tcltasks
}  // namespace zrc

#endif

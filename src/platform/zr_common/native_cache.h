// The tie between native objects of one type and their Tcl handles. The Tcl
// layer fills both maps (each entry holding a reference on the handle); a
// native object's destructor calls remove, which invalidates its handles.
#ifndef ZR_COMMON_NATIVE_CACHE_H
#define ZR_COMMON_NATIVE_CACHE_H

#include <unordered_map>

#include <boost/functional/hash.hpp>

#include "native_cache_base.h"

namespace zrc {
namespace tcltasks {

template <class T>
class native_cache;

template <class T>
class native_cache<T*> : public native_cache_base {
public:
    typedef std::unordered_multimap<const T*, Tcl_Obj*, boost::hash<const T*>> n2t_map;
    typedef std::unordered_map<Tcl_Obj*, T*, boost::hash<Tcl_Obj*>> t2n_map;

    static n2t_map& get_n2t_cache() {
        static n2t_map cache;
        static bool watched = (watch_process_exit(), true);
        (void)watched;
        flag() = true;
        observers();
        return cache;
    }
    static t2n_map& get_t2n_cache() {
        static t2n_map cache;
        static bool watched = (watch_process_exit(), true);
        (void)watched;
        return cache;
    }
    // True once a cache was used; cleared for good when the exit test answers true.
    static bool& observers() {
        bool& f = flag();
        if (f && tcl_exiting())
            f = false;
        return f;
    }

    // Files a handle of p, taking a reference on it.
    static void add(T* p, Tcl_Obj* handle) {
        Tcl_IncrRefCount(handle);
        get_n2t_cache().emplace(p, handle);
        get_t2n_cache()[handle] = p;
    }

    // Invalidates and drops every handle of p.
    static void remove(const T* p) {
        bool& f = flag();
        if (!f)
            return;
        if (tcl_exiting()) {
            f = false;
            return;
        }
        n2t_map& n2t = get_n2t_cache();
        auto range = n2t.equal_range(p);
        if (range.first == range.second)
            return;
        t2n_map& t2n = get_t2n_cache();
        for (auto it = range.first; it != range.second; ++it) {
            Tcl_Obj* handle = it->second;
            auto back = t2n.find(handle);
            if (back == t2n.end())
                error("native_cache<> corrupt");
            else
                t2n.erase(back);
            mark_invalid(handle);
            decr_refcount(handle);
        }
        n2t.erase(range.first, range.second);
    }

private:
    static bool& flag() {
        static bool observed = false;
        return observed;
    }
};

}  // namespace tcltasks
}  // namespace zrc

#endif

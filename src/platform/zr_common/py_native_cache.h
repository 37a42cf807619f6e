// The tie between native objects of one type and their Python handles. The
// Python layer fills both maps; a native object's destructor calls remove,
// which invalidates its handles. The handles are never released here: their
// lifetime is the Python layer's.
#ifndef ZR_COMMON_PY_NATIVE_CACHE_H
#define ZR_COMMON_PY_NATIVE_CACHE_H

#include <unordered_map>

#include <boost/functional/hash.hpp>

#include "py_native_cache_base.h"

namespace zrc {
namespace pyinfra {

template <class T>
class py_native_cache;

template <class T>
class py_native_cache<T*> : public py_native_cache_base {
public:
    typedef std::unordered_multimap<const T*, PyObject*, boost::hash<const T*>> n2py_map;
    typedef std::unordered_map<PyObject*, T*, boost::hash<PyObject*>> py2n_map;

    static n2py_map& get_n2py_cache() {
        static n2py_map cache;
        static bool watched = (watch_process_exit(), true);
        (void)watched;
        flag() = true;
        observers();
        return cache;
    }
    static py2n_map& get_py2n_cache() {
        static py2n_map cache;
        static bool watched = (watch_process_exit(), true);
        (void)watched;
        return cache;
    }
    // True once a cache was used; cleared for good when the exit test answers true.
    static bool& observers() {
        bool& f = flag();
        if (f && py_exiting())
            f = false;
        return f;
    }

    // Files a handle of p.
    static void add(T* p, PyObject* handle) {
        get_n2py_cache().emplace(p, handle);
        get_py2n_cache()[handle] = p;
    }

    // Invalidates and drops every handle of p.
    static void remove(const T* p) {
        bool& f = flag();
        if (!f)
            return;
        if (py_exiting()) {
            f = false;
            return;
        }
        n2py_map& n2py = get_n2py_cache();
        auto range = n2py.equal_range(p);
        if (range.first == range.second)
            return;
        py2n_map& py2n = get_py2n_cache();
        for (auto it = range.first; it != range.second; ++it) {
            PyObject* handle = it->second;
            auto back = py2n.find(handle);
            if (back == py2n.end())
                error("py_native_cache<> corrupt");
            else
                py2n.erase(back);
            mark_invalid(handle);
        }
        n2py.erase(range.first, range.second);
    }

private:
    static bool& flag() {
        static bool observed = false;
        return observed;
    }
};

}  // namespace pyinfra
}  // namespace zrc

#endif

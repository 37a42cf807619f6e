// The Python handle of one element of an object collection that reached
// Python. The Python caches map a native object to these handles; when the
// object is deleted, its handles replace their element by a py_dead_object,
// so that any later use of the collection is told instead of touching freed
// memory. Each handle holds a reference on the collection's body.
#ifndef ZR_COMMON_PY_HANDLE_H
#define ZR_COMMON_PY_HANDLE_H

#include <Python.h>

#include <cstddef>
#include <string>

#include "HSTVector.h"
#include "tcl_collection.h"

namespace zrc {
namespace pyinfra {

typedef tcltasks::tcl_collection<HSTVector<tcltasks::tclany>> py_object_collection;

// What an element of an object collection becomes when its object is deleted.
struct py_dead_object {
    std::string kind;  // as users know it: "board", "board_component", ...
    std::string name;
};

}  // namespace pyinfra

// A dead element shows its object's name.
template <>
inline std::string tcltasks::tclany_holder<pyinfra::py_dead_object>::to_string() const {
    return held.name;
}

namespace pyinfra {

class py_handle {
public:
    // A new handle (a new reference) of element index of body.
    static PyObject* make(py_object_collection::wrapper_type* body, std::size_t index, const std::string& kind,
                          const std::string& name);
    static bool is_handle(PyObject* obj);
    static bool is_invalid(PyObject* obj);
    // Replaces the element by its py_dead_object; does nothing to another object.
    static void mark_invalid(PyObject* obj);
};

// Throws HTCErrors::error "KIND 'NAME' no longer exists" when value is a dead element.
void check_alive(const tcltasks::tclany& value);

}  // namespace pyinfra
}  // namespace zrc

#endif

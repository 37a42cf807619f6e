// Properties of the objects of a collection, as Python reads and writes them
// through a container's attributes.
#ifndef ZR_COMMON_PY_CONTAINER_PROPERTY_H
#define ZR_COMMON_PY_CONTAINER_PROPERTY_H

#include <Python.h>

#include <string>

#include "py_handle.h"

namespace zrc {
namespace pyinfra {

struct py_container_property {
    // True when the object has a property of that name (any case), ordinary or
    // dynamic. Throws HTCErrors::error for a deleted object.
    static bool isProperty(const tcltasks::tclany& object, const std::string& name);
};

struct py_container_get_property {
    // A new reference: the value of one object, or a list with the value of
    // each object (None where an object has no such property). Throws
    // HTCErrors::error for a deleted object.
    static PyObject* get_property(const py_object_collection& objects, const std::string& name);
};

struct py_container_set_property {
    // Writes value (its text; True and False as "true" and "false") to every
    // object through the property service, so that undo can take it back.
    // Throws HTCErrors::error when the service refuses or an object is deleted.
    static void set_property(const py_object_collection& objects, PyObject* value, const std::string& name);
};

}  // namespace pyinfra
}  // namespace zrc

#endif

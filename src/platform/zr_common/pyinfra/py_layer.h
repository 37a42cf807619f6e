// The Python side of the host layer as one piece: what a Python module that
// carries board objects calls once when it is imported, and the translation
// of C++ failures into Python exceptions, so that none ever crosses into Python.
#ifndef ZR_COMMON_PY_LAYER_H
#define ZR_COMMON_PY_LAYER_H

#include <Python.h>

#include <exception>

namespace zrc {
namespace pyinfra {

class py_layer {
public:
    // Makes module the Python manager's module, adds the exception type
    // "Error" to it, installs the handle marker, switches the property
    // service to Python mode and watches the interpreter's exit. False, with
    // a Python error set, when the module can't take the exception type.
    static bool attach(PyObject* module);
    // The module's exception type (RuntimeError until attach).
    static PyObject* error_type();
    // Sets the Python error for the exception in flight: IndexError for an
    // index out of range, TypeError for a value of the wrong type, the
    // module's Error for every other failure.
    static void set_error_from_current();

    // Runs f, which returns a new reference or null with a Python error set;
    // a C++ exception becomes a Python error and null.
    template <class F>
    static PyObject* guard(F f) {
        try {
            return f();
        } catch (...) {
            set_error_from_current();
            return nullptr;
        }
    }
};

}  // namespace pyinfra
}  // namespace zrc

#endif

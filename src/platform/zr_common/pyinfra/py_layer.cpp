#include "py_layer.h"

#include <string>

#include <boost/any.hpp>

#include "HCPPropertyLaunchMode.h"
#include "HTCErrors.h"
#include "py_handle.h"
#include "py_manager.h"
#include "py_native_cache_base.h"

namespace zrc {
namespace pyinfra {

namespace {
PyObject* g_error = nullptr;

// Past this point the interpreter is gone: no handle may be touched.
void onInterpreterExit() { py_native_cache_base::set_py_exiting(true); }
}  // namespace

bool py_layer::attach(PyObject* module) {
    if (!g_error) {
        std::string name = std::string(PyModule_GetName(module) ? PyModule_GetName(module) : "zrboard") + ".Error";
        PyErr_Clear();
        g_error = PyErr_NewExceptionWithDoc(name.c_str(),
                                            "A board call failed: bad arguments, an unknown name, a refused "
                                            "write, or an object that no longer exists.",
                                            PyExc_RuntimeError, nullptr);
        if (!g_error)
            return false;
        Py_AtExit(onInterpreterExit);
    }
    Py_INCREF(g_error);
    if (PyModule_AddObject(module, "Error", g_error) < 0) {
        Py_DECREF(g_error);
        return false;
    }
    py_manager::py_tessaraModule = module;
    py_native_cache_base::set_marker(py_handle::mark_invalid);
    HCPProperty::LaunchMode::setPyMode(true);
    return true;
}

PyObject* py_layer::error_type() { return g_error ? g_error : PyExc_RuntimeError; }

void py_layer::set_error_from_current() {
    try {
        throw;
    } catch (const HTCErrors::index_out_of_range& e) {
        PyErr_SetString(PyExc_IndexError, e.what());
    } catch (const HTCErrors::type_error& e) {
        PyErr_SetString(PyExc_TypeError, e.what());
    } catch (const boost::bad_any_cast&) {
        PyErr_SetString(PyExc_TypeError, "the element is a board object, not a string");
    } catch (const std::bad_alloc&) {
        PyErr_NoMemory();
    } catch (const std::exception& e) {
        PyErr_SetString(error_type(), e.what());
    } catch (...) {
        PyErr_SetString(error_type(), "an unknown error occurred");
    }
}

}  // namespace pyinfra
}  // namespace zrc

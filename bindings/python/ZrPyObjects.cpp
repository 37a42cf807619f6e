#include "ZrPyObjects.h"

#include <tcl.h>

#include "HTCErrors.h"
#include "PyContainer.h"
#include "py_handle.h"
#include "py_manager.h"

namespace zrpy {

namespace {

void addRefs(PyObject* value, const char* what, std::vector<Ref>& out) {
    if (isPyContainer(value)) {
        const PyObjectCollection* objects = objectsOf(value);
        if (!objects) {
            if (PyObject_Length(value) == 0)
                return;
            PyErr_Clear();
            throw HTCErrors::type_error(std::string(what) + " takes board objects, not a container of strings");
        }
        for (const zrc::tcltasks::tclany& e : objects->items()) {
            zrc::pyinfra::check_alive(e);
            const HBOScriptTypes::Type* type = HBOScriptTypes::find(e.type());
            void* object = type ? HBOScriptTypes::objectOf(e) : nullptr;
            if (!object)
                throw HTCErrors::type_error(std::string(what) + " takes board objects, not '" + e.to_string() + "'");
            Ref r;
            r.type = type->pointerType;
            r.object = object;
            out.push_back(r);
        }
        return;
    }
    if (PyList_Check(value) || PyTuple_Check(value)) {
        PyObject* seq = PySequence_Fast(value, "");
        if (!seq)
            throw HTCErrors::error("the sequence can't be read");
        const Py_ssize_t n = PySequence_Fast_GET_SIZE(seq);
        try {
            for (Py_ssize_t i = 0; i < n; ++i)
                addRefs(PySequence_Fast_GET_ITEM(seq, i), what, out);
        } catch (...) {
            Py_DECREF(seq);
            throw;
        }
        Py_DECREF(seq);
        return;
    }
    PyObject* text = PyObject_Repr(value);
    std::string shown = text && PyUnicode_AsUTF8(text) ? PyUnicode_AsUTF8(text) : "?";
    Py_XDECREF(text);
    PyErr_Clear();
    throw HTCErrors::type_error(std::string(what) + " takes board objects (a PyContainer, or a list of them), not " +
                                shown);
}

// A container made for a caller: the Python manager keeps no second reference.
PyObject* handOver(PyObject* made) {
    Py_CLEAR(zrc::pyinfra::py_manager::py_result);
    if (!made && !PyErr_Occurred())
        PyErr_SetString(PyExc_RuntimeError, "the PyContainer type could not be set up");
    return made;
}

}  // namespace

std::vector<Ref> refsOf(PyObject* value, const char* what) {
    std::vector<Ref> out;
    addRefs(value, what, out);
    return out;
}

Ref singleRefOf(PyObject* value, const char* what) {
    std::vector<Ref> refs = refsOf(value, what);
    if (refs.size() != 1)
        throw HTCErrors::error(std::string(what) + " takes one object, not " + std::to_string(refs.size()));
    return refs[0];
}

PyObject* containerOf(const std::vector<Ref>& refs) {
    PyObjectCollection objects;
    for (const Ref& r : refs)
        objects.append(r.any());
    return handOver(makePyContainer(objects));
}

PyObject* containerOf(const std::vector<std::string>& texts) {
    PyStringCollection strings;
    for (const std::string& t : texts)
        strings.append(t);
    return handOver(makePyContainer(strings));
}

std::function<bool(const std::string&)> matcher(const char* pattern) {
    if (!pattern)
        return nullptr;
    std::string glob = pattern;
    return [glob](const std::string& name) {
        return Tcl_StringCaseMatch(name.c_str(), glob.c_str(), TCL_MATCH_NOCASE) != 0;
    };
}

void fail(const char* function, const std::string& reason) { throw HTCErrors::error(std::string(function) + ": " + reason); }

}  // namespace zrpy

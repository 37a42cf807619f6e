#include "py_handle.h"


#include "HTCErrors.h"

namespace zrc {
namespace pyinfra {

namespace {

struct HandleObject {
    PyObject_HEAD
    py_object_collection::wrapper_type* body;
    std::size_t index;
    std::string* kind;
    std::string* name;
    bool invalid;
};

void handleDealloc(PyObject* self) {
    HandleObject* h = reinterpret_cast<HandleObject*>(self);
    PyTypeObject* type = Py_TYPE(self);
    if (h->body)
        h->body->decr_ref();
    delete h->kind;
    delete h->name;
    PyObject_Free(self);
    Py_DECREF(type);
}

// Made once, on first use under the interpreter's lock; never freed, since
// handles live as long as their collections.
PyTypeObject* handleType() {
    static PyTypeObject* type = [] {
        static PyType_Slot slots[] = {{Py_tp_dealloc, reinterpret_cast<void*>(handleDealloc)},
                                      {Py_tp_doc, const_cast<char*>("The handle of one board object in a collection")},
                                      {0, nullptr}};
        static PyType_Spec spec = {"zrboard.handle", static_cast<int>(sizeof(HandleObject)), 0, Py_TPFLAGS_DEFAULT,
                                   slots};
        return reinterpret_cast<PyTypeObject*>(PyType_FromSpec(&spec));
    }();
    return type;
}

HandleObject* asHandle(PyObject* obj) {
    PyTypeObject* type = handleType();
    return obj && type && Py_TYPE(obj) == type ? reinterpret_cast<HandleObject*>(obj) : nullptr;
}

}  // namespace

PyObject* py_handle::make(py_object_collection::wrapper_type* body, std::size_t index, const std::string& kind,
                          const std::string& name) {
    PyTypeObject* type = handleType();
    if (!type)
        return nullptr;
    HandleObject* h = PyObject_New(HandleObject, type);
    if (!h)
        return nullptr;
    h->body = body;
    body->incr_ref();
    h->index = index;
    h->kind = new std::string(kind);
    h->name = new std::string(name);
    h->invalid = false;
    return reinterpret_cast<PyObject*>(h);
}

bool py_handle::is_handle(PyObject* obj) { return asHandle(obj) != nullptr; }

bool py_handle::is_invalid(PyObject* obj) {
    HandleObject* h = asHandle(obj);
    return h && h->invalid;
}

void py_handle::mark_invalid(PyObject* obj) {
    HandleObject* h = asHandle(obj);
    if (!h || h->invalid)
        return;
    h->invalid = true;
    HSTVector<tcltasks::tclany>& items = h->body->items();
    if (h->index < items.size())
        items[h->index] = tcltasks::tclany(py_dead_object{*h->kind, *h->name});
}

void check_alive(const tcltasks::tclany& value) {
    if (const py_dead_object* dead = value.get<py_dead_object>())
        throw HTCErrors::error(dead->kind + " '" + dead->name + "' no longer exists");
}

}  // namespace pyinfra
}  // namespace zrc

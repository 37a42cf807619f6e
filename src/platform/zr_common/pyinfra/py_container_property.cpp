#include "py_container_property.h"

#include "HCPProperty.h"
#include "HTCErrors.h"
#include "py_manager.h"

namespace zrc {
namespace pyinfra {

namespace {

// The value of one read as a new reference: the Python manager's result when
// the read published one, else built here.
PyObject* takeResult(const HATAttrAny& value) {
    if (!py_manager::py_result)
        py_manager::publish(value);
    PyObject* result = py_manager::py_result;
    py_manager::py_result = nullptr;
    if (!result && !PyErr_Occurred())
        result = PyUnicode_FromString(value.toString().c_str());
    return result;
}

void dropResult() {
    Py_CLEAR(py_manager::py_result);
}

PyObject* valueOf(const tcltasks::tclany& object, const std::string& name) {
    check_alive(object);
    dropResult();
    HATAttrAny value;
    if (!HCPProperty::getProperty(nullptr, object, name, value)) {
        dropResult();
        Py_RETURN_NONE;
    }
    return takeResult(value);
}

}  // namespace

bool py_container_property::isProperty(const tcltasks::tclany& object, const std::string& name) {
    check_alive(object);
    HCPProperty::ObjectInfo info = HCPProperty::getObjectInfo(object.type());
    if (!info)
        return false;
    if (HCPProperty::Spec* spec = info.findSpec(name))
        return static_cast<bool>(spec->getGetFcn());
    HCPProperty::Spec* dynamic = info.getDefaultSpec();
    if (!dynamic || !dynamic->getGetFcn())
        return false;
    HATAttrAny ignored;
    bool found = dynamic->getGetFcn()(nullptr, object, name, ignored);
    dropResult();
    return found;
}

PyObject* py_container_get_property::get_property(const py_object_collection& objects, const std::string& name) {
    if (objects.size() == 1)
        return valueOf(objects[0], name);
    PyObject* list = PyList_New(static_cast<Py_ssize_t>(objects.size()));
    if (!list)
        return nullptr;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        PyObject* value = nullptr;
        try {
            value = valueOf(objects[i], name);
        } catch (...) {
            Py_DECREF(list);
            throw;
        }
        if (!value) {
            Py_DECREF(list);
            return nullptr;
        }
        PyList_SET_ITEM(list, static_cast<Py_ssize_t>(i), value);
    }
    return list;
}

void py_container_set_property::set_property(const py_object_collection& objects, PyObject* value,
                                             const std::string& name) {
    for (const tcltasks::tclany& o : objects.items())
        check_alive(o);
    std::string text;
    if (PyBool_Check(value)) {
        text = value == Py_True ? "true" : "false";
    } else {
        PyObject* str = PyObject_Str(value);
        const char* utf8 = str ? PyUnicode_AsUTF8(str) : nullptr;
        if (!utf8) {
            Py_XDECREF(str);
            PyErr_Clear();
            throw HTCErrors::error("the value for property '" + name + "' has no text");
        }
        text = utf8;
        Py_DECREF(str);
    }
    if (HCPProperty::setProperty(nullptr, objects, name, HATAttr(text)) != 0)
        throw HTCErrors::error("property '" + name + "' could not be set");
}

}  // namespace pyinfra
}  // namespace zrc

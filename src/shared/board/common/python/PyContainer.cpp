#include "PyContainer.h"

#include <cstring>
#include <mutex>
#include <vector>

#include <boost/any.hpp>

#include "ComMsgMgr.h"
#include "HBMPin.h"
#include "HBOImage.h"
#include "HBONativeCaches.h"
#include "HBOScriptTypes.h"
#include "HEXAll.h"
#include "py_container_property.h"
#include "py_handle.h"
#include "py_layer.h"
#include "py_manager.h"

using zrc::pyinfra::py_layer;
using zrc::pyinfra::py_manager;
using zrc::tcltasks::tclany;

namespace {

typedef PyStringCollection::wrapper_type StringBody;
typedef PyObjectCollection::wrapper_type ObjectBody;

const char* const kCapsuleKey = "nativeObjPtr";
// Capsule contexts: which kind of collection a capsule carries. A capsule
// without one of these (one a script made) carries nothing.
const char kStringsTag = 's';
const char kObjectsTag = 'o';

// The library's two static type pointers: the one makePyContainer calls, and the one the checks compare with.
PyTypeObject* g_makeType = nullptr;
PyTypeObject* g_checkType = nullptr;

PyContainer* self(PyObject* o) { return reinterpret_cast<PyContainer*>(o); }

// Every collection copy that reached Python, and the Python handles of their
// elements. They are never freed: the handles rest on the collections, and the
// caches let go of a handle when its object goes. Kept here, they stay
// reachable for the life of the process, as leak checkers can see.
std::vector<const void*>& keptCollections() {
    static std::vector<const void*>* kept = new std::vector<const void*>;
    return *kept;
}
std::vector<PyObject*>& keptHandles() {
    static std::vector<PyObject*>* kept = new std::vector<PyObject*>;
    return *kept;
}

StringBody* stringsOf(PyContainer* c) { return dynamic_cast<StringBody*>(c->wrapper); }
ObjectBody* objectBodyOf(PyContainer* c) { return dynamic_cast<ObjectBody*>(c->wrapper); }

Py_ssize_t currentSize(PyContainer* c) { return c->wrapper ? static_cast<Py_ssize_t>(c->wrapper->size()) : 0; }

void note(ComMsgMgr::MsgMask mask, const char* id) {
    ComMsgMgr::sendMsg::eval(0, __FILE__, __LINE__, "common", mask, id);
}

std::string describe(const tclany& e) {
    if (const zrc::pyinfra::py_dead_object* dead = e.get<zrc::pyinfra::py_dead_object>())
        return "the " + dead->kind + " '" + dead->name + "'";
    if (const char* kind = HBOScriptTypes::kindOf(e))
        return std::string("the ") + kind + " '" + HBOScriptTypes::nameOf(e) + "'";
    return "a value of type '" + zrc::tcltasks::detail::demangled(e.type()) + "'";
}

// The element at a valid position: a string, or boost::bad_any_cast.
std::string elementString(PyContainer* c, std::size_t i) {
    if (StringBody* s = stringsOf(c))
        return s->items()[i];
    const tclany& e = objectBodyOf(c)->items()[i];
    if (const std::string* s = e.get<std::string>())
        return *s;
    throw boost::bad_any_cast();
}

// The text an element shows in str(): a string as it is, an object its name.
std::string elementText(PyContainer* c, std::size_t i) {
    if (StringBody* s = stringsOf(c))
        return s->items()[i];
    const tclany& e = objectBodyOf(c)->items()[i];
    if (const std::string* s = e.get<std::string>())
        return *s;
    if (const zrc::pyinfra::py_dead_object* dead = e.get<zrc::pyinfra::py_dead_object>())
        return dead->name;
    if (HBOScriptTypes::kindOf(e))
        return HBOScriptTypes::nameOf(e);
    return e.to_string();
}

PyObject* newStr(const std::string& text) {
    PyObject* s = Py_BuildValue("s#", text.data(), static_cast<Py_ssize_t>(text.size()));
    if (!s && PyErr_ExceptionMatches(PyExc_UnicodeDecodeError)) {
        PyErr_Clear();
        s = PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "replace");
    }
    return s;
}

// The element at position index (negative counts from the end) as a str;
// None with 17-2520 outside.
PyObject* elementAt(PyContainer* c, PyObject* key) {
    Py_ssize_t index = PyLong_AsSsize_t(key);
    if (index == -1 && PyErr_Occurred())
        return nullptr;
    Py_ssize_t size = currentSize(c);
    if (index < 0)
        index += size;
    if (index < 0 || index >= size) {
        note(ComMsgMgr::MSG_ERROR, "@17-2520@");
        Py_RETURN_NONE;
    }
    return py_layer::guard([&]() -> PyObject* {
        try {
            return newStr(elementString(c, static_cast<std::size_t>(index)));
        } catch (const boost::bad_any_cast&) {
            const tclany& e = objectBodyOf(c)->items()[static_cast<std::size_t>(index)];
            zrc::pyinfra::check_alive(e);
            PyErr_Format(PyExc_TypeError,
                         "element %zd is %s, not a string: pass the container to a zrboard function, or take it "
                         "apart with zrboard.objects()",
                         index, describe(e).c_str());
            return nullptr;
        }
    });
}

// ---- Slots ----

PyObject* containerNew(PyTypeObject* type, PyObject*, PyObject*) {
    PyObject* o = type->tp_alloc(type, 0);
    if (o) {
        self(o)->collection = nullptr;
        self(o)->wrapper = nullptr;
    }
    return o;
}

int containerInit(PyObject* o, PyObject*, PyObject* kw) {
    PyContainer* c = self(o);
    void* pointer = nullptr;
    const void* tag = nullptr;
    if (kw && PyDict_Check(kw) && PyDict_Size(kw) == 1) {
        if (PyObject* capsule = PyDict_GetItemString(kw, kCapsuleKey)) {
            pointer = PyCapsule_GetPointer(capsule, kCapsuleKey);
            tag = pointer ? PyCapsule_GetContext(capsule) : nullptr;
        }
        PyErr_Clear();
    } else {
        note(ComMsgMgr::MSG_NOTE, "@17-2518@");
    }
    // A capsule that we did not make carries nothing: the container is empty.
    c->collection = nullptr;
    c->wrapper = nullptr;
    if (pointer && tag == &kStringsTag) {
        c->collection = pointer;
        c->wrapper = static_cast<PyStringCollection*>(pointer)->wrapper();
    } else if (pointer && tag == &kObjectsTag) {
        c->collection = pointer;
        c->wrapper = static_cast<PyObjectCollection*>(pointer)->wrapper();
    }
    c->size = static_cast<std::int32_t>(currentSize(c));
    c->index = 0;
    if (c->wrapper)
        c->wrapper->incr_ref();
    return 0;
}

// Releases nothing: the elements' Python handles rest on the collection.
void containerDealloc(PyObject* o) { Py_TYPE(o)->tp_free(o); }

Py_ssize_t containerLength(PyObject* o) { return currentSize(self(o)); }

PyObject* containerSubscript(PyObject* o, PyObject* key) { return elementAt(self(o), key); }

// Containers are read-only views; assignment is accepted and does nothing.
int containerAssign(PyObject*, PyObject*, PyObject*) { return 0; }

PyObject* containerAt(PyObject* o, PyObject* args, PyObject*) {
    if (!args || PyTuple_Size(args) != 1) {
        note(ComMsgMgr::MSG_NOTE, "@17-2519@");
        Py_RETURN_NONE;
    }
    return elementAt(self(o), PyTuple_GET_ITEM(args, 0));
}

PyObject* containerIter(PyObject* o) {
    Py_INCREF(o);
    self(o)->index = 0;
    return o;
}

PyObject* containerNext(PyObject* o) {
    PyContainer* c = self(o);
    if (c->index < c->size) {
        PyObject* key = PyLong_FromLong(c->index);
        if (!key)
            return nullptr;
        PyObject* item = elementAt(c, key);
        Py_DECREF(key);
        ++c->index;
        return item;
    }
    PyErr_SetNone(PyExc_StopIteration);
    return nullptr;
}

// The display limit in characters: __main__.PyContainerResultDisplayLimit
// when it is a non-negative int, else 300.
int displayLimit() {
    int limit = 300;
    PyObject* main = PyImport_AddModule("__main__");
    if (!main) {
        PyErr_Clear();
        return limit;
    }
    PyObject* attr = PyObject_GetAttrString(main, "PyContainerResultDisplayLimit");
    if (!attr) {
        PyErr_Clear();
        return limit;
    }
    if (std::strcmp(Py_TYPE(attr)->tp_name, "int") == 0) {
        int value = 0;
        if (!PyArg_Parse(attr, "i", &value)) {
            PyErr_Clear();
            note(ComMsgMgr::MSG_NOTE, "@17-3635@");
        } else if (value >= 0) {
            limit = value;
        }
    }
    Py_DECREF(attr);
    return limit;
}

PyObject* containerStr(PyObject* o) {
    PyContainer* c = self(o);
    return py_layer::guard([&]() -> PyObject* {
        const std::size_t limit = static_cast<std::size_t>(displayLimit());
        std::string text = "[";
        const std::size_t n = static_cast<std::size_t>(currentSize(c));
        for (std::size_t i = 0; i < n; ++i) {
            std::string element = elementText(c, i);
            if (element.size() + text.size() >= limit)
                break;
            if (i)
                text += ',';
            text += '\'';
            text += element;
            text += '\'';
        }
        text += ']';
        return newStr(text);
    });
}

// The objects of the container and the attribute name, when the name is a
// property of the first object; false for a plain attribute.
bool propertyTarget(PyObject* o, PyObject* name, const PyObjectCollection*& objects, std::string& text) {
    const char* parsed = nullptr;
    if (!PyArg_Parse(name, "s", &parsed)) {
        PyErr_Clear();
        throw HEXInternalException("Conversion failed");
    }
    text = parsed;
    objects = objectsOf(o);
    return objects && !objects->empty() && zrc::pyinfra::py_container_property::isProperty((*objects)[0], text);
}

PyObject* containerGetAttr(PyObject* o, PyObject* name) {
    if (std::strcmp(Py_TYPE(name)->tp_name, "str") != 0)
        Py_RETURN_NONE;
    return py_layer::guard([&]() -> PyObject* {
        const PyObjectCollection* objects = nullptr;
        std::string text;
        if (propertyTarget(o, name, objects, text))
            return zrc::pyinfra::py_container_get_property::get_property(*objects, text);
        return PyObject_GenericGetAttr(o, name);
    });
}

int containerSetAttr(PyObject* o, PyObject* name, PyObject* value) {
    try {
        const PyObjectCollection* objects = nullptr;
        std::string text;
        if (!PyUnicode_Check(name) || !propertyTarget(o, name, objects, text))
            return PyObject_GenericSetAttr(o, name, value);
        if (!value)
            throw HTCErrors::error("property '" + text + "' can't be deleted");
        zrc::pyinfra::py_container_set_property::set_property(*objects, value, text);
        return 0;
    } catch (...) {
        note(ComMsgMgr::MSG_ERROR, "@17-2525@");
        py_layer::set_error_from_current();
        return -1;
    }
}

PyMethodDef kMethods[] = {
    {"at", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(containerAt)), METH_VARARGS | METH_KEYWORDS,
     "Get element at position"},
    {nullptr, nullptr, 0, nullptr}};

PyMappingMethods kMapping = {containerLength, containerSubscript, containerAssign};

PyTypeObject& typeObject() {
    static PyTypeObject type = [] {
        PyTypeObject t;
        std::memset(&t, 0, sizeof t);
        Py_SET_REFCNT(&t, 1);
        t.tp_name = "PyContainer";
        t.tp_doc = "PyContainer object";
        t.tp_basicsize = sizeof(PyContainer);
        t.tp_flags = Py_TPFLAGS_BASETYPE | Py_TPFLAGS_HAVE_VERSION_TAG;
        t.tp_methods = kMethods;
        t.tp_as_mapping = &kMapping;
        t.tp_str = containerStr;
        t.tp_getattro = containerGetAttr;
        t.tp_setattro = containerSetAttr;
        t.tp_iter = containerIter;
        t.tp_iternext = containerNext;
        t.tp_init = containerInit;
        t.tp_new = containerNew;
        t.tp_dealloc = containerDealloc;
        return t;
    }();
    return type;
}

// ---- Results and handles ----

// A property value in Python: str, bool, int, or a container of strings.
void makeResult(const HATAttrAny& value) {
    PyObject* result = nullptr;
    if (const bool* b = value.get<bool>()) {
        result = b ? (*b ? Py_True : Py_False) : nullptr;
        Py_XINCREF(result);
    } else if (const int* i = value.get<int>()) {
        result = Py_BuildValue("i", *i);
    } else if (const HATStringList* list = value.get<HATStringList>()) {
        // makePyContainer leaves its own reference in py_result.
        Py_XDECREF(makePyContainer(*list));
        return;
    } else {
        result = newStr(value.toString());
    }
    Py_XDECREF(py_manager::py_result);
    py_manager::py_result = result;
}

template <class T>
bool addHandle(const tclany& e, ObjectBody* body, std::size_t index) {
    T* const* p = e.get<T*>();
    if (!p || !*p)
        return false;
    const HBOScriptTypes::Type* type = HBOScriptTypes::find(typeid(T*));
    const std::string kind = type ? type->kind : "object";
    const std::string name = type ? type->name(*p) : e.to_string();
    PyObject* handle = zrc::pyinfra::py_handle::make(body, index, kind, name);
    if (!handle) {
        PyErr_Clear();
        return true;
    }
    keptHandles().push_back(handle);
    zrc::pyinfra::py_native_cache<T*>::add(*p, handle);
    return true;
}

typedef bool (*HandleAdder)(const tclany&, ObjectBody*, std::size_t);

const HandleAdder kAdders[] = {
    addHandle<HBOBoard>,          addHandle<HBOBoardComponent>, addHandle<HBOBusIf>,
    addHandle<HBOModelPort>,      addHandle<HBOPinProps>,       addHandle<HBOComponentMode>,
    addHandle<HBOJumper>,         addHandle<HBOParameter>,      addHandle<HBOBoardBus>,
    addHandle<HBOBoardBusNet>,    addHandle<HBOBusIfPreference>, addHandle<HBOIpPreset>,
    addHandle<HBMPin>,            addHandle<HBOImage>,
};

void addHandles(ObjectBody* body) {
    for (std::size_t i = 0; i < body->items().size(); ++i)
        for (HandleAdder add : kAdders)
            if (add(body->items()[i], body, i))
                break;
}

// Steps 2 to 4 of a container's making, for a copy already on the heap.
template <class Collection>
PyObject* makeFrom(Collection* copy, const char* tag, const char* nativeType) {
    ensurePyContainerType();
    if (!g_makeType) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_NOTE, "@17-2515@%s", nativeType);
        delete copy;
        return nullptr;
    }
    PyObject* capsule = PyCapsule_New(copy, kCapsuleKey, nullptr);
    if (!capsule) {
        delete copy;
        return nullptr;
    }
    PyCapsule_SetContext(capsule, const_cast<char*>(tag));
    PyObject* args = Py_BuildValue("()");
    PyObject* kw = Py_BuildValue("{s:O}", kCapsuleKey, capsule);
    PyObject* result = kw ? PyObject_Call(reinterpret_cast<PyObject*>(g_makeType), args, kw) : nullptr;
    Py_XDECREF(kw);
    Py_DECREF(capsule);
    keptCollections().push_back(copy);
    if (!result)
        return nullptr;
    Py_XDECREF(py_manager::py_result);
    Py_INCREF(result);
    py_manager::py_result = result;
    return result;
}

template <class T>
PyObject* makeSingle(T* object) {
    PyObjectCollection one;
    one.append(tclany(object));
    return makePyContainer(one);
}

}  // namespace

PyTypeObject* getPyContainerType() { return g_checkType; }

void ensurePyContainerType() {
    static std::once_flag made;
    PyTypeObject& type = typeObject();
    std::call_once(made, [] { py_manager::set_result_maker(makeResult); });
    if (PyType_Ready(&type) < 0) {
        PyErr_Clear();
        return;
    }
    if (!g_makeType)
        g_makeType = &type;
    if (!g_checkType)
        g_checkType = &type;
    Py_INCREF(&type);
    if (!py_manager::py_tessaraModule ||
        PyModule_AddObject(py_manager::py_tessaraModule, "PyContainer", reinterpret_cast<PyObject*>(&type)) < 0) {
        PyErr_Clear();
        Py_DECREF(&type);
    }
}

PyObject* makePyContainer(const PyStringCollection& collection) {
    return makeFrom(new PyStringCollection(collection), &kStringsTag, "tcl_collection<std::string>");
}

PyObject* makePyContainer(const PyObjectCollection& collection) {
    auto* copy = new PyObjectCollection(collection);
    PyObject* result = makeFrom(copy, &kObjectsTag, "tcl_collection<tclany>");
    if (result)
        addHandles(copy->wrapper());
    return result;
}

PyObject* makePyContainer(HBMPin* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOBoard* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOBoardBus* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOBoardBusNet* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOBoardComponent* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOBusIf* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOBusIfPreference* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOComponentMode* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOImage* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOIpPreset* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOJumper* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOModelPort* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOParameter* object) { return makeSingle(object); }
PyObject* makePyContainer(HBOPinProps* object) { return makeSingle(object); }

bool isPyContainer(PyObject* obj) {
    return obj && g_checkType && PyObject_TypeCheck(obj, g_checkType);
}

const PyObjectCollection* objectsOf(PyObject* container) {
    if (!isPyContainer(container))
        return nullptr;
    PyContainer* c = self(container);
    return c->collection && objectBodyOf(c) ? static_cast<const PyObjectCollection*>(c->collection) : nullptr;
}

// The zrboard module: what `import zrboard` gives a python3. The same calls
// as the Tcl package, with keyword arguments in place of options; every
// collection comes back as a PyContainer, and a single object is a
// container of one that reads its properties as attributes.
#include <Python.h>

#include <deque>
#include <string>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardCDataManager.h"
#include "HBOBoardCReposMgr.h"
#include "HBOPropertySetup.h"
#include "HCPProperty.h"
#include "HEXAll.h"
#include "PyContainer.h"
#include "ZrPyObjects.h"
#include "ZrSession.h"
#include "ZrWalkSteps.h"
#include "py_container_property.h"
#include "py_layer.h"

using zrc::pyinfra::py_layer;

namespace zrpy {

namespace {

zrbind::Session& session() {
    // Never deleted: boards and the catalogue outlive the interpreter's exit.
    static zrbind::Session* s = new zrbind::Session;
    return *s;
}

PyObject* noneResult() { Py_RETURN_NONE; }

PyObject* getBoards(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"pattern", "latest", "of_objects", nullptr};
    const char* pattern = nullptr;
    int latest = 0;
    PyObject* of = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "|z$pO:get_boards", const_cast<char**>(names), &pattern, &latest, &of))
        return nullptr;
    return py_layer::guard([&] {
        if (of && of != Py_None && latest)
            fail("get_boards", "latest and of_objects can't be given together");
        std::vector<Ref> result;
        if (of && of != Py_None) {
            std::string error = zrbind::boardsOfObjects(refsOf(of, "get_boards: of_objects"), matcher(pattern), result);
            if (!error.empty())
                fail("get_boards", error);
        } else {
            result = zrbind::catalogueBoards(latest != 0, matcher(pattern));
        }
        return containerOf(result);
    });
}

PyObject* currentBoard(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"board", nullptr};
    PyObject* board = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "|O:current_board", const_cast<char**>(names), &board))
        return nullptr;
    return py_layer::guard([&] {
        HBOBoardCDataManager& manager = session().get();
        if (board && board != Py_None) {
            std::string name;
            if (PyUnicode_Check(board)) {
                name = PyUnicode_AsUTF8(board);
            } else {
                Ref r = singleRefOf(board, "current_board");
                if (!r.as<HBOBoard>())
                    fail("current_board", std::string("takes a board or a board name, not the ") + r.kind() + " '" +
                                              zrbind::nameOf(r) + "'");
                name = r.as<HBOBoard>()->getName();
            }
            try {
                manager.setBoard(name, "", false, true);
            } catch (const HEXAll& e) {
                fail("current_board", e.what());
            }
        }
        HBOBoard* chosen = manager.getBoardStrategy();
        return chosen ? containerOf(std::vector<Ref>{zrbind::refOf(chosen)}) : noneResult();
    });
}

PyObject* refreshBoards(PyObject*, PyObject*) {
    return py_layer::guard([] {
        zrbind::catalogue().refreshBoards();
        return noneResult();
    });
}

// Paths as one Tcl list: each path braced.
std::string tclList(PyObject* paths) {
    if (PyUnicode_Check(paths))
        return PyUnicode_AsUTF8(paths);
    PyObject* seq = PySequence_Fast(paths, "");
    if (!seq) {
        PyErr_Clear();
        fail("set_board_repo_paths", "paths must be a string or a list of strings");
    }
    std::string text;
    for (Py_ssize_t i = 0; i < PySequence_Fast_GET_SIZE(seq); ++i) {
        PyObject* item = PySequence_Fast_GET_ITEM(seq, i);
        const char* path = PyUnicode_Check(item) ? PyUnicode_AsUTF8(item) : nullptr;
        if (!path) {
            Py_DECREF(seq);
            PyErr_Clear();
            fail("set_board_repo_paths", "paths must be a string or a list of strings");
        }
        std::string p = path;
        if (p.find_first_of("{}\\") != std::string::npos) {
            Py_DECREF(seq);
            fail("set_board_repo_paths", "a path may not hold braces or backslashes: '" + p + "'");
        }
        text += (text.empty() ? "{" : " {") + p + "}";
    }
    Py_DECREF(seq);
    return text;
}

PyObject* setBoardRepoPaths(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"paths", nullptr};
    PyObject* paths = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "O:set_board_repo_paths", const_cast<char**>(names), &paths))
        return nullptr;
    return py_layer::guard([&] {
        std::string error = zrbind::setParam(zrbind::kRepoParam, tclList(paths));
        if (!error.empty())
            fail("set_board_repo_paths", error);
        return noneResult();
    });
}

PyObject* setParam(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"name", "value", nullptr};
    const char* name = nullptr;
    PyObject* value = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "sO:set_param", const_cast<char**>(names), &name, &value))
        return nullptr;
    return py_layer::guard([&]() -> PyObject* {
        std::string text;
        if (PyBool_Check(value)) {
            text = value == Py_True ? "true" : "false";
        } else {
            PyObject* s = PyObject_Str(value);
            if (!s)
                return nullptr;
            text = PyUnicode_AsUTF8(s) ? PyUnicode_AsUTF8(s) : "";
            Py_DECREF(s);
        }
        std::string error = zrbind::setParam(name, text);
        if (!error.empty())
            fail("set_param", error);
        return noneResult();
    });
}

PyObject* getParam(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"name", nullptr};
    const char* name = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "s:get_param", const_cast<char**>(names), &name))
        return nullptr;
    return py_layer::guard([&] {
        std::string value;
        if (!zrbind::getParam(name, value))
            fail("get_param", std::string("unknown parameter '") + name + "'");
        return PyUnicode_FromString(value.c_str());
    });
}

PyObject* readBoardFile(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"path", nullptr};
    const char* path = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "s:read_board_file", const_cast<char**>(names), &path))
        return nullptr;
    return py_layer::guard([&] {
        std::string error;
        HBOBoard* board = zrbind::readBoardFile(path, error);
        if (!board)
            fail("read_board_file", error);
        return containerOf(std::vector<Ref>{zrbind::refOf(board)});
    });
}

PyObject* walk(PyObject* self, PyObject* args, PyObject* kw) {
    const zrbind::Walk& w = *static_cast<const zrbind::Walk*>(PyCapsule_GetPointer(self, "zrboard.walk"));
    static const char* names[] = {"of_objects", "pattern", nullptr};
    PyObject* of = nullptr;
    const char* pattern = nullptr;
    const std::string format = std::string("O|z:") + w.name;
    if (!PyArg_ParseTupleAndKeywords(args, kw, format.c_str(), const_cast<char**>(names), &of, &pattern))
        return nullptr;
    return py_layer::guard([&] {
        std::vector<Ref> found;
        for (const Ref& r : refsOf(of, (std::string(w.name) + ": of_objects").c_str()))
            if (!w.step(r, found))
                fail(w.name, std::string("of_objects takes ") + w.sources + ", not the " + r.kind() + " '" +
                                 zrbind::nameOf(r) + "'");
        return containerOf(zrbind::walkResult(found, matcher(pattern)));
    });
}

PyObject* getProperty(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"name", "object", nullptr};
    const char* name = nullptr;
    PyObject* object = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "sO:get_property", const_cast<char**>(names), &name, &object))
        return nullptr;
    return py_layer::guard([&] {
        Ref r = singleRefOf(object, "get_property");
        PyObjectCollection one;
        one.append(r.any());
        if (!zrc::pyinfra::py_container_property::isProperty(one[0], name))
            fail("get_property", std::string("no property '") + name + "' on " + r.kind() + " '" +
                                     zrbind::nameOf(r) + "'");
        return zrc::pyinfra::py_container_get_property::get_property(one, name);
    });
}

PyObject* listProperty(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"object", nullptr};
    PyObject* object = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "O:list_property", const_cast<char**>(names), &object))
        return nullptr;
    return py_layer::guard([&] {
        std::vector<std::string> listed;
        for (const HCPProperty::ListedProperty& p :
             HCPProperty::listProperties(singleRefOf(object, "list_property").any()))
            listed.push_back(p.name);
        return containerOf(listed);
    });
}

PyObject* reportProperty(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"object", "return_string", nullptr};
    PyObject* object = nullptr;
    int returnString = 0;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "O|$p:report_property", const_cast<char**>(names), &object,
                                     &returnString))
        return nullptr;
    return py_layer::guard([&]() -> PyObject* {
        std::string text = zrbind::propertyReport(singleRefOf(object, "report_property").any());
        PyObject* str = PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "replace");
        if (!str || returnString)
            return str;
        PyObject* out = PySys_GetObject("stdout");  // borrowed
        PyObject* written = out ? PyObject_CallMethod(out, "write", "O", str) : nullptr;
        Py_DECREF(str);
        if (!out)
            PyErr_SetString(PyExc_RuntimeError, "report_property: sys.stdout is gone");
        if (!written)
            return nullptr;
        Py_DECREF(written);
        written = PyObject_CallMethod(out, "write", "s", "\n");
        if (!written)
            return nullptr;
        Py_DECREF(written);
        return noneResult();
    });
}

PyObject* setProperty(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"name", "value", "objects", nullptr};
    const char* name = nullptr;
    PyObject* value = nullptr;
    PyObject* objects = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "sOO:set_property", const_cast<char**>(names), &name, &value, &objects))
        return nullptr;
    return py_layer::guard([&] {
        PyObjectCollection targets;
        for (const Ref& r : refsOf(objects, "set_property"))
            targets.append(r.any());
        try {
            zrc::pyinfra::py_container_set_property::set_property(targets, value, name);
        } catch (const std::exception& e) {
            fail("set_property", e.what());
        }
        return noneResult();
    });
}

PyObject* undo(PyObject*, PyObject*) {
    return py_layer::guard([] {
        if (!HCPProperty::undo())
            fail("undo", "nothing to undo");
        return noneResult();
    });
}

PyObject* redo(PyObject*, PyObject*) {
    return py_layer::guard([] {
        if (!HCPProperty::redo())
            fail("redo", "nothing to redo");
        return noneResult();
    });
}

PyObject* objects(PyObject*, PyObject* args, PyObject* kw) {
    static const char* names[] = {"container", nullptr};
    PyObject* container = nullptr;
    if (!PyArg_ParseTupleAndKeywords(args, kw, "O:objects", const_cast<char**>(names), &container))
        return nullptr;
    return py_layer::guard([&]() -> PyObject* {
        std::vector<Ref> refs = refsOf(container, "objects");
        PyObject* list = PyList_New(static_cast<Py_ssize_t>(refs.size()));
        for (std::size_t i = 0; list && i < refs.size(); ++i) {
            PyObject* one = containerOf(std::vector<Ref>{refs[i]});
            if (!one) {
                Py_DECREF(list);
                return nullptr;
            }
            PyList_SET_ITEM(list, static_cast<Py_ssize_t>(i), one);
        }
        return list;
    });
}

#define ZR_KW(f) reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(f)), METH_VARARGS | METH_KEYWORDS

PyMethodDef kMethods[] = {
    {"get_boards", ZR_KW(getBoards),
     "get_boards(pattern=None, *, latest=False, of_objects=None) -> PyContainer\n\n"
     "The boards of the catalogue (installed and user boards), only the newest version of each with\n"
     "latest=True, or the boards of the given components, interfaces, ports, pins or modes. pattern is a\n"
     "glob on the board name (vendor:board:version) without regard to case."},
    {"current_board", ZR_KW(currentBoard),
     "current_board(board=None) -> PyContainer or None\n\n"
     "The project's board; with board (a name or a board), choose it first. \"\" lets the board go.\n"
     "After a refresh the board of that name is chosen again."},
    {"refresh_boards", refreshBoards, METH_NOARGS,
     "refresh_boards() -> None\n\n"
     "Read the user's repositories again. Objects of user boards taken before no longer exist afterwards."},
    {"set_board_repo_paths", ZR_KW(setBoardRepoPaths),
     "set_board_repo_paths(paths) -> None\n\n"
     "Set the user's board repositories (a list of directories, or one Tcl list as a string) and read them."},
    {"set_param", ZR_KW(setParam),
     "set_param(name, value) -> None\n\n"
     "Write a parameter (zrboard params lists them); True and False are written as true and false.\n"
     "An unknown name or a value the parameter can't take raises zrboard.Error."},
    {"get_param", ZR_KW(getParam), "get_param(name) -> str\n\nThe value of a parameter as text."},
    {"read_board_file", ZR_KW(readBoardFile),
     "read_board_file(path) -> PyContainer\n\n"
     "Read a board file that is in no repository. Reading the same file again replaces the board read\n"
     "before, whose objects then no longer exist."},
    {"get_property", ZR_KW(getProperty),
     "get_property(name, object) -> str, bool, int or PyContainer\n\n"
     "One property of one object (names without regard to case). A single object also reads its\n"
     "properties as attributes: board.display_name."},
    {"list_property", ZR_KW(listProperty),
     "list_property(object) -> PyContainer\n\nThe names of the visible properties of one object."},
    {"report_property", ZR_KW(reportProperty),
     "report_property(object, *, return_string=False) -> None or str\n\n"
     "Print a table of the object's properties: name, type, read-only and value; with\n"
     "return_string=True, return it instead."},
    {"set_property", ZR_KW(setProperty),
     "set_property(name, value, objects) -> None\n\n"
     "Write a property of every object. Only a jumper's current_value is writable; the board's\n"
     "enablement follows each jumper. undo() takes the write back."},
    {"undo", undo, METH_NOARGS, "undo() -> None\n\nTake the last property write back."},
    {"redo", redo, METH_NOARGS, "redo() -> None\n\nMake the last undone property write again."},
    {"objects", ZR_KW(objects),
     "objects(container) -> list of PyContainer\n\n"
     "The objects of a container, each in a container of its own, to loop over:\n"
     "    for pin in zrboard.objects(pins): print(pin.name, pin.loc)\n"
     "(Indexing and iterating a PyContainer give strings only.)"},
    {nullptr, nullptr, 0, nullptr}};

// One method definition per walk, kept for the life of the module.
std::deque<PyMethodDef>& walkDefs() {
    static std::deque<PyMethodDef> defs;
    return defs;
}
std::deque<std::string>& walkDocs() {
    static std::deque<std::string> docs;
    return docs;
}

bool addWalks(PyObject* module) {
    for (const zrbind::Walk& w : zrbind::walks()) {
        walkDocs().push_back(std::string(w.name) + "(of_objects, pattern=None) -> PyContainer\n\n" +
                             "The objects below the given " + w.sources +
                             " (a PyContainer, or a list of them), each once,\n"
                             "filtered by a glob pattern on the name without regard to case.");
        walkDefs().push_back(PyMethodDef{w.name, ZR_KW(walk), walkDocs().back().c_str()});
        PyObject* self = PyCapsule_New(const_cast<zrbind::Walk*>(&w), "zrboard.walk", nullptr);
        PyObject* function = self ? PyCFunction_NewEx(&walkDefs().back(), self, nullptr) : nullptr;
        Py_XDECREF(self);
        if (!function || PyModule_AddObject(module, w.name, function) < 0) {
            Py_XDECREF(function);
            return false;
        }
    }
    return true;
}

PyModuleDef kModule = {
    PyModuleDef_HEAD_INIT,
    "zrboard",
    "FPGA board descriptions from Python: the board catalogue, the project's board, walks down a board,\n"
    "and the properties of every board object.\n\n"
    "Collections come back as PyContainer; a container of one object reads its properties as attributes\n"
    "(board.display_name, pins.loc gives a list for several). An object deleted since (by refresh_boards,\n"
    "say) raises zrboard.Error when used. Example:\n\n"
    "    import zrboard\n"
    "    b = zrboard.current_board('korvelhw:tarnwick:1.2')\n"
    "    pins = zrboard.get_board_component_pins(zrboard.get_board_components(b, '*part0*'))\n"
    "    print(b.display_name, pins.loc)",
    -1,
    kMethods,
    nullptr,
    nullptr,
    nullptr,
    nullptr};

}  // namespace

}  // namespace zrpy

PyMODINIT_FUNC PyInit_zrboard() {
    PyObject* module = PyModule_Create(&zrpy::kModule);
    if (!module)
        return nullptr;
    try {
        static bool registered = false;
        if (!registered) {
            HBOPropertySetup::registerAll();
            // Exit callbacks run last first: this one runs after the layer
            // has marked the interpreter as gone, so the boards read by
            // script go without touching any Python handle.
            Py_AtExit(zrbind::dropReadBoards);
            registered = true;
        }
        if (!py_layer::attach(module) || !zrpy::addWalks(module) ||
            PyModule_AddStringConstant(module, "__version__", ZR_PACKAGE_VERSION) < 0) {
            Py_DECREF(module);
            return nullptr;
        }
        ensurePyContainerType();
        if (!getPyContainerType()) {
            PyErr_SetString(PyExc_ImportError, "zrboard: the PyContainer type could not be set up");
            Py_DECREF(module);
            return nullptr;
        }
    } catch (...) {
        py_layer::set_error_from_current();
        Py_DECREF(module);
        return nullptr;
    }
    return module;
}

// Shared set-up of the Python tests: one embedded interpreter for the whole
// program, a module standing in for the one the library's types are added
// to, and helpers that run Python code against the containers under test.
#ifndef ZR_TEST_PY_FIXTURE_H
#define ZR_TEST_PY_FIXTURE_H

#include <Python.h>

#include <string>
#include <vector>

#include "../properties/property_fixture.h"
#include "PyContainer.h"
#include "py_layer.h"
#include "py_manager.h"

namespace py_fixture {

class PythonTest : public property_fixture::PropertyTest {
protected:
    static void SetUpTestSuite() {
        property_fixture::PropertyTest::SetUpTestSuite();
        if (!Py_IsInitialized()) {
            // Objects on the plain heap, where a leak checker sees what points to what.
            PyPreConfig pre;
            PyPreConfig_InitPythonConfig(&pre);
            pre.allocator = PYMEM_ALLOCATOR_MALLOC;
            Py_PreInitialize(&pre);
            Py_Initialize();
            PyObject* module = PyImport_AddModule("zrtest");  // borrowed, kept by sys.modules
            Py_INCREF(module);
            ASSERT_TRUE(zrc::pyinfra::py_layer::attach(module));
            ensurePyContainerType();
        }
    }

    void SetUp() override {
        property_fixture::PropertyTest::SetUp();
        m_globals = PyDict_New();
        PyDict_SetItemString(m_globals, "__builtins__", PyEval_GetBuiltins());
        PyObject* main = PyImport_AddModule("__main__");
        if (PyObject_HasAttrString(main, "PyContainerResultDisplayLimit"))
            PyObject_DelAttrString(main, "PyContainerResultDisplayLimit");
    }
    void TearDown() override {
        Py_CLEAR(m_globals);
        Py_CLEAR(zrc::pyinfra::py_manager::py_result);
        PyErr_Clear();
        property_fixture::PropertyTest::TearDown();
    }

    // Binds a new reference to a name of the test's globals.
    void bind(const char* name, PyObject* value) {
        ASSERT_NE(value, nullptr);
        PyDict_SetItemString(m_globals, name, value);
        Py_DECREF(value);
    }

    // The value of an expression as its repr; "raised TYPE: text" for an exception.
    std::string eval(const std::string& expression) {
        PyObject* v = PyRun_String(expression.c_str(), Py_eval_input, m_globals, m_globals);
        return describe(v);
    }
    // Runs statements; "ok", or "raised TYPE: text".
    std::string run(const std::string& statements) {
        PyObject* v = PyRun_String(statements.c_str(), Py_file_input, m_globals, m_globals);
        if (v) {
            Py_DECREF(v);
            return "ok";
        }
        return describe(nullptr);
    }

    // The ids of the messages sent since the last clearMessages.
    std::vector<std::string> ids() const {
        std::vector<std::string> out;
        for (const ComMsgMgrInstance& m : messages())
            out.push_back(m.getId());
        return out;
    }

    PyObject* m_globals = nullptr;

private:
    static std::string describe(PyObject* v) {
        if (v) {
            PyObject* r = PyObject_Repr(v);
            std::string text = r ? PyUnicode_AsUTF8(r) : "<no repr>";
            Py_XDECREF(r);
            Py_DECREF(v);
            return text;
        }
        PyObject *type = nullptr, *value = nullptr, *trace = nullptr;
        PyErr_Fetch(&type, &value, &trace);
        PyErr_NormalizeException(&type, &value, &trace);
        std::string text = "raised ";
        text += type ? reinterpret_cast<PyTypeObject*>(type)->tp_name : "?";
        PyObject* s = value ? PyObject_Str(value) : nullptr;
        if (s)
            text += std::string(": ") + PyUnicode_AsUTF8(s);
        Py_XDECREF(s);
        Py_XDECREF(type);
        Py_XDECREF(value);
        Py_XDECREF(trace);
        return text;
    }
};

inline PyStringCollection strings(const std::vector<std::string>& items) {
    PyStringCollection c;
    for (const std::string& s : items)
        c.append(s);
    return c;
}

}  // namespace py_fixture

#endif

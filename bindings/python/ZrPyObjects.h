// Board objects between Python and the scripting layer: containers and lists
// of containers read into objects, and objects made into containers.
#ifndef ZR_PY_ZRPYOBJECTS_H
#define ZR_PY_ZRPYOBJECTS_H

#include <Python.h>

#include <functional>
#include <string>
#include <vector>

#include "ZrRef.h"

namespace zrpy {

using zrbind::Ref;

// Every object of value: a PyContainer of objects, or a list or tuple of
// them. Throws HTCErrors::error naming what was wrong (a deleted object, a
// container of strings, a value of another type).
std::vector<Ref> refsOf(PyObject* value, const char* what);
// Exactly one object.
Ref singleRefOf(PyObject* value, const char* what);
// A new container of the objects.
PyObject* containerOf(const std::vector<Ref>& refs);
// A new container of strings.
PyObject* containerOf(const std::vector<std::string>& texts);
// A name filter for a glob pattern without regard to case; none for null.
std::function<bool(const std::string&)> matcher(const char* pattern);
// A failure of a call: the module's Error with "FUNCTION: reason".
[[noreturn]] void fail(const char* function, const std::string& reason);

}  // namespace zrpy

#endif

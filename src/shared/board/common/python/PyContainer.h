// The Python type "PyContainer": every collection and every single board
// object that reaches Python travels in one. It shows a copy of a script
// collection (of strings or of objects); a copy that reached Python is never
// freed, since the Python handles of its elements rest on it.
#ifndef PYCONTAINER_H
#define PYCONTAINER_H

#include <Python.h>

#include <cstdint>
#include <string>

#include "HSTVector.h"
#include "tcl_collection.h"

class HBMPin;
class HBOBoard;
class HBOBoardBus;
class HBOBoardBusNet;
class HBOBoardComponent;
class HBOBusIf;
class HBOBusIfPreference;
class HBOComponentMode;
class HBOImage;
class HBOIpPreset;
class HBOJumper;
class HBOModelPort;
class HBOParameter;
class HBOPinProps;

typedef zrc::tcltasks::tcl_collection<HSTVector<std::string>> PyStringCollection;
typedef zrc::tcltasks::tcl_collection<HSTVector<zrc::tcltasks::tclany>> PyObjectCollection;

struct PyContainer {
    PyObject_HEAD
    void* collection;  // a PyStringCollection or a PyObjectCollection, as the wrapper's type tells
    zrc::tcltasks::collection_wrapper_base* wrapper;
    std::int32_t size;
    std::int32_t index;
};

// The type object, set up by the first successful ensurePyContainerType; null before.
PyTypeObject* getPyContainerType();
// Readies the type and adds it to the Python manager's module as "PyContainer".
void ensurePyContainerType();

// A new container of a copy of the collection (a new reference, also left in
// the Python manager's py_result), or null when the type isn't ready. Objects
// of a collection get their Python handles in the caches.
PyObject* makePyContainer(const PyStringCollection& collection);
PyObject* makePyContainer(const PyObjectCollection& collection);
// A single object as a container of one.
PyObject* makePyContainer(HBMPin* object);
PyObject* makePyContainer(HBOBoard* object);
PyObject* makePyContainer(HBOBoardBus* object);
PyObject* makePyContainer(HBOBoardBusNet* object);
PyObject* makePyContainer(HBOBoardComponent* object);
PyObject* makePyContainer(HBOBusIf* object);
PyObject* makePyContainer(HBOBusIfPreference* object);
PyObject* makePyContainer(HBOComponentMode* object);
PyObject* makePyContainer(HBOImage* object);
PyObject* makePyContainer(HBOIpPreset* object);
PyObject* makePyContainer(HBOJumper* object);
PyObject* makePyContainer(HBOModelPort* object);
PyObject* makePyContainer(HBOParameter* object);
PyObject* makePyContainer(HBOPinProps* object);

// The object collection a container shows; null for a string container or an
// empty one made by a script.
const PyObjectCollection* objectsOf(PyObject* container);
bool isPyContainer(PyObject* obj);

#endif

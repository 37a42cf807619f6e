// The Python object type as a name only, so that code which merely holds
// Python objects needs neither the interpreter's headers nor its library.
#ifndef ZR_COMMON_PY_OBJECT_H
#define ZR_COMMON_PY_OBJECT_H

struct _object;
typedef struct _object PyObject;

#endif

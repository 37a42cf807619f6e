// Tcl handles of model objects: made once per object and reused, printing as
// the object's name, and resolved back to the object with a clear error when
// the object is gone or the value is no handle at all.
#ifndef ZR_TCL_ZRHANDLES_H
#define ZR_TCL_ZRHANDLES_H

#include <string>
#include <typeinfo>
#include <vector>

#include <tcl.h>

#include "ZrRef.h"
#include "tclany.h"

namespace zrtcl {

using zrbind::Ref;
using zrbind::nameOf;
using zrbind::refOf;

template <class T>
Tcl_Obj* handleOf(T* object);

// Every object of value: a handle, or a list of handles. Leaves an error in
// interp and returns false for anything else.
bool resolve(Tcl_Interp* interp, Tcl_Obj* value, std::vector<Ref>& out);
// A list of handles of the objects, in order.
Tcl_Obj* handleList(const std::vector<Ref>& refs);

}  // namespace zrtcl

#endif

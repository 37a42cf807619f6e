// The host's property service: native types register their properties here,
// and scripts read, list and write them through it.
#ifndef ZR_COMMON_HCPPROPERTY_H
#define ZR_COMMON_HCPPROPERTY_H

#include <string>
#include <typeinfo>
#include <vector>

#include <tcl.h>

#include "HATAttr.h"
#include "HATAttrAny.h"
#include "HATAttrSpec.h"
#include "HATAttrUtils.h"
#include "HCPPropertyLaunchMode.h"
#include "HCPPropertyObjectInfo.h"
#include "HCPPropertyPoi.h"
#include "HCPPropertySetter.h"
#include "HCPPropertySpec.h"
#include "HCPPropertyUtils.h"
#include "tclany.h"

namespace HCPProperty {

// Null when the type isn't registered.
ObjectInfo getObjectInfo(const std::type_info& type);

namespace detail {
void registerObjectInfo(const ObjectInfo& info);
}

namespace Types {
namespace detail {
// A value of one type where another was wanted: throws HTCErrors::type_error.
[[noreturn]] void castError(const std::type_info& held, const std::type_info& wanted);
}

// The native pointer in value: null when it holds nothing, castError when it
// holds another type.
template <class P>
P nativeOf(const zrc::tcltasks::tclany& value) {
    if (value.empty())
        return nullptr;
    const P* p = value.template get<P>();
    if (!p)
        detail::castError(value.type(), typeid(P));
    return *p;
}
}  // namespace Types

// ---- What scripts use ----

// Reads one property. Names are matched without regard to case; a name that no
// spec has goes, as written, to the type's default spec. False when the object
// has no such property. A property with an advisory text is warned about
// unless warnAdvisory is false (a listing that reads every property).
// Throws HTCErrors::type_error for a value of an unregistered type.
bool getProperty(Tcl_Interp* interp, const zrc::tcltasks::tclany& object, const std::string& name,
                 HATAttrAny& result, bool warnAdvisory = true);

struct ListedProperty {
    std::string name;
    HATAttrSpec spec;
    bool dynamic = false;
    HATAttr value;  // set for dynamic names only: their listing carries the value
};
// The visible properties of one object and its dynamic names, sorted by name
// (without regard to case) unless the type asked for the order of registration.
std::vector<ListedProperty> listProperties(const zrc::tcltasks::tclany& object);

// Writes a property of every object (all of one type) through the spec's
// setter and files the change for undo. Throws HTCErrors::error for an empty
// collection, mixed types, an unknown or read-only property, or a value that
// doesn't fit a boolean property; otherwise returns what the setter returned.
int setProperty(Tcl_Interp* interp, const Setter::Objects& objects, const std::string& name, const HATAttr& value);

// The last change undone, the last undone one made again; false when there is none.
bool undo();
bool redo();
bool canUndo();
bool canRedo();
// Forgets every change, as when the objects they touched may be gone.
void clearHistory();

}  // namespace HCPProperty

#endif

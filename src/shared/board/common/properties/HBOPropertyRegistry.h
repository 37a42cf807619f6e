// What the property registrations of every class share: publishing results,
// registering a property, the number and list formats of property values.
#ifndef HBOPROPERTYREGISTRY_H
#define HBOPROPERTYREGISTRY_H

#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "HATAttrTypes.h"
#include "HCPProperty.h"

class HBOBoard;

namespace HBOPropertyRegistry {

using zrc::tcltasks::tclany;

// Each writes the value into out and, given an interpreter, makes it the Tcl
// result. Always true.
bool publishStringResult(Tcl_Interp* interp, const std::string& value, HATAttrAny& out);
bool publishBoolResult(Tcl_Interp* interp, bool value, HATAttrAny& out);
bool publishIntResult(Tcl_Interp* interp, int value, HATAttrAny& out);
bool publishListResult(Tcl_Interp* interp, const HATStringList& value, HATAttrAny& out);

bool supportsCed(const HBOBoard& board);

// The object info of T*, registered on first use.
template <class T>
HCPProperty::ObjectInfo objectInfo() {
    HCPProperty::ObjectInfo info = HCPProperty::getObjectInfo(typeid(T*));
    if (!info) {
        info = HCPProperty::ObjectInfo(new HCPProperty::detail::poi_native<T*>());
        HCPProperty::detail::registerObjectInfo(info);
    }
    return info;
}

// A read-only property of the given type. read(interp, object, name, out)
// publishes the value; a null object has no properties.
template <class T, class Read>
HCPProperty::Spec& addProperty(HCPProperty::ObjectInfo& info, const std::string& name, HATAttrTypes::AttrType type,
                               Read read) {
    HCPProperty::Spec& spec = info.createSpec(name);
    spec.setGetFcn([read](Tcl_Interp* interp, const tclany& value, const std::string& asked, HATAttrAny& out) {
        T* object = HCPProperty::Types::nativeOf<T*>(value);
        return object ? read(interp, *object, asked, out) : false;
    });
    spec.getAttrSpec().setAttrType(type);
    spec.getAttrSpec().setReadOnly(true);
    return spec;
}

// Read-only string and list properties whose value is get(object).
template <class T, class Get>
HCPProperty::Spec& addString(HCPProperty::ObjectInfo& info, const std::string& name, Get get) {
    return addProperty<T>(info, name, HATAttrTypes::ATTR_STRING,
                          [get](Tcl_Interp* interp, T& o, const std::string&, HATAttrAny& out) {
                              return publishStringResult(interp, get(o), out);
                          });
}
template <class T, class Get>
HCPProperty::Spec& addList(HCPProperty::ObjectInfo& info, const std::string& name, Get get) {
    return addProperty<T>(info, name, HATAttrTypes::ATTR_STRING_LIST,
                          [get](Tcl_Interp* interp, T& o, const std::string&, HATAttrAny& out) {
                              return publishListResult(interp, get(o), out);
                          });
}

// "supports_ced": the flag of the board that boardOf(object) gives, true
// without a board. Registered as a string, published as a boolean.
template <class T, class BoardOf>
void addSupportsCed(HCPProperty::ObjectInfo& info, BoardOf boardOf) {
    HCPProperty::Spec& spec = info.createSpec("supports_ced");
    spec.setGetFcn([boardOf](Tcl_Interp* interp, const tclany& value, const std::string&, HATAttrAny& out) {
        const T* object = HCPProperty::Types::nativeOf<T*>(value);
        const HBOBoard* b = object ? boardOf(*object) : nullptr;
        return publishBoolResult(interp, b ? supportsCed(*b) : true, out);
    });
    spec.getAttrSpec().setAttrType(HATAttrTypes::ATTR_STRING);
    spec.getAttrSpec().setReadOnly(true);
}

// "class": the constant, whatever the object.
void addClass(HCPProperty::ObjectInfo& info, const std::string& className);
// Drops "class" and makes it again with the second name.
void renameClass(HCPProperty::ObjectInfo& info, const std::string& className);
// Stores the advisory text of an old property name, only when schema 2 is on now.
void deprecate(HCPProperty::Spec& spec, const char* advisory);

// The dynamic-name spec, with its getter and lister.
HCPProperty::Spec& addDefault(HCPProperty::ObjectInfo& info, HCPProperty::Spec::GetFcn get,
                              HCPProperty::Spec::GetDefaultFcn list, bool visible);

// ---- Formats ----
std::string intText(int value);
// Nine significant digits; exactly 0.0 is the empty string.
std::string delayText(float value);
HATStringList toList(const std::vector<std::string>& items);
// Split at every single blank, empty fields kept; an empty text is the empty list.
HATStringList dependencyList(const std::string& text);
// "proc:vendor:library:name:version[:interface]" per version of each preset of
// the board filed under the procedure name (any case).
HATStringList presetList(const std::string& procName, const HBOBoard* board);
// Byte-exact prefix test; the rest of the name behind it goes to key.
bool hasPrefix(const std::string& name, const char* prefix, std::string& key);
bool equalsNoCase(const std::string& a, const char* b);

}  // namespace HBOPropertyRegistry

#endif

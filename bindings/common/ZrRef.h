// One board object as the scripting layers pass it around: its pointer type
// and address, with its kind and name as scripts know them.
#ifndef ZR_BIND_ZRREF_H
#define ZR_BIND_ZRREF_H

#include <string>
#include <typeinfo>

#include "HBOScriptTypes.h"
#include "tclany.h"

namespace zrbind {

struct Ref {
    const std::type_info* type = nullptr;
    void* object = nullptr;

    template <class T>
    T* as() const {
        return *type == typeid(T*) ? static_cast<T*>(object) : nullptr;
    }
    zrc::tcltasks::tclany any() const { return HBOScriptTypes::find(*type)->any(object); }
    // The kind of object as users know it ("board", "board_component", ...).
    const char* kind() const { return HBOScriptTypes::find(*type)->kind; }
};

template <class T>
Ref refOf(T* object) {
    Ref r;
    r.type = &typeid(T*);
    r.object = object;
    return r;
}

inline std::string nameOf(const Ref& ref) { return HBOScriptTypes::find(*ref.type)->name(ref.object); }

}  // namespace zrbind

#endif

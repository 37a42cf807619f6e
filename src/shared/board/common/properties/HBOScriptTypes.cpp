#include "HBOScriptTypes.h"

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBOModelPort.h"
#include "HBOParameter.h"
#include "HBOPinProps.h"

namespace HBOScriptTypes {

namespace {

std::string textOf(const HBOBoard* o) { return o->getName(); }
std::string textOf(const HBOBoardBus* o) { return o->getName(); }
std::string textOf(const HBOBoardBusNet* o) { return o->getName(); }
std::string textOf(const HBOBoardComponent* o) { return o->getName(); }
std::string textOf(const HBOBusIf* o) { return o->getName(); }
std::string textOf(const HBOBusIfPreference* o) { return o->getPrefName(); }
std::string textOf(const HBOComponentMode* o) { return o->getName(); }
std::string textOf(const HBOIpPreset* o) { return o->getPresetName(); }
std::string textOf(const HBOJumper* o) { return o->getName(); }
std::string textOf(const HBOModelPort* o) { return o->getName(); }
std::string textOf(const HBOParameter* o) { return o->getName(); }
std::string textOf(const HBOPinProps* o) { return o->getName(); }

template <class T>
std::string nameOfT(const void* p) {
    return textOf(static_cast<const T*>(p));
}

template <class T>
zrc::tcltasks::tclany anyOfT(void* p) {
    return zrc::tcltasks::tclany(static_cast<T*>(p));
}

template <class T>
Type typeOf(const char* kind) {
    return Type{&typeid(T*), kind, nameOfT<T>, anyOfT<T>};
}

// A tclany holds T* for exactly one T; the untyped pointer is reached through the held value.
template <class T>
void* objectOfT(const zrc::tcltasks::tclany& value) {
    T* const* p = value.get<T*>();
    return p ? *p : nullptr;
}

typedef void* (*ObjectOf)(const zrc::tcltasks::tclany&);

const std::vector<ObjectOf>& objectReaders() {
    static const std::vector<ObjectOf> readers = {
        objectOfT<HBOBoard>,       objectOfT<HBOBoardComponent>, objectOfT<HBOBusIf>,
        objectOfT<HBOModelPort>,   objectOfT<HBOPinProps>,       objectOfT<HBOComponentMode>,
        objectOfT<HBOJumper>,      objectOfT<HBOParameter>,      objectOfT<HBOBoardBus>,
        objectOfT<HBOBoardBusNet>, objectOfT<HBOBusIfPreference>, objectOfT<HBOIpPreset>,
    };
    return readers;
}

}  // namespace

const std::vector<Type>& all() {
    static const std::vector<Type> types = {
        typeOf<HBOBoard>("board"),
        typeOf<HBOBoardComponent>("board_component"),
        typeOf<HBOBusIf>("board_component_interface"),
        typeOf<HBOModelPort>("board_interface_port"),
        typeOf<HBOPinProps>("board_component_pin"),
        typeOf<HBOComponentMode>("board_component_mode"),
        typeOf<HBOJumper>("board_jumper"),
        typeOf<HBOParameter>("board_parameter"),
        typeOf<HBOBoardBus>("board_bus"),
        typeOf<HBOBoardBusNet>("board_bus_net"),
        typeOf<HBOBusIfPreference>("ip_preference"),
        typeOf<HBOIpPreset>("ip_configuration_info"),
    };
    return types;
}

const Type* find(const std::type_info& pointerType) {
    for (const Type& t : all())
        if (*t.pointerType == pointerType)
            return &t;
    return nullptr;
}

void* objectOf(const zrc::tcltasks::tclany& value) {
    for (ObjectOf read : objectReaders())
        if (void* p = read(value))
            return p;
    return nullptr;
}

std::string nameOf(const zrc::tcltasks::tclany& value) {
    const Type* t = find(value.type());
    void* p = t ? objectOf(value) : nullptr;
    return p ? t->name(p) : std::string();
}

const char* kindOf(const zrc::tcltasks::tclany& value) {
    const Type* t = find(value.type());
    return t ? t->kind : nullptr;
}

}  // namespace HBOScriptTypes

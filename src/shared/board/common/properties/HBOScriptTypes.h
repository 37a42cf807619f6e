// The scripted pointer types as scripts know them: the kind of each ("board",
// "board_component", ...) and the name an object of it shows, so that every
// scripting layer prints and reports objects alike.
#ifndef HBOSCRIPTTYPES_H
#define HBOSCRIPTTYPES_H

#include <string>
#include <typeinfo>
#include <vector>

#include "tclany.h"

namespace HBOScriptTypes {

struct Type {
    const std::type_info* pointerType;  // typeid(T*)
    const char* kind;
    std::string (*name)(const void* object);
    zrc::tcltasks::tclany (*any)(void* object);  // the object as property functions take it
};

// The twelve types with properties, in the order a listing shows them.
const std::vector<Type>& all();
// The entry of a pointer type, or null.
const Type* find(const std::type_info& pointerType);
// The object's name, or an empty text when value holds no scripted object.
std::string nameOf(const zrc::tcltasks::tclany& value);
// The kind of the object in value, or null.
const char* kindOf(const zrc::tcltasks::tclany& value);
// The object in value as an untyped pointer; null when it holds no scripted object.
void* objectOf(const zrc::tcltasks::tclany& value);

}  // namespace HBOScriptTypes

#endif

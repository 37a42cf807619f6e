// Called first by the destructor of every scripted model object, so that its
// script handles can be dropped before the object goes. Never throws.
#ifndef HBONATIVECACHEHOOK_H
#define HBONATIVECACHEHOOK_H

#include <typeinfo>

namespace HBONativeCacheHook {
void removeObject(const std::type_info& type, const void* obj) noexcept;

template <class T>
inline void remove(const T* obj) noexcept {
    removeObject(typeid(T), obj);
}
}  // namespace HBONativeCacheHook

#endif

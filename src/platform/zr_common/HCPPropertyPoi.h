// The property object interface: what the property service knows of one
// native type whose objects carry properties.
#ifndef ZR_COMMON_HCPPROPERTYPOI_H
#define ZR_COMMON_HCPPROPERTYPOI_H

#include <string>
#include <typeinfo>

#include "tclany.h"

namespace HCPProperty {
namespace detail {

class poi {
public:
    virtual ~poi();
    virtual const std::type_info& native_type() const = 0;
    bool holds(const zrc::tcltasks::tclany& value) const { return value.type() == native_type(); }
    std::string type_name() const { return zrc::tcltasks::detail::demangled(native_type()); }
};

template <class T>
class poi_native;

template <class T>
class poi_native<T*> : public poi {
public:
    const std::type_info& native_type() const override { return typeid(T*); }
};

}  // namespace detail
}  // namespace HCPProperty

#endif

// One registered property of a native type: how to read it, list its dynamic
// names, and make a setter for it.
#ifndef ZR_COMMON_HCPPROPERTYSPEC_H
#define ZR_COMMON_HCPPROPERTYSPEC_H

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <tcl.h>

#include "HATAttr.h"
#include "HATAttrAny.h"
#include "HATAttrSpec.h"
#include "HCPPropertySetter.h"
#include "HSTVector.h"
#include "tclany.h"

namespace HCPProperty {

namespace Types {
typedef std::pair<std::string, HATAttr> PNameAndProp;
}

class Spec {
public:
    // True when the object has the property; the value goes into the result.
    typedef std::function<bool(Tcl_Interp*, const zrc::tcltasks::tclany&, const std::string&, HATAttrAny&)> GetFcn;
    // Every dynamic name of one object, with its value.
    typedef std::function<void(const zrc::tcltasks::tclany&, HSTVector<Types::PNameAndProp>&)> GetDefaultFcn;
    typedef std::function<const HATAttrSpec*(const zrc::tcltasks::tclany&, const std::string&)> GetDefaultAttrSpecFcn;
    typedef std::function<std::unique_ptr<Setter>()> SetterFcn;

    explicit Spec(const std::string& name) : m_name(name) {}

    const std::string& getName() const { return m_name; }

    void setGetFcn(GetFcn fcn) { m_get = std::move(fcn); }
    const GetFcn& getGetFcn() const { return m_get; }
    void setGetDefaultFcn(GetDefaultFcn fcn) { m_getDefault = std::move(fcn); }
    const GetDefaultFcn& getGetDefaultFcn() const { return m_getDefault; }
    void setGetDefaultAttrSpecFcn(GetDefaultAttrSpecFcn fcn) { m_getDefaultAttrSpec = std::move(fcn); }
    const GetDefaultAttrSpecFcn& getGetDefaultAttrSpecFcn() const { return m_getDefaultAttrSpec; }
    void setSetterFcn(SetterFcn fcn) { m_setter = std::move(fcn); }
    const SetterFcn& getSetterFcn() const { return m_setter; }

    HATAttrSpec& getAttrSpec() { return m_attrSpec; }
    const HATAttrSpec& getAttrSpec() const { return m_attrSpec; }

private:
    std::string m_name;
    GetFcn m_get;
    GetDefaultFcn m_getDefault;
    GetDefaultAttrSpecFcn m_getDefaultAttrSpec;
    SetterFcn m_setter;
    HATAttrSpec m_attrSpec;
};

}  // namespace HCPProperty

#endif

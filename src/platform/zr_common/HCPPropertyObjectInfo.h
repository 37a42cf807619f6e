// The properties of one native type. A handle: copies share one registration,
// and a default-made one is null (the type isn't registered).
#ifndef ZR_COMMON_HCPPROPERTYOBJECTINFO_H
#define ZR_COMMON_HCPPROPERTYOBJECTINFO_H

#include <memory>
#include <string>
#include <vector>

#include "HCPPropertyPoi.h"
#include "HCPPropertySpec.h"

namespace HCPProperty {

class ObjectInfo {
public:
    // The name of the spec that answers names nobody registered.
    // An inline constant, not a variable of the library: two loaded copies of it
    // (a relocated install beside the build) must not own one global twice.
    static constexpr const char DEFAULT_SPEC[] = "_default_";

    ObjectInfo() = default;
    // Takes ownership of the interface.
    explicit ObjectInfo(detail::poi* objectInterface);

    explicit operator bool() const { return m_impl != nullptr; }
    detail::poi* getPoi() const;

    // A new spec. One registered under the same name before (any case) is replaced,
    // and a spec made again after deleteSpec takes the deleted one's place.
    Spec& createSpec(const std::string& name);
    bool deleteSpec(const std::string& name);
    void setSortProperties(bool sort);
    bool getSortProperties() const;

    // An ordinary spec by name, compared without regard to case; never the default spec.
    Spec* findSpec(const std::string& name) const;
    Spec* getDefaultSpec() const;
    // Every spec, the default one included, in the order of registration.
    std::vector<Spec*> getSpecs() const;

private:
    struct Impl;
    std::shared_ptr<Impl> m_impl;
};

}  // namespace HCPProperty

#endif

#include "HBOCase.h"
#include "HBOComponentMode.h"

#include <cstdio>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/replace.hpp>

#include "HBOBoardComponent.h"
#include "HBOBusIfPreference.h"
#include "HBONativeCacheHook.h"
#include "HBORebase.h"

HBOComponentMode::HBOComponentMode(const HBOComponentMode& other, HBOBoardComponent* owner,
                                   const std::string& prefix)
    : m_name(HBORebase::name(prefix, other.m_name)),
      m_displayName(HBORebase::displayName(prefix, other.m_displayName)),
      m_description(other.m_description),
      m_enablementDependency(other.m_enablementDependency),
      m_presetProcName(other.m_presetProcName),
      m_isEnabled(other.m_isEnabled),
      m_ownerComponent(owner) {
    for (const auto& kv : other.m_interfaces)
        m_interfaces[kv.first] = std::make_pair(HBORebase::name(prefix, kv.second.first), kv.second.second);
    HBOBoard* board = owner ? owner->getBoard() : nullptr;
    for (HBOBusIfPreference* p : other.m_preferredIps)
        if (p)
            m_preferredIps.push_back(new HBOBusIfPreference(*p, board));
}

HBOComponentMode::~HBOComponentMode() {
    HBONativeCacheHook::remove(this);
    for (HBOBusIfPreference* p : m_preferredIps)
        delete p;
}

bool HBOComponentMode::setName(const std::string& v) {
    m_name = v;
    return true;
}
bool HBOComponentMode::setDisplayName(const std::string& v) {
    m_displayName = v;
    return true;
}
bool HBOComponentMode::setDescription(const std::string& v) {
    m_description = v;
    return true;
}

bool HBOComponentMode::getInterfaces(InterfaceMap& out) const {
    out = m_interfaces;
    return true;
}

bool HBOComponentMode::addInterface(int order, const std::pair<std::string, bool>& intf) {
    m_interfaces[order] = intf;
    return true;
}

bool HBOComponentMode::addInterface(int order, const std::string& name, bool optional) {
    return addInterface(order, std::make_pair(name, optional));
}

bool HBOComponentMode::getRequiredInterfaces(InterfaceMap& out) const {
    out.clear();
    for (const auto& kv : m_interfaces)
        if (!kv.second.second)
            out.insert(kv);
    return true;
}

bool HBOComponentMode::addPreferredIp(HBOBusIfPreference* pref) {
    m_preferredIps.push_back(pref);
    return true;
}

bool HBOComponentMode::getPreferredIps(std::vector<HBOBusIfPreference*>& out) const {
    out = m_preferredIps;
    return true;
}

bool HBOComponentMode::setEnablementDependency(const std::string& v) {
    m_enablementDependency = v;
    return true;
}
bool HBOComponentMode::setPresetProcName(const std::string& v) {
    m_presetProcName = v;
    return true;
}
bool HBOComponentMode::setIsEnabled(const std::string& v) {
    m_isEnabled = v;
    return true;
}
bool HBOComponentMode::setOwnerComponent(HBOBoardComponent* owner) {
    m_ownerComponent = owner;
    return true;
}

void HBOComponentMode::updateEnablementDependencyJumperName(const std::string& from, const std::string& to) {
    if (from.empty())
        return;
    boost::algorithm::ireplace_all(m_enablementDependency, from,
                                   HBOCase::lower(to),
                                   std::locale::classic());
}

void HBOComponentMode::display(int indent) const {
    const std::string dashes(indent > 0 ? static_cast<size_t>(indent) : 0u, '-');
    const char* d = dashes.c_str();
    std::fprintf(stderr, "%sComponentMode - name:%s, description:%s \n", d, m_name.c_str(), m_description.c_str());
    std::fprintf(stderr, "%s-Interfaces:\n", d);
    for (const auto& kv : m_interfaces)
        std::fprintf(stderr, "%s--Interface: name:%s required:%d\n", d, kv.second.first.c_str(),
                     kv.second.second ? 1 : 0);
    std::fprintf(stderr, "%s-Preferree Ips:\n", d);
    for (const HBOBusIfPreference* p : m_preferredIps)
        if (p)
            p->display(indent + 2);
    std::fprintf(stderr, "%s-Enablement Dependencies:\n", d);
    std::fprintf(stderr, "%s--Enablement Dependencies :%s\n", d, m_enablementDependency.c_str());
}

#include "HBOCase.h"
#include "HBOBusIf.h"

#include <cstdio>
#include <locale>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/predicate.hpp>

#include "HBOBoardComponent.h"
#include "HBOBusIfPreference.h"
#include "HBOModelPort.h"
#include "HBONativeCacheHook.h"
#include "HBOParameter.h"
#include "HBOPortMap.h"
#include "HBORebase.h"

namespace {

bool equalsIgnoringCase(const std::string& a, const std::string& b) {
    return HBOCase::iequals(a, b);
}

template <class V>
std::map<std::string, V> rebaseKeys(const std::map<std::string, V>& in, const std::string& prefix) {
    std::map<std::string, V> out;
    for (const auto& entry : in)
        out[HBORebase::name(prefix, entry.first)] = entry.second;
    return out;
}

}  // namespace

HBOBusIf::HBOBusIf() = default;

HBOBusIf::HBOBusIf(const HBOBusIf& other, HBOBoardComponent* owner, const std::string& prefix)
    : m_name(HBORebase::name(prefix, other.m_name)),
      m_presetFile(other.m_presetFile),
      m_displayName(HBORebase::displayName(prefix, other.m_displayName)),
      m_abstractTypeName(other.m_abstractTypeName),
      m_abstractTypeVersion(other.m_abstractTypeVersion),
      m_abstractTypeVendor(other.m_abstractTypeVendor),
      m_abstractTypeLibrary(other.m_abstractTypeLibrary),
      m_interfaceMode(other.m_interfaceMode),
      m_presetProcName(HBORebase::name(prefix, other.m_presetProcName)),
      m_paramValues(other.m_paramValues),
      m_parentBoard(owner ? owner->getBoard() : nullptr),
      m_description(other.m_description),
      m_ownerComponent(owner),
      m_isEnabled(other.m_isEnabled),
      // Rebased so that they keep naming the rebased jumpers and parameters of the
      // merged board.
      m_jumpers(rebaseKeys(other.m_jumpers, prefix)),
      m_params(rebaseKeys(other.m_params, prefix)) {
    // Component names are lower-cased by the component copy, so the reference follows.
    if (prefix.empty())
        m_ofComponent = other.m_ofComponent;
    else
        m_ofComponent = HBOCase::lower(HBORebase::name(prefix, other.m_ofComponent));
    for (const HBOPortMap* portMap : other.m_portMapSeq)
        if (portMap)
            m_portMapSeq.push_back(new HBOPortMap(*portMap, prefix));
    for (const auto& entry : other.m_ports) {
        if (!entry.second)
            continue;
        HBOModelPort* port = new HBOModelPort(*entry.second, this, prefix);
        m_ports[port->getName()] = port;
    }
    for (const HBOParameter* parameter : other.m_parameters)
        if (parameter)
            m_parameters.push_back(new HBOParameter(*parameter, prefix));
}

HBOBusIf::~HBOBusIf() {
    HBONativeCacheHook::remove(this);
    for (HBOParameter* parameter : m_parameters)
        delete parameter;
    m_parameters.clear();
    for (HBOPortMap* portMap : m_portMapSeq)
        delete portMap;
    m_portMapSeq.clear();
    for (HBOBusIfPreference* preference : m_preferences)
        delete preference;
    m_preferences.clear();
    // Model ports are only held (see HBOModelPort.h).
    m_ports.clear();
    m_jumpers.clear();
    m_params.clear();
}

bool HBOBusIf::getDisplayName(std::string& out) const {
    out = m_displayName;
    return true;
}

bool HBOBusIf::getAbstractType(std::string& vendor, std::string& library, std::string& name,
                               std::string& version) const {
    vendor = m_abstractTypeVendor;
    library = m_abstractTypeLibrary;
    name = m_abstractTypeName;
    version = m_abstractTypeVersion;
    return true;
}

bool HBOBusIf::getAbstractTypeVLNV(std::string& out, const std::string& sep) const {
    out = m_abstractTypeVendor + sep + m_abstractTypeLibrary + sep + m_abstractTypeName + sep +
          m_abstractTypeVersion;
    return true;
}

bool HBOBusIf::getAbstractTypeName(std::string& out) const {
    out = m_abstractTypeName;
    return true;
}

bool HBOBusIf::getAbstractTypeVersion(std::string& out) const {
    out = m_abstractTypeVersion;
    return true;
}

bool HBOBusIf::getAbstractTypeVendorName(std::string& out) const {
    out = m_abstractTypeVendor;
    return true;
}

bool HBOBusIf::getAbstractTypeLibraryName(std::string& out) const {
    out = m_abstractTypeLibrary;
    return true;
}

bool HBOBusIf::getInterfaceMode(std::string& out) const {
    out = m_interfaceMode;
    return true;
}

void HBOBusIf::populatePortMap(HBOPortMap* portMap) {
    m_portMapSeq.push_back(portMap);
}

bool HBOBusIf::getPortMapSeq(std::vector<HBOPortMap*>& out) const {
    out = m_portMapSeq;
    return true;
}

bool HBOBusIf::getPhysicalPortSeq(std::vector<std::string>& out) const {
    for (const HBOPortMap* portMap : m_portMapSeq)
        if (portMap)
            out.push_back(portMap->getPhysicalPort());
    return true;
}

bool HBOBusIf::getPPortByLPort(const std::string& logicalPort, std::string& out) const {
    if (logicalPort.empty())
        return false;
    for (const HBOPortMap* portMap : m_portMapSeq) {
        if (portMap && equalsIgnoringCase(portMap->getLogicalPort(), logicalPort)) {
            out = portMap->getPhysicalPort();
            return true;
        }
    }
    return false;
}

bool HBOBusIf::getParamList(std::map<std::string, std::string>& out) const {
    out = m_paramValues;
    return true;
}

bool HBOBusIf::getParamValue(const std::string& name, std::string& out) const {
    if (m_paramValues.empty() || name.empty())
        return false;
    for (const auto& entry : m_paramValues) {
        if (equalsIgnoringCase(entry.first, name)) {
            out = entry.second;
            return true;
        }
    }
    return false;
}

bool HBOBusIf::setParam(const std::string& name, const std::string& value) {
    if (name.empty())
        return false;
    m_paramValues[name] = value;
    return true;
}

bool HBOBusIf::setPreference(HBOBusIfPreference* preference) {
    m_preference = preference;
    return true;
}

bool HBOBusIf::setPreferences(HBOBusIfPreference* preference) {
    m_preferences.push_back(preference);
    return true;
}

void HBOBusIf::addPort(HBOModelPort* port) {
    if (port)
        m_ports[port->getName()] = port;
}

void HBOBusIf::addJumper(const std::string& name, bool value) {
    m_jumpers[name] = value;
}

void HBOBusIf::addParam(const std::string& name, bool value) {
    m_params[name] = value;
}

void HBOBusIf::addParameter(HBOParameter* parameter) {
    m_parameters.push_back(parameter);
}

void HBOBusIf::updatePortPinMap(const std::map<std::string, std::string>& pinMap) {
    for (const auto& entry : m_ports)
        if (entry.second)
            entry.second->updatePortPinMap(pinMap);
}

bool HBOBusIf::getPortMapPinPropsSeq(std::vector<HBOPinProps*>& out) const {
    // A schema 2 port appends its pins, a schema 1 port replaces out with its own:
    // there only the pins of the last port that has any remain. Kept as it is,
    // because the connector tests walk exactly this sequence.
    for (const auto& entry : m_ports)
        if (entry.second)
            entry.second->getPortPropsSeq(out);
    return true;
}

void HBOBusIf::display(unsigned int indent) const {
    std::string vlnv;
    getAbstractTypeVLNV(vlnv, ":");
    std::fprintf(stderr, "%s", std::string(indent, '-').c_str());
    std::fprintf(stderr, "Interface - name:%s, mode:%s, vlnv:%s, prefferred IP:%s, of_component:%s preset_proc:%s\n",
                 m_name.c_str(), m_interfaceMode.c_str(), vlnv.c_str(), "TBD", m_ofComponent.c_str(),
                 m_presetProcName.c_str());
    std::fprintf(stderr, "%s--Ports:\n", std::string(indent + 1, '-').c_str());
    for (const auto& entry : m_ports)
        if (entry.second)
            entry.second->display(indent + 1);
}

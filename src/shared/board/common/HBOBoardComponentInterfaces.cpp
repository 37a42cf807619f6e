// Interfaces and model ports of a board component, and the copying of interfaces across
// connectors when boards are joined.
#include "HBOCase.h"
#include "HBOBoardComponent.h"

#include <algorithm>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/regex.hpp>

#include "HBOBoard.h"
#include "HBOBusIf.h"
#include "HBOModelPort.h"
#include "HBOPinProps.h"
#include "HBOPortMap.h"

namespace {

std::string upper(const std::string& s) {
    return HBOCase::upper(s);
}

bool iequal(const std::string& a, const std::string& b) {
    return HBOCase::iequals(a, b);
}

}  // namespace

HBOBusIf* HBOBoardComponent::getBusIfByName(const std::string& name) const {
    if (name.empty())
        return nullptr;
    auto it = m_busIfs.find(upper(name));
    return it == m_busIfs.end() ? nullptr : it->second;
}

bool HBOBoardComponent::getBusIfByName(HBOBusIf*& out, const std::string& name) const {
    HBOBusIf* found = getBusIfByName(name);
    if (!found)
        return false;
    out = found;
    return true;
}

bool HBOBoardComponent::getBusIfSeq(std::vector<HBOBusIf*>& out, bool /*flag*/) const {
    getInterfacesVec(out);
    return true;
}

void HBOBoardComponent::getInterfacesVec(std::vector<HBOBusIf*>& out) const {
    for (const auto& kv : m_busIfs)
        if (kv.second)
            out.push_back(kv.second);
}

bool HBOBoardComponent::getBusIfSeq(std::vector<HBOBusIf*>& out, const std::string& vendor,
                                    const std::string& library, const std::string& name,
                                    const std::string& version) const {
    const bool clock = iequal(name, "clock_rtl");
    for (const auto& kv : m_busIfs) {
        const HBOBusIf* b = kv.second;
        if (!b)
            continue;
        const std::string& lib = b->getAbstractTypeLibraryName();
        bool fits = iequal(b->getAbstractTypeVendorName(), vendor) && iequal(b->getAbstractTypeName(), name);
        if (clock)
            // The clock type is published in two libraries; either one answers.
            fits = fits && (iequal(lib, "interface") || iequal(lib, "signal") || iequal(lib, library));
        else
            fits = fits && iequal(lib, library);
        if (fits && !version.empty())
            fits = iequal(b->getAbstractTypeVersion(), version);
        if (fits)
            out.push_back(kv.second);
    }
    return true;
}

bool HBOBoardComponent::getBusIfSeq(std::vector<std::string>& names, const std::string& vlnv) const {
    // The bracket is a one-character class, not an alternative: the ordinary clock types do
    // not match it and are compared as plain text below. Callers depend on exactly this.
    static const boost::regex clockType("korvelhw:[interface|signal]:clock_rtl:1.0", boost::regex::icase);
    for (const auto& kv : m_busIfs) {
        const HBOBusIf* b = kv.second;
        if (!b)
            continue;
        std::string type;
        b->getAbstractTypeVLNV(type, ":");
        const bool fits = boost::regex_match(type, clockType) ? boost::regex_match(vlnv, clockType)
                                                               : iequal(vlnv, type);
        if (fits)
            names.push_back(b->getName());
    }
    return true;
}

bool HBOBoardComponent::setBusIf(const std::string& name, HBOBusIf* busIf) {
    if (!busIf || name.empty())
        return false;
    HBOBusIf*& slot = m_busIfs[upper(name)];
    if (slot && slot != busIf) {
        // The component owns its interfaces: one that is replaced is freed, unless it
        // still stands under another name.
        HBOBusIf* old = slot;
        slot = busIf;
        bool stillHeld = false;
        for (const auto& kv : m_busIfs)
            stillHeld = stillHeld || kv.second == old;
        if (!stillHeld)
            delete old;
    }
    slot = busIf;
    for (const HBOPortMap* pm : busIf->getPortMapSeq()) {
        if (!pm)
            continue;
        if (HBOModelPort* port = getModelPortByName(pm->getPhysicalPort()))
            port->setOwnerBusIf(name, pm->getLogicalPort());
    }
    return true;
}

void HBOBoardComponent::getOfCompInterfaces(std::vector<HBOBusIf*>& out, bool useActive,
                                            const HBOBoardComponent* comp) const {
    out.clear();
    const HBOBoardComponent* searched = useActive ? (m_board ? m_board->getActivePart() : nullptr) : comp;
    if (!searched)
        return;
    for (const auto& kv : searched->m_busIfs)
        if (kv.second && iequal(kv.second->getOfComponent(), m_componentName))
            out.push_back(kv.second);
}

HBOModelPort* HBOBoardComponent::getModelPortByName(const std::string& name) const {
    if (name.empty())
        return nullptr;
    auto it = m_modelPorts.find(upper(name));
    return it == m_modelPorts.end() ? nullptr : it->second;
}

bool HBOBoardComponent::getModelPortByName(HBOModelPort*& out, const std::string& name) const {
    HBOModelPort* found = getModelPortByName(name);
    if (!found)
        return false;
    out = found;
    return true;
}

bool HBOBoardComponent::getModelPortSeq(std::vector<HBOModelPort*>& out) const {
    for (const auto& kv : m_modelPorts)
        if (kv.second)
            out.push_back(kv.second);
    return true;
}

bool HBOBoardComponent::setModelPort(const std::string& name, HBOModelPort* port) {
    if (!port || name.empty())
        return false;
    m_modelPorts[upper(name)] = port;
    return true;
}

bool HBOBoardComponent::getModelPortsByBusIf(std::vector<HBOModelPort*>& out, const std::string& busIf) const {
    out.clear();
    const HBOBusIf* b = getBusIfByName(busIf);
    if (!b)
        return false;
    std::vector<std::string> physical;
    b->getPhysicalPortSeq(physical);
    for (const std::string& p : physical)
        if (HBOModelPort* port = getModelPortByName(p))
            out.push_back(port);
    return true;
}

bool HBOBoardComponent::getPinPropsByBusIf(std::vector<HBOPinProps*>& out, const std::string& busIf) const {
    out.clear();
    std::vector<HBOModelPort*> ports;
    if (!getModelPortsByBusIf(ports, busIf))
        return false;
    for (const HBOModelPort* port : ports) {
        std::vector<HBOPinProps*> pins;
        port->getPortPropsSeq(pins);
        out.insert(out.end(), pins.begin(), pins.end());
    }
    return true;
}

bool HBOBoardComponent::adoptModelPort(HBOModelPort* port) {
    if (!port || !port->markAdopted())
        return false;
    m_adoptedPorts.push_back(port);
    return true;
}

void HBOBoardComponent::adoptPortsOf(const HBOBusIf* busIf) {
    for (const auto& kv : busIf->getPortMaps())
        adoptModelPort(kv.second);
}

bool HBOBoardComponent::createModelPortsForInterfaces() {
    for (const auto& kv : m_busIfs) {
        if (!kv.second)
            continue;
        for (const auto& port : kv.second->getPortMaps())
            if (port.second)
                setModelPort(port.first, port.second);
    }
    return true;
}

void HBOBoardComponent::getBusIfSeqFromConnectors(std::vector<HBOBusIf*>& out,
                                                  std::vector<std::string>& names) const {
    names.push_back(m_componentName);
    if (m_type == "connector")
        getInterfacesVec(out);
    if (!m_board)
        return;
    std::vector<HBOBoardComponent*> connected;
    m_board->getConnectedConnectors(this, connected);
    for (const HBOBoardComponent* c : connected)
        if (c && std::find(names.begin(), names.end(), c->getComponentName()) == names.end())
            c->getBusIfSeqFromConnectors(out, names);
}

bool HBOBoardComponent::mapConnectorPin(const HBOBoardComponent* base, const HBOBoardComponent* daughter,
                                        const std::string& pinName, std::string& fpgaPin) const {
    if (!base || !daughter)
        return false;
    const HBOPinProps* p = daughter->findPin(pinName);
    if (!p)
        return false;
    // Connectors meet pin by pin through the index; the base connector names its pin
    // after the FPGA pin wired to it.
    const HBOPinProps* q = base->getPinByIndex(p->getPinIndex());
    if (!q)
        return false;
    const HBOPinProps* r = findPin(q->getName());
    if (!r)
        return false;
    fpgaPin = r->getName();
    return true;
}

bool HBOBoardComponent::canInterfaceBeConnected(const HBOBoardComponent* base, const HBOBoardComponent* daughter,
                                                const HBOBusIf* busIf,
                                                std::map<std::string, std::string>* pinNameMap) const {
    if (!busIf)
        return false;
    std::vector<HBOPinProps*> pins;
    busIf->getPortMapPinPropsSeq(pins);
    for (const HBOPinProps* pin : pins) {
        if (!pin)
            continue;
        std::string fpgaPin;
        if (!mapConnectorPin(base, daughter, pin->getName(), fpgaPin))
            return false;
        if (pinNameMap)
            (*pinNameMap)[pin->getName()] = fpgaPin;
    }
    return true;
}

bool HBOBoardComponent::copyInterfacesFromComponent(const HBOBoardComponent* source,
                                                    const HBOBoardComponent* target) {
    if (!source || !target)
        return true;
    std::vector<HBOBusIf*> candidates;
    target->getInterfacesVec(candidates);
    for (const HBOBusIf* intf : candidates) {
        std::map<std::string, std::string> pinNames;
        if (!canInterfaceBeConnected(source, target, intf, &pinNames))
            continue;
        HBOBusIf* clone = new HBOBusIf(*intf, this, "");
        adoptPortsOf(clone);
        clone->updatePortPinMap(pinNames);
        if (!setBusIf(clone->getName(), clone)) {
            delete clone;
            continue;
        }
        // The daughter board fixes the I/O standards of what it carries.
        for (const auto& kv : pinNames) {
            HBOPinProps* own = findPin(kv.second);
            const HBOPinProps* theirs = target->findPin(kv.first);
            if (own && theirs)
                own->copyIOPropertiesFrom(*theirs);
        }
    }
    return true;
}

void HBOBoardComponent::getInterfacesWhichCanBeConnected(const HBOBoardComponent* source,
                                                         const HBOBoardComponent* target,
                                                         std::vector<HBOBusIf*>& out) const {
    if (!target)
        return;
    target->getBusIfSeq(out, false);
    out.erase(std::remove_if(out.begin(), out.end(),
                             [&](const HBOBusIf* b) { return !canInterfaceBeConnected(source, target, b); }),
              out.end());
}

// Everything of a board that walks its children: forwarding to the active
// part, finders, IP interface associations, the board part update, display.
#include "HBOBoard.h"

#include <cstdio>
#include <locale>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/split.hpp>

#include "HBOCase.h"
#include "ComMsgMgr.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBOParameter.h"

namespace {

bool iequalsClassic(const std::string& a, const std::string& b) {
    return HBOCase::iequals(a, b);
}

std::string dashes(unsigned int count) {
    return std::string(count, '-');
}

}  // namespace

// ---- Forwarding setters ----

void HBOBoard::setVLNV(const std::string& vendor, const std::string& library, const std::string& name,
                       const std::string& version) {
    if (HBOBoardComponent* part = getActivePart())
        part->setVLNV(vendor, library, name, version);
}

void HBOBoard::setBoardDetails(const std::string& a, const std::string& b, const std::string& c,
                               const std::string& d) {
    if (HBOBoardComponent* part = getActivePart())
        part->setBoardDetails(a, b, c, d);
}

void HBOBoard::setImageFile(const std::string& file) {
    if (HBOBoardComponent* part = getActivePart())
        part->setImageFile(file);
}

void HBOBoard::setJtagPosition(const std::string& position) {
    if (HBOBoardComponent* part = getActivePart())
        part->setJtagPosition(position);
}

bool HBOBoard::setPartString(const std::string& part) {
    HBOBoardComponent* active = getActivePart();
    return active ? active->setPartString(part) : false;
}

bool HBOBoard::setBusIf(const std::string& name, HBOBusIf* busIf) {
    HBOBoardComponent* part = getActivePart();
    return part ? part->setBusIf(name, busIf) : false;
}

bool HBOBoard::setModelPort(const std::string& name, HBOModelPort* port) {
    HBOBoardComponent* part = getActivePart();
    return part ? part->setModelPort(name, port) : false;
}

int HBOBoard::populateConstraintsData(const std::string& path) {
    HBOBoardComponent* part = getActivePart();
    return part ? part->populateConstraintsData(path) : 0;
}

// ---- Forwarding getters ----

std::string HBOBoard::getBoardPartName() const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getBoardPartName() : m_fallbackString;
}

std::string HBOBoard::getPartString() const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getPartString() : m_fallbackString;
}

std::string HBOBoard::getFamily() const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getFamily() : m_fallbackString;
}

bool HBOBoard::getFamily(std::string& out) const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getFamily(out) : false;
}

std::string HBOBoard::getImageFile() const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getImageFile() : m_fallbackString;
}

std::string HBOBoard::getJtagPosition() const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getJtagPosition() : m_fallbackString;
}

std::string HBOBoard::getLibrary() const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getLibrary() : m_fallbackString;
}

HBOBusIf* HBOBoard::getBusIfByName(const std::string& name) const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getBusIfByName(name) : nullptr;
}

bool HBOBoard::getBusIfByName(HBOBusIf*& out, const std::string& name) const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getBusIfByName(out, name) : false;
}

bool HBOBoard::getBusIfSeq(std::vector<HBOBusIf*>& out) const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getBusIfSeq(out, true) : false;
}

bool HBOBoard::getBusIfSeq(std::vector<HBOBusIf*>& out, const std::string& vendor, const std::string& library,
                           const std::string& name, const std::string& version) const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getBusIfSeq(out, vendor, library, name, version) : false;
}

bool HBOBoard::getBusIfSeq(std::vector<std::string>& names, const std::string& vlnv) const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getBusIfSeq(names, vlnv) : false;
}

bool HBOBoard::getModelPortByName(HBOModelPort*& out, const std::string& name) const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getModelPortByName(out, name) : false;
}

bool HBOBoard::getModelPortSeq(std::vector<HBOModelPort*>& out) const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getModelPortSeq(out) : false;
}

bool HBOBoard::getModelPortsByBusIf(std::vector<HBOModelPort*>& out, const std::string& busIf) const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getModelPortsByBusIf(out, busIf) : false;
}

bool HBOBoard::getPinPropsByBusIf(std::vector<HBOPinProps*>& out, const std::string& busIf) const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getPinPropsByBusIf(out, busIf) : false;
}

bool HBOBoard::isPartNameSupportedByBoard(const std::string& part) const {
    const HBOBoardComponent* active = getActivePart();
    return active ? active->isPartNameSupported(part) : false;
}

bool HBOBoard::isPartUpdated() const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->isPartUpdated() : false;
}

bool HBOBoard::hasAdditionalSupportedParts() const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->hasAdditionalSupportedParts() : false;
}

void HBOBoard::getAdditionalSupportedPartNames(std::vector<std::string>& out, bool withCurrent) const {
    out.clear();
    if (const HBOBoardComponent* part = getActivePart())
        part->getAdditionalSupportedPartNames(out, withCurrent);
}

bool HBOBoard::isConstraintsDataPopulated() const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->isConstraintsDataPopulated() : m_constraintsFlagFallback;
}

std::string HBOBoard::getActivePartName() const {
    const HBOBoardComponent* part = getActivePart();
    return part ? part->getName() : std::string();
}

// ---- Kind of board and its base ----

bool HBOBoard::hasFPGAPart() const {
    return findFpgaComponent() != nullptr;
}

bool HBOBoard::isReferenceBoard() const {
    return !m_integrated && hasFPGAPart();
}

bool HBOBoard::isDaughterBoard() const {
    return !m_integrated && !hasFPGAPart();
}

const HBOBoard* HBOBoard::getBaseBoard() const {
    return m_integrated ? m_baseBoard : nullptr;
}

std::string HBOBoard::getBaseBoardName() const {
    return (m_integrated && m_baseBoard) ? m_baseBoard->getBoardName() : m_boardName;
}

std::string HBOBoard::getBaseBoardFullName() const {
    return (m_integrated && m_baseBoard) ? m_baseBoard->getName() : m_name;
}

std::string HBOBoard::getBaseBoardActivePartName() const {
    if (!(m_integrated && m_baseBoard))
        return getActivePartName();
    const HBOBoardComponent* part = getActivePart();
    return m_baseBoard->getVendor() + ":" + m_baseBoard->getBoardName() + ":" +
           (part ? part->getComponentName() : std::string()) + ":" + m_baseBoard->getVersion();
}

// ---- Finders ----

HBOBoardComponent* HBOBoard::findBoardComponent(const std::string& name) const {
    if (name.empty())
        return nullptr;
    auto it = m_components.find(name);
    return it == m_components.end() ? nullptr : it->second;
}

HBOBoardComponent* HBOBoard::getCompByName(const std::string& name) const {
    if (name.empty())
        return nullptr;
    for (const auto& entry : m_components)
        if (iequalsClassic(entry.first, name))
            return entry.second;
    return nullptr;
}

HBOBoardComponent* HBOBoard::findFpgaComponent() const {
    for (const auto& entry : m_components)
        if (entry.second && entry.second->getType() == "fpga")
            return entry.second;
    return nullptr;
}

HBOBoardComponent* HBOBoard::findFpgaComponentByName(const std::string& name) const {
    for (const auto& entry : m_components)
        if (entry.second && entry.second->getType() == "fpga" && entry.second->getComponentName() == name)
            return entry.second;
    return nullptr;
}

bool HBOBoard::getParamValue(const std::string& name, std::string& out) const {
    for (const HBOParameter* p : m_parameters) {
        if (p && p->getName() == name) {
            out = p->getValue();
            return true;
        }
    }
    return false;
}

bool HBOBoard::getBusIfByNameUsingConnectors(HBOBusIf*& out, const std::string& name) const {
    for (const auto& entry : m_components) {
        const HBOBoardComponent* c = entry.second;
        if (c && c->isConnector() && c->getBusIfByName(out, name))
            return true;
    }
    return false;
}

void HBOBoard::getBusesOfComponent(const std::string& name, std::vector<HBOBoardBus*>& out) const {
    for (HBOBoardBus* bus : m_buses)
        if (bus && (bus->getComp1() == name || bus->getComp2() == name))
            out.push_back(bus);
}

void HBOBoard::getBoardBusesConnectingComponents(const HBOBoardComponent* a, const HBOBoardComponent* b,
                                                 std::vector<HBOBoardBus*>& out) const {
    if (!a || !b)
        return;
    // One direction only: a connection written from b to a is not found.
    for (HBOBoardBus* bus : m_buses)
        if (bus && bus->getComp1() == a->getComponentName() && bus->getComp2() == b->getComponentName())
            out.push_back(bus);
}

void HBOBoard::getNetsOfComponent(const std::string& name, std::vector<HBOBoardBusNet*>& out) const {
    const std::vector<HBOBoardBus*> buses = m_buses;
    for (HBOBoardBus* bus : buses) {
        if (!bus || (bus->getComp1() != name && bus->getComp2() != name))
            continue;
        const std::vector<HBOBoardBusNet*>& nets = bus->getBoardBusNets();
        out.insert(out.end(), nets.begin(), nets.end());
    }
}

// ---- IP associations ----

bool HBOBoard::getIpAssocInterfaces(const std::string& ipVlnv, const std::string& ipInterface,
                                    std::vector<std::string>& out) const {
    ComMsgMgr::sendScopedMsg::eval(2, __FILE__, __LINE__, "board", "board_intf", ComMsgMgr::MSG_DEBUG1,
                                   "[DBG] board: In HBOBoard::getIpAssocInterfaces for IP interface %s vlnv %s\n",
                                   ipInterface, ipVlnv);
    std::vector<std::string> parts;
    boost::algorithm::split(parts, ipVlnv, boost::algorithm::is_any_of(":"));
    // A short VLNV compares its missing fields as empty texts rather than failing.
    parts.resize(std::max<std::size_t>(parts.size(), 3));
    const std::string& vendor = parts[0];
    const std::string& library = parts[1];
    const std::string& name = parts[2];

    bool found = false;
    for (const auto& entry : m_ipAssocInterfaces) {
        for (const HBOIpPreset* preset : entry.second) {
            if (!preset || !iequalsClassic(preset->getName(), name) || !iequalsClassic(preset->getVendor(), vendor) ||
                !iequalsClassic(preset->getLibrary(), library) ||
                !iequalsClassic(preset->getIpInterface(), ipInterface))
                continue;
            found = true;
            const std::map<std::string, std::string> params = preset->getParamList();
            for (const auto& param : params) {
                out.push_back(param.first);
                ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board_intf",
                                               ComMsgMgr::MSG_DEBUG1,
                                               "[DBG]   + associated board interface: %s\n", param.first);
            }
        }
    }
    return found;
}

// ---- Board part update ----

bool HBOBoard::updateBoardPart(const std::string& part) {
    // Callers check isPartNameSupportedByBoard first, so an active part is
    // there; should it be missing all the same, the update fails as any other.
    HBOBoardComponent* active = getActivePart();
    if (active && active->updatePartName(part))
        return true;
    const std::string board = m_vendor + ":" + getLibrary() + ":" + m_boardName + ":" + m_version;
    ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR, "@49-152@%s%s", part, board);
    return false;
}

// ---- Display ----

void HBOBoard::display(unsigned int indent) const {
    std::fprintf(stderr, "%sBoard - name:%s, description:%s, boardfile:%s \n", dashes(indent).c_str(), m_name.c_str(),
                 m_description.c_str(), m_boardFile.c_str());
    const unsigned int inner = indent + 1;
    const std::string innerDashes = dashes(inner);
    std::fprintf(stderr, "%sParameters:\n", innerDashes.c_str());
    for (const HBOParameter* p : m_parameters)
        if (p)
            p->display(inner);
    std::fprintf(stderr, "%sJumpers:\n", innerDashes.c_str());
    for (const HBOJumper* j : m_jumpers)
        if (j)
            j->display(inner);
    std::fprintf(stderr, "%sComponents:\n", innerDashes.c_str());
    for (const auto& entry : m_components)
        if (entry.second)
            entry.second->display(inner);
    std::fprintf(stderr, "%sConnections:\n", innerDashes.c_str());
    for (const HBOBoardBus* b : m_buses)
        if (b)
            b->display(inner);
    std::fputs("Presets:\n", stderr);
    for (const auto& entry : m_ipPresets) {
        std::fprintf(stderr, "%sPreset Name:%s\n", innerDashes.c_str(), entry.first.c_str());
        for (const HBOIpPreset* p : entry.second)
            if (p)
                p->display(inner);
    }
    std::fputs("IP Associated Presets:\n", stderr);
    for (const auto& entry : m_ipAssocInterfaces) {
        std::fprintf(stderr, "%sPreset Name:%s\n", innerDashes.c_str(), entry.first.c_str());
        for (const HBOIpPreset* p : entry.second)
            if (p)
                p->display(indent + 3);
    }
    std::fflush(stderr);
}

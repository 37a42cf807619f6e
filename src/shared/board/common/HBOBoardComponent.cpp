// Identity, kind tests, part names, copying, ownership and display of a board component.
#include "HBOCase.h"
#include "HBOBoardComponent.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/filesystem.hpp>

#include "HBOBoard.h"
#include "HBOBoardCompMuxPosition.h"
#include "HBOBoardComponentDriver.h"
#include "HBOBoardUtils.h"
#include "HBOBusIf.h"
#include "HBOComponentMode.h"
#include "HBOImage.h"
#include "HBOModelPort.h"
#include "HBONativeCacheHook.h"
#include "HBOParameter.h"
#include "HBOPinProps.h"
#include "HBORebase.h"

namespace {

std::string lower(const std::string& s) {
    return HBOCase::lower(s);
}

bool iequal(const std::string& a, const std::string& b) {
    return HBOCase::iequals(a, b);
}

std::string dashes(int n) {
    return std::string(n > 0 ? static_cast<size_t>(n) : 0u, '-');
}

}  // namespace

HBOBoardComponent::HBOBoardComponent() = default;

HBOBoardComponent::HBOBoardComponent(const HBOBoardComponent& other, HBOBoard* board, const std::string& prefix)
    : m_name(other.m_name),
      m_componentName(other.m_componentName),
      m_type(other.m_type),
      m_subType(other.m_subType),
      m_majorGroup(other.m_majorGroup),
      m_pinMapFile(other.m_pinMapFile),
      m_partName(other.m_partName),
      m_vendor(other.m_vendor),
      m_connectedToLogic(other.m_connectedToLogic),
      m_repository(other.m_repository),
      m_isEnabled(other.m_isEnabled),
      m_userDefined(other.m_userDefined),
      m_rtlFileParseStatus(other.m_rtlFileParseStatus),
      m_constraintsDataPopulated(other.m_constraintsDataPopulated),
      m_boardChangeLogFilename(other.m_boardChangeLogFilename),
      m_boardFile(other.m_boardFile),
      m_constraintsFile(other.m_constraintsFile),
      m_imageFile(other.m_imageFile),
      m_library(other.m_library),
      m_boardName(other.m_boardName),
      m_version(other.m_version),
      m_boardRevision(other.m_boardRevision),
      m_vlnv(other.m_vlnv),
      m_boardDetails1(other.m_boardDetails1),
      m_boardDetails2(other.m_boardDetails2),
      m_boardDetails3(other.m_boardDetails3),
      m_family(other.m_family),
      m_jtagPosition(other.m_jtagPosition),
      m_specUrl(other.m_specUrl),
      m_displayName(other.m_displayName),
      m_description(other.m_description),
      m_longDesc(other.m_longDesc),
      m_board(board),
      m_partUpdated(other.m_partUpdated) {
    // The table keeps pointing at the source's pins: joining boards decides by it which
    // connector pins exist, whatever the clones below are called.
    m_pinTable = other.m_pinTable;

    if (!prefix.empty()) {
        m_componentName = lower(prefix + "_" + other.m_componentName);
        m_displayName = HBORebase::displayName(prefix, other.m_displayName);
        if (board)
            m_name = lower(board->getVendor() + ":" + board->getBoardName() + ":" + m_componentName + ":" +
                           board->getVersion());
    }

    for (const HBOParameter* p : other.m_parameters)
        if (p)
            m_parameters.push_back(new HBOParameter(*p, ""));
    for (const HBOImage* i : other.m_images)
        if (i)
            m_images.push_back(new HBOImage(i->getName(), i->getDisplayName(), i->getDescription(),
                                            i->getResolution(), i->getSubType()));
    for (const HBOComponentMode* m : other.m_modes)
        if (m)
            m_modes.push_back(new HBOComponentMode(*m, this, prefix));
    for (const auto& kv : other.m_busIfs) {
        if (!kv.second)
            continue;
        HBOBusIf* clone = new HBOBusIf(*kv.second, this, prefix);
        adoptPortsOf(clone);
        if (clone->getName().empty())
            delete clone;  // setBusIf would refuse it and nobody would own it
        else
            setBusIf(clone->getName(), clone);
    }
    // A listed source lists its copies too; a source keyed by copies of the names
    // may hold pins renamed since, so its keys are kept.
    if (const PinMap* map = other.m_pins.peek()) {
        PinMap& pins = m_pins.get();
        for (const auto& kv : *map)
            if (kv.second)
                pins.emplace_hint(pins.end(), kv.first, new HBOPinProps(*kv.second, this, nullptr));
    } else {
        m_pinList.reserve(other.m_pinList.size());
        for (const HBOPinProps* pin : other.m_pinList) {
            m_pinList.push_back(new HBOPinProps(*pin, this, nullptr));
            m_pinList.back()->m_listed.on = true;
        }
    }
    m_jtagPositions = other.m_jtagPositions;
    for (const std::string& part : other.m_additionalParts)
        m_additionalParts.push_back(part);
}

HBOBoardComponent::~HBOBoardComponent() {
    HBONativeCacheHook::remove(this);
    for (HBOParameter* p : m_parameters)
        delete p;
    for (HBOImage* i : m_images)
        delete i;
    // One interface may stand under two keys after a rename; free it once.
    std::set<HBOBusIf*> busIfs;
    for (const auto& kv : m_busIfs)
        busIfs.insert(kv.second);
    for (HBOBusIf* b : busIfs)
        delete b;
    for (HBOModelPort* port : m_adoptedPorts)
        delete port;
    forEachPin([](const std::string&, HBOPinProps* pin) { delete pin; });
    for (HBOComponentMode* m : m_modes)
        delete m;
    for (const auto& kv : m_iicPositions)
        delete kv.second;
    for (HBOBoardComponentDriver* d : m_drivers)
        delete d;
}

// ---- Names and identity ----

bool HBOBoardComponent::setName(const std::string& name) {
    m_name = name;
    return true;
}

bool HBOBoardComponent::setName(const std::string& vendor, const std::string& boardName,
                                const std::string& partName, const std::string& version) {
    m_vendor = lower(vendor);
    m_boardName = lower(boardName);
    m_partName = lower(partName);
    m_version = version;
    m_name = lower(vendor + ":" + boardName + ":" + partName + ":" + version);
    return true;
}

bool HBOBoardComponent::setVLNV(const std::string& vendor, const std::string& library, const std::string& name,
                                const std::string& version) {
    m_vendor = lower(vendor);
    m_library = lower(library);
    m_boardName = lower(name);
    m_boardRevision = lower(version);
    m_vlnv = lower(vendor + ":" + library + ":" + name + ":" + version);
    return true;
}

bool HBOBoardComponent::setBoardDetails(const std::string& a, const std::string& b, const std::string& c,
                                        const std::string& family) {
    m_boardDetails1 = a;
    m_boardDetails2 = b;
    m_boardDetails3 = c;
    m_family = family;
    return true;
}

bool HBOBoardComponent::equals(const HBOBoardComponent* other) const {
    return other && (other == this || other->m_name == m_name);
}

#define HBO_COMPONENT_SETTER(Setter, member) \
    bool HBOBoardComponent::Setter(const std::string& v) { \
        member = v;                                         \
        return true;                                        \
    }

HBO_COMPONENT_SETTER(setComponentName, m_componentName)
HBO_COMPONENT_SETTER(setType, m_type)
HBO_COMPONENT_SETTER(setSubType, m_subType)
HBO_COMPONENT_SETTER(setMajorGroup, m_majorGroup)
HBO_COMPONENT_SETTER(setPinMapFile, m_pinMapFile)
HBO_COMPONENT_SETTER(setPartName, m_partName)
HBO_COMPONENT_SETTER(setPartString, m_partName)
HBO_COMPONENT_SETTER(setVendorName, m_vendor)
HBO_COMPONENT_SETTER(setConnectedToLogicStr, m_connectedToLogic)
HBO_COMPONENT_SETTER(setRepository, m_repository)
HBO_COMPONENT_SETTER(setIsEnabled, m_isEnabled)
HBO_COMPONENT_SETTER(setBoardChangeLogFilename, m_boardChangeLogFilename)
HBO_COMPONENT_SETTER(setBoardFile, m_boardFile)
HBO_COMPONENT_SETTER(setConstraintsFile, m_constraintsFile)
HBO_COMPONENT_SETTER(setJtagPosition, m_jtagPosition)
HBO_COMPONENT_SETTER(setSpecUrl, m_specUrl)
HBO_COMPONENT_SETTER(setDisplayName, m_displayName)
HBO_COMPONENT_SETTER(setDescription, m_description)
HBO_COMPONENT_SETTER(setLongDesc, m_longDesc)

#undef HBO_COMPONENT_SETTER

bool HBOBoardComponent::setUserDefinedFlag(bool v) {
    m_userDefined = v;
    return true;
}

bool HBOBoardComponent::setRtlFileParseStatus(bool v) {
    m_rtlFileParseStatus = v;
    return true;
}

bool HBOBoardComponent::setBoard(HBOBoard* board) {
    m_board = board;
    return true;
}

std::string HBOBoardComponent::getConnectorCategory() const {
    return m_majorGroup.empty() ? std::string("Others") : m_majorGroup;
}

bool HBOBoardComponent::setImageFile(const std::string& file) {
    if (file.empty()) {
        m_imageFile.clear();
        return true;
    }
    try {
        namespace fs = boost::filesystem;
        const std::string parent = fs::path(file).parent_path().string();
        if (parent.empty() || parent == ".")
            m_imageFile = fs::path(m_boardFile).parent_path().string() + HBOBoardUtils::getDirSeparator() + file;
        else
            m_imageFile = file;
    } catch (...) {
        // A path that cannot be handled leaves the image as it was.
    }
    return true;
}

bool HBOBoardComponent::getFamily(std::string& out) const {
    out = m_family;
    return true;
}

const std::string& HBOBoardComponent::getDisplayNameORVLNVName() const {
    return m_displayName.empty() ? m_name : m_displayName;
}

// ---- Part names ----

bool HBOBoardComponent::isPartNameSupported(const std::string& part) const {
    return part == m_partName ||
           std::find(m_additionalParts.begin(), m_additionalParts.end(), part) != m_additionalParts.end();
}

bool HBOBoardComponent::addAdditionalSupportedPart(const std::string& part) {
    m_additionalParts.push_back(part);
    return true;
}

bool HBOBoardComponent::getAdditionalSupportedPartNames(std::vector<std::string>& out, bool withCurrent) const {
    out.clear();
    if (withCurrent)
        out.push_back(m_partName);
    out.insert(out.end(), m_additionalParts.begin(), m_additionalParts.end());
    return true;
}

bool HBOBoardComponent::updatePartName(const std::string& part) {
    if (part == m_partName)
        return true;
    auto it = std::find(m_additionalParts.begin(), m_additionalParts.end(), part);
    if (it == m_additionalParts.end())
        return false;
    *it = m_partName;
    m_partName = part;
    m_partUpdated = true;
    return true;
}

// ---- Kind tests ----

bool HBOBoardComponent::isLPCConnector() const {
    return m_type == "connector" && m_subType == "fmc_lpc";
}
bool HBOBoardComponent::isHPCConnector() const {
    return m_type == "connector" && m_subType == "fmc_hpc";
}
bool HBOBoardComponent::isLPCPlusConnector() const {
    return m_type == "connector" && (m_subType == "fmc_plus" || m_subType == "fmc_lpc_plus");
}
bool HBOBoardComponent::isDIMMConnector() const {
    return m_type == "connector" && m_subType == "dimm";
}
bool HBOBoardComponent::isPMODConnector() const {
    return m_type == "connector" && m_subType == "pmod";
}
bool HBOBoardComponent::isSOM240Connector() const {
    return m_type == "connector" && (m_subType == "som240" || m_subType == "som");
}
bool HBOBoardComponent::isSOM480Connector() const {
    return m_type == "connector" && m_subType == "som480";
}
bool HBOBoardComponent::isLPCCategoryConnector() const {
    return isLPCConnector() || isHPCConnector() || isLPCPlusConnector();
}
bool HBOBoardComponent::isSOMCategoryConnector() const {
    return isSOM240Connector() || isSOM480Connector();
}
bool HBOBoardComponent::isConnector() const {
    return isLPCConnector() || isHPCConnector() || isLPCPlusConnector() || isDIMMConnector() ||
           isPMODConnector() || isSOM240Connector() || isSOM480Connector();
}

bool HBOBoardComponent::isConnectedToLogicOnly() const {
    return iequal(m_connectedToLogic, "pl");
}
bool HBOBoardComponent::isConnectedToPSOnly() const {
    return iequal(m_connectedToLogic, "ps");
}
bool HBOBoardComponent::isConnectedToPSAndLogic() const {
    return iequal(m_connectedToLogic, "ps_and_pl");
}

bool HBOBoardComponent::isCompatibleWithSomVLN(const std::string& vln) const {
    for (const HBOParameter* p : m_parameters)
        if (p && p->getName() == "compatible_som_vln")
            return lower(p->getValue()) == lower(vln);
    return true;
}

bool HBOBoardComponent::isFullCompatibleWithConnector(const HBOBoardComponent* other) const {
    return other && other->getBoard() && other->getBoard()->isConnectorFullCompatibleWithConnector(other, this);
}

bool HBOBoardComponent::isPartialCompatibleWithConnector(const HBOBoardComponent* other) const {
    return other && other->getBoard() &&
           other->getBoard()->isConnectorPartialCompatibleWithConnector(other, this);
}

bool HBOBoardComponent::isCompatibleWithConnector(const HBOBoardComponent* other) const {
    return isFullCompatibleWithConnector(other) || isPartialCompatibleWithConnector(other);
}

// ---- Parameters, images, modes, drivers, positions ----

bool HBOBoardComponent::addParameter(HBOParameter* p) {
    m_parameters.push_back(p);
    return true;
}

bool HBOBoardComponent::getParamValue(const std::string& name, std::string& out) const {
    for (const HBOParameter* p : m_parameters)
        if (p && p->getName() == name) {
            out = p->getValue();
            return true;
        }
    return false;
}

bool HBOBoardComponent::addImage(HBOImage* image) {
    m_images.push_back(image);
    return true;
}

bool HBOBoardComponent::addComponentMode(HBOComponentMode* mode) {
    m_modes.push_back(mode);
    return true;
}

void HBOBoardComponent::updateEnablementDependencyJumperName(const std::string& from, const std::string& to) {
    for (HBOComponentMode* m : m_modes)
        if (m)
            m->updateEnablementDependencyJumperName(from, to);
}

bool HBOBoardComponent::addJtagPosition(const std::string& chain, const std::string& position) {
    m_jtagPositions[chain] = position;
    return true;
}

std::string HBOBoardComponent::getJtagPosition(const std::string& chain) const {
    auto it = m_jtagPositions.find(chain);
    return it == m_jtagPositions.end() ? std::string() : it->second;
}

int HBOBoardComponent::getJtagPositionForSingleChain(std::string& out) const {
    out.clear();
    if (m_jtagPositions.size() == 1)
        out = m_jtagPositions.begin()->second;
    return static_cast<int>(m_jtagPositions.size());
}

bool HBOBoardComponent::addIICPosition(int index, HBOBoardCompMuxPosition* position) {
    HBOBoardCompMuxPosition*& slot = m_iicPositions[index];
    // The map owns its positions: one that is replaced would otherwise be lost.
    if (slot != position)
        delete slot;
    slot = position;
    return true;
}

void HBOBoardComponent::getIICPositions(std::vector<HBOBoardCompMuxPosition*>& out) const {
    for (const auto& kv : m_iicPositions)
        out.push_back(kv.second);
}

bool HBOBoardComponent::addDriver(HBOBoardComponentDriver* driver) {
    m_drivers.push_back(driver);
    return true;
}

bool HBOBoardComponent::setDesignConstrs(const DesignConstrs& constrs) {
    m_designConstrs = constrs;
    return true;
}

// ---- Display ----

void HBOBoardComponent::display(int indent) const {
    const std::string d0 = dashes(indent);
    const std::string d1 = dashes(indent + 1);
    const unsigned int child = static_cast<unsigned int>(indent + 2 > 0 ? indent + 2 : 0);
    std::fprintf(stderr, "%sComponent - name:%s, mode:%s, vlnv:%s, preferred IP:%s, of_component:%s \n",
                 d0.c_str(), m_name.c_str(), m_type.c_str(), m_subType.c_str(), m_partName.c_str(),
                 m_pinMapFile.c_str());
    std::fprintf(stderr, "%s-Parameters:\n", d1.c_str());
    for (const HBOParameter* p : m_parameters)
        if (p)
            p->display(child);
    std::fprintf(stderr, "%s-Component modes:\n", d1.c_str());
    for (const HBOComponentMode* m : m_modes)
        if (m)
            m->display(static_cast<int>(child));
    std::fprintf(stderr, "%s-Interfaces:\n", d1.c_str());
    for (const auto& kv : m_busIfs)
        if (kv.second)
            kv.second->display(child);
    std::fprintf(stderr, "%s-Model Ports:\n", d1.c_str());
    for (const auto& kv : m_modelPorts)
        if (kv.second)
            kv.second->display(child);
    std::fputs("-Pins:\n", stderr);
    forEachPin([child](const std::string&, const HBOPinProps* pin) {
        if (pin)
            pin->display(static_cast<int>(child));
    });
}

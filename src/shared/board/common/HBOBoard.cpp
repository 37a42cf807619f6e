// Construction, identity, revisions, presets and the plain additions of a board.
#include "HBOBoard.h"

#include <algorithm>

#include <locale>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/trim.hpp>

#include "HBOCase.h"
#include "HBOBoardBus.h"
#include "HBOBoardComponent.h"
#include "HBOBoardDB.h"
#include "HBOImage.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBONativeCacheHook.h"
#include "HBOParameter.h"

HBOBoard::HBOBoard() {}

namespace {
template <class T>
void deleteOnce(std::vector<T*>& objects) {
    std::sort(objects.begin(), objects.end());
    objects.erase(std::unique(objects.begin(), objects.end()), objects.end());
    for (T* object : objects)
        delete object;
    objects.clear();
}
}  // namespace

HBOBoard::~HBOBoard() {
    HBONativeCacheHook::remove(this);
    for (HBOParameter* p : m_parameters)
        delete p;
    m_parameters.clear();
    for (auto& entry : m_components)
        delete entry.second;
    m_components.clear();
    for (HBOBoardComponent* c : m_replacedComponents)
        delete c;
    m_replacedComponents.clear();
    m_activePart = nullptr;
    for (HBOBoardBus* b : m_buses)
        delete b;
    m_buses.clear();
    // Jumpers, images and presets are only held: their lists are dropped
    // without deleting what they point to, except for what the board adopted.
    m_jumpers.clear();
    m_images.clear();
    m_ipPresets.clear();
    m_ipAssocInterfaces.clear();
    deleteOnce(m_ownedJumpers);
    deleteOnce(m_ownedImages);
    deleteOnce(m_ownedPresets);
}

void HBOBoard::setName(const std::string& vendor, const std::string& boardName, const std::string& version) {
    m_vendor = HBOCase::lower(vendor);
    m_boardName = HBOCase::lower(boardName);
    m_version = version;
    m_name = m_vendor + ":" + m_boardName + ":" + HBOCase::lower(version);
}

void HBOBoard::setUserDefinedFlag(bool flag) {
    m_userDefined = flag;
    if (HBOBoardComponent* part = getActivePart())
        part->setUserDefinedFlag(flag);
}

void HBOBoard::setChangeLogFilename(const std::string& file) {
    m_changeLogFilename = file;
    if (HBOBoardComponent* part = getActivePart())
        part->setBoardChangeLogFilename(file);
}

void HBOBoard::setBoardFile(const std::string& file) {
    m_boardFile = file;
    if (HBOBoardComponent* part = getActivePart())
        part->setBoardFile(file);
}

void HBOBoard::setRepository(const std::string& repository) {
    m_repository = repository;
    if (HBOBoardComponent* part = getActivePart())
        part->setRepository(repository);
}

void HBOBoard::setCompatibleBoardRevisions(const std::map<int, std::string>& revisions) {
    m_compatibleRevisions = revisions;
    if (m_compatibleRevisions.empty())
        m_boardRevision.clear();
    else
        m_boardRevision = boost::algorithm::trim_copy_if(m_compatibleRevisions.rbegin()->second,
                                                         boost::algorithm::is_space(std::locale::classic()));
}

void HBOBoard::getCompatibleBoardRevisionsAsVec(std::vector<std::string>& out) const {
    out.clear();
    for (const auto& entry : m_compatibleRevisions)
        out.push_back("{" + std::to_string(entry.first) + " " + entry.second + "}");
}

void HBOBoard::setIpPreset(const std::string& key, const std::vector<HBOIpPreset*>& presets) {
    if (key.empty())
        return;
    m_ipPresets[HBOCase::upper(key)] = presets;
}

void HBOBoard::setIpAssociatedInterface(const std::string& key, const std::vector<HBOIpPreset*>& presets) {
    if (key.empty())
        return;
    m_ipAssocInterfaces[HBOCase::upper(key)] = presets;
}

std::vector<HBOIpPreset*> HBOBoard::findPresetProc(const std::string& name) const {
    if (name.empty())
        return std::vector<HBOIpPreset*>();
    auto it = m_ipPresets.find(HBOCase::upper(name));
    if (it == m_ipPresets.end())
        return std::vector<HBOIpPreset*>();
    return it->second;
}

void HBOBoard::addBoardComponent(HBOBoardComponent* component) {
    if (!component)
        return;
    // A component of an equal name is replaced, not deleted: whoever added it keeps it.
    m_components[component->getComponentName()] = component;
}

void HBOBoard::keepReplacedComponent(HBOBoardComponent* component) {
    if (component)
        m_replacedComponents.push_back(component);
}

void HBOBoard::getBoardComponentsVec(std::vector<HBOBoardComponent*>& out) const {
    for (const auto& entry : m_components)
        out.push_back(entry.second);
}

HBOBoardComponent* HBOBoard::getActivePart() {
    if (!m_activePart)
        m_activePart = findFpgaComponent();
    return m_activePart;
}

HBOBoardComponent* HBOBoard::getActivePart() const {
    // The lazy fill is a cache of a pure look-up, so it is allowed on a const board.
    if (!m_activePart)
        m_activePart = findFpgaComponent();
    return m_activePart;
}

void HBOBoard::saveBoard() {
    if (m_store)
        m_store->saveBoard(this);
}

void HBOBoard::addConnectedBoard(const std::string& id, const std::string& aliasName) {
    m_connectedBoards[id] = aliasName;
}

void HBOBoard::addConnectedComponents(const std::string& boardA, const std::string& compA,
                                      const std::string& boardB, const std::string& compB) {
    m_connectedComponents[boardA + "#" + compA] = boardB + "#" + compB;
}

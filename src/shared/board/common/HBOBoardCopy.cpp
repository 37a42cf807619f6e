// The deep copy of a board under a new board name.
#include "HBOBoard.h"

#include "HBOBoardBus.h"
#include "HBOBoardComponent.h"
#include "HBOImage.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBOParameter.h"

HBOBoard::HBOBoard(const HBOBoard& other, const std::string& name)
    : m_userDefined(other.m_userDefined),
      m_reservedFlag(other.m_reservedFlag),
      m_changeLogFilename(other.m_changeLogFilename),
      // The copy is not read from any file: its board file stays empty.
      m_vendor(other.m_vendor),
      m_boardName(other.m_boardName),
      m_name(other.m_name),
      m_version(other.m_version),
      m_boardRevision(other.m_boardRevision),
      m_specUrl(other.m_specUrl),
      m_displayName(other.m_displayName),
      m_longDesc(other.m_longDesc),
      m_repository(other.m_repository),
      m_migratedFromSchema(other.m_migratedFromSchema),
      m_schemaVersion(other.m_schemaVersion),
      m_fileRevision(other.m_fileRevision),
      m_description(other.m_description),
      m_presetFile(other.m_presetFile),
      m_boardImage(other.m_boardImage),
      m_store(other.m_store),
      m_integrated(other.m_integrated),
      m_supportsCED(other.m_supportsCED),
      m_baseBoard(other.m_baseBoard),
      m_integratedConnections(other.m_integratedConnections),
      m_fallbackString(other.m_fallbackString),
      m_constraintsFlagFallback(other.m_constraintsFlagFallback) {
    // Data properties, power rails, connected maps and the compatibility
    // caches start empty: they belong to the source's files and catalogue.
    setName(m_vendor, name, m_version);
    m_compatibleRevisions = other.m_compatibleRevisions;
    m_jtagChains = other.m_jtagChains;

    cloneJumpersAndImages(other.m_jumpers, other.m_images, "");
    for (const HBOParameter* p : other.m_parameters)
        if (p)
            m_parameters.push_back(new HBOParameter(*p, ""));
    for (const auto& entry : other.m_components) {
        if (!entry.second)
            continue;
        HBOBoardComponent* clone = new HBOBoardComponent(*entry.second, this, "");
        auto it = m_components.find(clone->getComponentName());
        if (it != m_components.end()) {
            // Two source keys with one component name: the clone made here
            // would be lost, so the later one replaces it and the earlier goes.
            delete it->second;
            it->second = clone;
        } else {
            m_components[clone->getComponentName()] = clone;
        }
    }
    for (const HBOBoardBus* b : other.m_buses)
        if (b)
            m_buses.push_back(new HBOBoardBus(*b, this, ""));

    for (const auto& entry : other.m_ipPresets)
        m_ipPresets[entry.first] = clonePresets(entry.second);
    for (const auto& entry : other.m_ipAssocInterfaces)
        m_ipAssocInterfaces[entry.first] = clonePresets(entry.second);

    // Whatever the source had chosen, the copy's active part is its first FPGA component.
    m_activePart = findFpgaComponent();
}

std::vector<HBOIpPreset*> HBOBoard::clonePresets(const std::vector<HBOIpPreset*>& presets) {
    std::vector<HBOIpPreset*> clones;
    for (const HBOIpPreset* p : presets) {
        if (!p)
            continue;
        HBOIpPreset* clone = new HBOIpPreset(*p, this, "");
        m_ownedPresets.push_back(clone);
        clones.push_back(clone);
    }
    return clones;
}

void HBOBoard::cloneJumpersAndImages(const std::vector<HBOJumper*>& jumpers, const std::vector<HBOImage*>& images,
                                     const std::string& prefix) {
    for (const HBOJumper* j : jumpers) {
        if (!j)
            continue;
        HBOJumper* clone = new HBOJumper(*j, this, prefix);
        m_ownedJumpers.push_back(clone);
        m_jumpers.push_back(clone);
    }
    for (const HBOImage* i : images) {
        if (!i)
            continue;
        HBOImage* clone = new HBOImage(*i, prefix);
        m_ownedImages.push_back(clone);
        m_images.push_back(clone);
    }
}

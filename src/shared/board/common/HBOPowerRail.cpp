#include "HBOPowerRail.h"

#include <algorithm>

HBOPowerRail::HBOPowerRail(const std::string& name, const std::vector<std::string>& memberNames,
                           const std::vector<std::string>& supplyNames,
                           const std::map<std::string, int>& memberPhases, bool isDirect, int numPhases)
    : m_name(name),
      m_memberNames(memberNames),
      m_supplyNames(supplyNames),
      m_memberPhases(memberPhases),
      m_isDirect(isDirect),
      m_numPhases(numPhases) {
    deriveRails();
}

HBOPowerRail::HBOPowerRail(const std::string& name, const std::vector<std::string>& supplyNames,
                           const std::vector<std::string>& railNames, bool isDirect, int numPhases,
                           const std::map<std::string, int>& memberPhases)
    : m_name(name),
      m_memberNames(supplyNames),
      m_supplyNames(supplyNames),
      m_memberPhases(memberPhases),
      m_isDirect(isDirect),
      m_numPhases(numPhases) {
    m_memberNames.insert(m_memberNames.end(), railNames.begin(), railNames.end());
    deriveRails();
}

void HBOPowerRail::deriveRails() {
    m_railNames.clear();
    for (const std::string& member : m_memberNames)
        if (!isSupply(member))
            m_railNames.push_back(member);
}

bool HBOPowerRail::isSupply(const std::string& member) const {
    return std::find(m_supplyNames.begin(), m_supplyNames.end(), member) != m_supplyNames.end();
}

int HBOPowerRail::getMemberPhases(const std::string& member) const {
    auto it = m_memberPhases.find(member);
    return it != m_memberPhases.end() ? it->second : 0;
}

// The same shape as the reader's listing of all rails, so that it can stream them.
std::ostream& operator<<(std::ostream& os, const HBOPowerRail& rail) {
    os << "  <power_rail name=\"" << rail.getName() << "\"";
    if (rail.isDirect())
        os << " is_direct=true";
    if (rail.isPhasedRail())
        os << " num_phases=" << rail.getNumPhases();
    os << "\">\n";
    for (const std::string& member : rail.getMemberNames()) {
        os << "    <" << (rail.isSupply(member) ? "supply" : "rail") << " name=\"" << member << "\"";
        const auto& phases = rail.getMemberPhases();
        auto it = phases.find(member);
        if (it != phases.end())
            os << " phased_power_source=" << it->second;
        os << "\"/>\n";
    }
    os << "  </power_rail>\n";
    return os;
}

// One power rail of a board: the device supplies and the other rails that it feeds.
// A plain value; the board keeps a vector of them.
#ifndef HBOPOWERRAIL_H
#define HBOPOWERRAIL_H

#include <map>
#include <ostream>
#include <string>
#include <vector>

class HBOPowerRail {
public:
    HBOPowerRail() = default;
    // memberNames holds supplies and rails together, supplies first; the rails are
    // the members that are not supplies.
    HBOPowerRail(const std::string& name, const std::vector<std::string>& memberNames,
                 const std::vector<std::string>& supplyNames,
                 const std::map<std::string, int>& memberPhases, bool isDirect, int numPhases);
    // Supplies and rails given apart; they become the members, supplies first.
    HBOPowerRail(const std::string& name, const std::vector<std::string>& supplyNames,
                 const std::vector<std::string>& railNames, bool isDirect, int numPhases = 0,
                 const std::map<std::string, int>& memberPhases = {});
    HBOPowerRail(const HBOPowerRail&) = default;
    HBOPowerRail(HBOPowerRail&&) = default;
    HBOPowerRail& operator=(const HBOPowerRail&) = default;
    HBOPowerRail& operator=(HBOPowerRail&&) = default;

    const std::string& getName() const { return m_name; }
    const std::vector<std::string>& getMemberNames() const { return m_memberNames; }
    const std::vector<std::string>& getSupplyNames() const { return m_supplyNames; }
    const std::vector<std::string>& getRailNames() const { return m_railNames; }
    // Phases that member takes from its phased source; 0 for any other member.
    int getMemberPhases(const std::string& member) const;
    const std::map<std::string, int>& getMemberPhases() const { return m_memberPhases; }
    int getNumPhases() const { return m_numPhases; }
    bool isDirect() const { return m_isDirect; }
    bool isPhasedRail() const { return m_numPhases > 0; }
    bool isSupply(const std::string& member) const;

private:
    void deriveRails();

    std::string m_name;
    std::vector<std::string> m_memberNames;
    std::vector<std::string> m_supplyNames;
    std::vector<std::string> m_railNames;
    std::map<std::string, int> m_memberPhases;
    bool m_isDirect = false;
    int m_numPhases = 0;
};

// The rail as one element of the rail listing of the board reader's debug output.
std::ostream& operator<<(std::ostream& os, const HBOPowerRail& rail);

#endif

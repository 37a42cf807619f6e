// One way of using a component: the interfaces it needs, the preferred IPs and its preset.
#ifndef HBOCOMPONENTMODE_H
#define HBOCOMPONENTMODE_H

#include <map>
#include <string>
#include <utility>
#include <vector>

class HBOBoardComponent;
class HBOBusIfPreference;

class HBOComponentMode {
public:
    // Order -> (interface name, optional flag).
    using InterfaceMap = std::map<int, std::pair<std::string, bool>>;

    HBOComponentMode() = default;
    // Rebase copy for owner; the preferred IPs are cloned for the owner's board.
    HBOComponentMode(const HBOComponentMode& other, HBOBoardComponent* owner, const std::string& prefix);
    HBOComponentMode(const HBOComponentMode&) = delete;
    HBOComponentMode& operator=(const HBOComponentMode&) = delete;
    // Deletes the preferred IPs.
    ~HBOComponentMode();

    const std::string& getName() const { return m_name; }
    bool setName(const std::string& v);
    const std::string& getDisplayName() const { return m_displayName; }
    bool setDisplayName(const std::string& v);
    const std::string& getDescription() const { return m_description; }
    bool setDescription(const std::string& v);

    const InterfaceMap& getInterfaces() const { return m_interfaces; }
    bool getInterfaces(InterfaceMap& out) const;
    bool addInterface(int order, const std::pair<std::string, bool>& intf);
    bool addInterface(int order, const std::string& name, bool optional = false);
    // The entries whose optional flag is false.
    bool getRequiredInterfaces(InterfaceMap& out) const;

    // Takes ownership.
    bool addPreferredIp(HBOBusIfPreference* pref);
    const std::vector<HBOBusIfPreference*>& getPreferredIps() const { return m_preferredIps; }
    bool getPreferredIps(std::vector<HBOBusIfPreference*>& out) const;

    const std::string& getEnablementDependency() const { return m_enablementDependency; }
    bool setEnablementDependency(const std::string& v);
    const std::string& getPresetProcName() const { return m_presetProcName; }
    bool setPresetProcName(const std::string& v);
    const std::string& getIsEnabled() const { return m_isEnabled; }
    bool setIsEnabled(const std::string& v);
    HBOBoardComponent* getOwnerComponent() const { return m_ownerComponent; }
    bool setOwnerComponent(HBOBoardComponent* owner);

    // Follows a jumper rename: every occurrence of from (any case) becomes lower-case to.
    void updateEnablementDependencyJumperName(const std::string& from, const std::string& to);

    void display(int indent) const;

private:
    std::string m_name;
    std::string m_displayName;
    std::string m_description;
    InterfaceMap m_interfaces;
    std::vector<HBOBusIfPreference*> m_preferredIps;
    std::string m_enablementDependency;
    std::string m_presetProcName;
    std::string m_isEnabled = "true";
    HBOBoardComponent* m_ownerComponent = nullptr;
};

#endif

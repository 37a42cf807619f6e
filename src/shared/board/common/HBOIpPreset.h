// A named set of IP parameter values (kind "preset"), or a rule binding an IP interface
// to board interfaces (kind "assoc_intf", parameters keyed by board interface name).
#ifndef HBOIPPRESET_H
#define HBOIPPRESET_H

#include <map>
#include <string>

class HBOBoard;

class HBOIpPreset {
public:
    HBOIpPreset() = default;
    // Copy for board; a non-empty prefix rebases the procedure name, rebuilds the preset
    // name and, for an association rule, rebases the interface names it binds.
    HBOIpPreset(const HBOIpPreset& other, HBOBoard* board, const std::string& prefix);
    HBOIpPreset(const HBOIpPreset& other) = default;
    HBOIpPreset& operator=(const HBOIpPreset& other) = default;
    ~HBOIpPreset();

    const std::string& getVendor() const { return m_vendor; }
    bool setVendor(const std::string& v);
    const std::string& getLibrary() const { return m_library; }
    bool setLibrary(const std::string& v);
    const std::string& getName() const { return m_name; }
    bool setName(const std::string& v);
    const std::string& getPresetProcName() const { return m_presetProcName; }
    bool setPresetProcName(const std::string& v);
    const std::string& getVersion() const { return m_version; }
    bool setVersion(const std::string& v);
    const std::string& getIpInterface() const { return m_ipInterface; }
    bool setIpInterface(const std::string& v);
    const std::string& getPresetName() const { return m_presetName; }
    bool setPresetName(const std::string& v);

    // Kind: "preset" or "assoc_intf", compared ignoring case.
    bool setPresetorAssocIntf(const std::string& kind);
    const std::string& getPresetorAssocIntf() const { return m_kind; }
    bool isPreset() const;
    bool isAssocIntf() const;

    std::map<std::string, std::string>& getParamList() { return m_params; }
    const std::map<std::string, std::string>& getParamList() const { return m_params; }
    bool getParamValue(const std::string& name, std::string& out) const;
    // A bare ".csv" value is resolved against the directory of the owner's board file.
    bool setParam(const std::string& name, const std::string& value);

    const std::string& getValueType() const { return m_valueType; }
    bool setValueType(const std::string& v);
    HBOBoard* getOwner() const { return m_owner; }
    bool setOwner(HBOBoard* owner);

    void display(int indent) const;

private:
    std::string m_vendor;
    std::string m_library;
    std::string m_name;
    std::string m_presetProcName;
    std::string m_version;
    std::string m_ipInterface;
    std::string m_presetName;
    std::string m_kind = "preset";
    std::map<std::string, std::string> m_params;
    std::string m_valueType;
    HBOBoard* m_owner = nullptr;
};

#endif

// A board interface: a named group of a component's signals that follows an abstract
// interface type (vendor:library:name:version) and maps its logical ports to the
// board's physical ports.
#ifndef HBOBUSIF_H
#define HBOBUSIF_H

#include <cstddef>
#include <map>
#include <string>
#include <vector>

class HBOBoard;
class HBOBoardComponent;
class HBOBusIfPreference;
class HBOModelPort;
class HBOParameter;
class HBOPinProps;
class HBOPortMap;

class HBOBusIf {
public:
    HBOBusIf();
    // Deep copy for the component owner (may be null), names rebased with prefix.
    HBOBusIf(const HBOBusIf& other, HBOBoardComponent* owner, const std::string& prefix);
    // Deletes parameters, port maps and preferences; the model ports are only held.
    ~HBOBusIf();
    HBOBusIf(const HBOBusIf&) = delete;
    HBOBusIf& operator=(const HBOBusIf&) = delete;

    const std::string& getName() const { return m_name; }
    void setName(const std::string& name) { m_name = name; }

    const std::string& getPresetFile() const { return m_presetFile; }
    void setPresetFile(const std::string& file) { m_presetFile = file; }

    const std::string& getDisplayName() const { return m_displayName; }
    bool getDisplayName(std::string& out) const;
    void setDisplayName(const std::string& name) { m_displayName = name; }

    // Abstract type.
    bool getAbstractType(std::string& vendor, std::string& library, std::string& name,
                         std::string& version) const;
    bool getAbstractTypeVLNV(std::string& out, const std::string& sep) const;
    const std::string& getAbstractTypeName() const { return m_abstractTypeName; }
    bool getAbstractTypeName(std::string& out) const;
    const std::string& getAbstractTypeVersion() const { return m_abstractTypeVersion; }
    bool getAbstractTypeVersion(std::string& out) const;
    const std::string& getAbstractTypeVendorName() const { return m_abstractTypeVendor; }
    bool getAbstractTypeVendorName(std::string& out) const;
    const std::string& getAbstractTypeLibraryName() const { return m_abstractTypeLibrary; }
    bool getAbstractTypeLibraryName(std::string& out) const;
    void setAbstractTypeName(const std::string& name) { m_abstractTypeName = name; }
    void setAbstractTypeVersion(const std::string& version) { m_abstractTypeVersion = version; }
    void setAbstractTypeVendor(const std::string& vendor) { m_abstractTypeVendor = vendor; }
    void setAbstractTypeLibrary(const std::string& library) { m_abstractTypeLibrary = library; }

    const std::string& getInterfaceMode() const { return m_interfaceMode; }
    bool getInterfaceMode(std::string& out) const;
    void setInterfaceMode(const std::string& mode) { m_interfaceMode = mode; }

    const std::string& getPresetProcName() const { return m_presetProcName; }
    void setPresetProcName(const std::string& name) { m_presetProcName = name; }

    // Port maps, owned, in file order.
    void populatePortMap(HBOPortMap* portMap);
    const std::vector<HBOPortMap*>& getPortMapSeq() const { return m_portMapSeq; }
    bool getPortMapSeq(std::vector<HBOPortMap*>& out) const;
    std::size_t getPortMapSize() const { return m_portMapSeq.size(); }
    bool getPhysicalPortSeq(std::vector<std::string>& out) const;
    // Physical port of a logical port, the logical name compared ignoring case.
    bool getPPortByLPort(const std::string& logicalPort, std::string& out) const;

    // Parameter values; names are looked up ignoring case.
    const std::map<std::string, std::string>& getParamList() const { return m_paramValues; }
    bool getParamList(std::map<std::string, std::string>& out) const;
    bool getParamValue(const std::string& name, std::string& out) const;
    bool setParam(const std::string& name, const std::string& value);

    // The chosen preference, not owned.
    HBOBusIfPreference* getPreference() const { return m_preference; }
    bool setPreference(HBOBusIfPreference* preference);

    HBOBoard* getParentBoard() const { return m_parentBoard; }
    void setParentBoard(HBOBoard* board) { m_parentBoard = board; }

    const std::string& getOfComponent() const { return m_ofComponent; }
    void setOfComponent(const std::string& component) { m_ofComponent = component; }

    const std::string& getDescription() const { return m_description; }
    void setDescription(const std::string& description) { m_description = description; }

    // All preferences, owned; setPreferences appends one.
    const std::vector<HBOBusIfPreference*>& getPreferences() const { return m_preferences; }
    bool setPreferences(HBOBusIfPreference* preference);

    HBOBoardComponent* getOwnerComponent() const { return m_ownerComponent; }
    void setOwnerComponent(HBOBoardComponent* component) { m_ownerComponent = component; }

    // "true" or "false", as text.
    const std::string& getIsEnabled() const { return m_isEnabled; }
    void setIsEnabled(const std::string& isEnabled) { m_isEnabled = isEnabled; }

    // Model ports under their names; held, not owned.
    const std::map<std::string, HBOModelPort*>& getPortMaps() const { return m_ports; }
    void addPort(HBOModelPort* port);

    // Jumper name to the position the interface needs.
    const std::map<std::string, bool>& getJumpers() const { return m_jumpers; }
    void addJumper(const std::string& name, bool value);
    // Board parameter name to the value the interface needs.
    const std::map<std::string, bool>& getParams() const { return m_params; }
    void addParam(const std::string& name, bool value);

    // Parameters, owned.
    const std::vector<HBOParameter*>& getParameters() const { return m_parameters; }
    void addParameter(HBOParameter* parameter);

    void updatePortPinMap(const std::map<std::string, std::string>& pinMap);
    // Pins of all ports in port name order (see the .cpp for the schema 1 rule).
    bool getPortMapPinPropsSeq(std::vector<HBOPinProps*>& out) const;

    void display(unsigned int indent = 0) const;

private:
    std::string m_name;
    std::string m_presetFile;
    std::string m_displayName;
    std::string m_abstractTypeName;
    std::string m_abstractTypeVersion;
    std::string m_abstractTypeVendor;
    std::string m_abstractTypeLibrary;
    std::string m_interfaceMode;
    std::string m_presetProcName;
    std::vector<HBOPortMap*> m_portMapSeq;
    std::map<std::string, std::string> m_paramValues;
    HBOBusIfPreference* m_preference = nullptr;
    HBOBoard* m_parentBoard = nullptr;
    std::string m_ofComponent;
    std::string m_description;
    std::vector<HBOBusIfPreference*> m_preferences;
    HBOBoardComponent* m_ownerComponent = nullptr;
    std::string m_isEnabled = "true";
    std::map<std::string, HBOModelPort*> m_ports;
    std::map<std::string, bool> m_jumpers;
    std::map<std::string, bool> m_params;
    std::vector<HBOParameter*> m_parameters;
};

#endif

// One revision of one board: the root of the board model. It owns the
// components and connections and answers most questions about the board's
// device by forwarding them to the active part, its FPGA component.
#ifndef HBOBOARD_H
#define HBOBOARD_H

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <boost/tuple/tuple.hpp>

#include "HBOBoardDataProps.h"
#include "HBOPowerRail.h"

class HBOBoardBus;
class HBOBoardBusNet;
class HBOBoardComponent;
class HBOBoardDB;
class HBOBusIf;
class HBOImage;
class HBOIpPreset;
class HBOJumper;
class HBOModelPort;
class HBOParameter;
class HBOPinProps;

class HBOBoard {
public:
    // Base connector name, daughter board, daughter connector name.
    typedef boost::tuple<std::string, const HBOBoard*, std::string> IntegratedConnection;
    typedef std::map<std::string, std::vector<HBOIpPreset*>> IpPresetMap;
    typedef std::map<std::string, HBOBoardComponent*> ComponentMap;
    typedef std::map<std::string, std::vector<HBOBoardComponent*>> ConnectorCache;

    HBOBoard();
    // Deep copy of `other` under the board name `name`; vendor and version kept.
    HBOBoard(const HBOBoard& other, const std::string& name);
    ~HBOBoard();

    HBOBoard(const HBOBoard&) = delete;
    HBOBoard& operator=(const HBOBoard&) = delete;

    // ---- Identity and plain fields ----
    bool isUserDefined() const { return m_userDefined; }
    void setUserDefinedFlag(bool flag);

    const std::string& getChangeLogFilename() const { return m_changeLogFilename; }
    void setChangeLogFilename(const std::string& file);

    const std::string& getBoardFile() const { return m_boardFile; }
    void setBoardFile(const std::string& file);

    const std::string& getVendor() const { return m_vendor; }
    const std::string& getBoardName() const { return m_boardName; }
    const std::string& getName() const { return m_name; }
    bool getName(std::string& out) const {
        out = m_name;
        return true;
    }
    const std::string& getVersion() const { return m_version; }
    const std::string& getBoardRevision() const { return m_boardRevision; }
    void setName(const std::string& vendor, const std::string& boardName, const std::string& version);

    const std::string& getSpecUrl() const { return m_specUrl; }
    void setSpecUrl(const std::string& url) { m_specUrl = url; }
    const std::string& getDisplayName() const { return m_displayName; }
    void setDisplayName(const std::string& name) { m_displayName = name; }
    const std::string& getLongDesc() const { return m_longDesc; }
    void setLongDesc(const std::string& desc) { m_longDesc = desc; }

    const std::string& getRepository() const { return m_repository; }
    void setRepository(const std::string& repository);

    const std::string& getMigratedFromSchema() const { return m_migratedFromSchema; }
    void setMigratedFromSchema(const std::string& schema) { m_migratedFromSchema = schema; }
    std::string getBoardSchemaVersion() const { return m_schemaVersion; }
    void setBoardSchemaVersion(const std::string& version) { m_schemaVersion = version; }
    const std::string& getFileRevision() const { return m_fileRevision; }
    void setFileRevision(const std::string& revision) { m_fileRevision = revision; }
    const std::string& getDescription() const { return m_description; }
    void setDescription(const std::string& desc) { m_description = desc; }

    // ---- Revisions ----
    const std::map<int, std::string>& getCompatibleBoardRevisions() const { return m_compatibleRevisions; }
    void setCompatibleBoardRevisions(const std::map<int, std::string>& revisions);
    // One "{key value}" element per revision, in key order.
    void getCompatibleBoardRevisionsAsVec(std::vector<std::string>& out) const;

    // ---- Children ----
    const std::vector<std::string>& getJtagChains() const { return m_jtagChains; }
    void addJtagChain(const std::string& chain) { m_jtagChains.push_back(chain); }

    const std::vector<HBOParameter*>& getParameters() const { return m_parameters; }
    void getParameters(std::vector<HBOParameter*>& out) const { out = m_parameters; }
    void addParameter(HBOParameter* parameter) { m_parameters.push_back(parameter); }

    const std::vector<HBOJumper*>& getJumpers() const { return m_jumpers; }
    void getJumpers(std::vector<HBOJumper*>& out) const { out = m_jumpers; }
    void addJumper(HBOJumper* jumper) { m_jumpers.push_back(jumper); }

    const std::vector<HBOImage*>& getImages() const { return m_images; }
    void getImages(std::vector<HBOImage*>& out) const { out = m_images; }
    void addImage(HBOImage* image) { m_images.push_back(image); }

    const std::vector<HBOBoardBus*>& getBuses() const { return m_buses; }
    void getBuses(std::vector<HBOBoardBus*>& out) const { out = m_buses; }
    void addBus(HBOBoardBus* bus) { m_buses.push_back(bus); }

    const std::vector<HBOPowerRail>& getPowerRails() const { return m_powerRails; }
    void setPowerRails(const std::vector<HBOPowerRail>& rails) { m_powerRails = rails; }

    const HBOBoardDataProps& getBoardDataProps() const { return m_dataProps; }
    void setBoardDataProps(const HBOBoardDataProps& props) { m_dataProps = props; }

    // The lists of jumpers, images and presets only hold what they point to:
    // whoever adds an object there keeps it. What the board's readers make for
    // it, and the clones it makes itself, nobody else knows; the board frees
    // those last, once each, rather than leak them.
    void adoptJumper(HBOJumper* jumper) { m_ownedJumpers.push_back(jumper); }
    void adoptImage(HBOImage* image) { m_ownedImages.push_back(image); }
    void adoptPreset(HBOIpPreset* preset) { m_ownedPresets.push_back(preset); }

    // ---- Presets ----
    const IpPresetMap& getIpPresets() const { return m_ipPresets; }
    void setIpPreset(const std::string& key, const std::vector<HBOIpPreset*>& presets);
    std::vector<HBOIpPreset*> findPresetProc(const std::string& name) const;

    const IpPresetMap& getIpAssociatedInterfaces() const { return m_ipAssocInterfaces; }
    void setIpAssociatedInterface(const std::string& key, const std::vector<HBOIpPreset*>& presets);
    // Appends the board interfaces that the association rules bind to the
    // interface `ipInterface` of the IP `ipVlnv`; true when a rule matched.
    bool getIpAssocInterfaces(const std::string& ipVlnv, const std::string& ipInterface,
                              std::vector<std::string>& out) const;

    const std::string& getPresetFile() const { return m_presetFile; }
    bool setPresetFile(const std::string& file) {
        m_presetFile = file;
        return true;
    }
    const std::string& getBoardImage() const { return m_boardImage; }
    void setBoardImage(const std::string& image) { m_boardImage = image; }

    // ---- Components and the active part ----
    const ComponentMap& getBoardComponents() const { return m_components; }
    void addBoardComponent(HBOBoardComponent* component);
    // A reader's own component that a later one of the same name pushed out of
    // the map: others may still point at it, so it lives as long as the board.
    void keepReplacedComponent(HBOBoardComponent* component);
    void getBoardComponentsVec(std::vector<HBOBoardComponent*>& out) const;

    // Both forms fill a missing active part with the first FPGA component.
    HBOBoardComponent* getActivePart();
    HBOBoardComponent* getActivePart() const;
    void setActivePart(HBOBoardComponent* component) { m_activePart = component; }
    std::string getActivePartName() const;

    // ---- Board store ----
    void attach(HBOBoardDB* store) { m_store = store; }
    void saveBoard();

    // ---- Connected boards and components (joining by declaration) ----
    std::map<std::string, std::string>& getConnectedComponents() { return m_connectedComponents; }
    std::map<std::string, std::string>& getConnectedBoards() { return m_connectedBoards; }
    void addConnectedBoard(const std::string& id, const std::string& aliasName);
    void addConnectedComponents(const std::string& boardA, const std::string& compA, const std::string& boardB,
                                const std::string& compB);

    // ---- Integrated boards ----
    bool isIntegratedBoard() const { return m_integrated; }
    void setIntegratedBoard(bool integrated) { m_integrated = integrated; }
    bool getSupportsCED() const { return m_supportsCED; }
    void setSupportsCED(bool supports) { m_supportsCED = supports; }
    void setBaseBoard(const HBOBoard* base) { m_baseBoard = base; }
    const HBOBoard* getBaseBoard() const;
    std::string getBaseBoardName() const;
    std::string getBaseBoardFullName() const;
    std::string getBaseBoardActivePartName() const;
    std::vector<IntegratedConnection> getIntegratedBoardConnections() const { return m_integratedConnections; }
    std::string getIntegratedBoardConnectionsAsString() const;
    std::string getIntegratedBoardConnectionsAsStringProperty() const;

    bool hasFPGAPart() const;
    bool isReferenceBoard() const;
    bool isDaughterBoard() const;

    // ---- Forwarding to the active part ----
    void setVLNV(const std::string& vendor, const std::string& library, const std::string& name,
                 const std::string& version);
    void setBoardDetails(const std::string& a, const std::string& b, const std::string& c, const std::string& d);
    void setImageFile(const std::string& file);
    void setJtagPosition(const std::string& position);

    std::string getBoardPartName() const;
    std::string getPartString() const;
    std::string getFamily() const;
    bool getFamily(std::string& out) const;
    std::string getImageFile() const;
    std::string getJtagPosition() const;
    std::string getLibrary() const;

    HBOBusIf* getBusIfByName(const std::string& name) const;
    bool getBusIfByName(HBOBusIf*& out, const std::string& name) const;
    bool getBusIfSeq(std::vector<HBOBusIf*>& out) const;
    bool getBusIfSeq(std::vector<HBOBusIf*>& out, const std::string& vendor, const std::string& library,
                     const std::string& name, const std::string& version) const;
    bool getBusIfSeq(std::vector<std::string>& names, const std::string& vlnv) const;
    bool getModelPortByName(HBOModelPort*& out, const std::string& name) const;
    bool getModelPortSeq(std::vector<HBOModelPort*>& out) const;
    bool getModelPortsByBusIf(std::vector<HBOModelPort*>& out, const std::string& busIf) const;
    bool getPinPropsByBusIf(std::vector<HBOPinProps*>& out, const std::string& busIf) const;
    bool isPartNameSupportedByBoard(const std::string& part) const;
    bool isPartUpdated() const;
    bool setPartString(const std::string& part);
    bool setBusIf(const std::string& name, HBOBusIf* busIf);
    bool setModelPort(const std::string& name, HBOModelPort* port);
    bool hasAdditionalSupportedParts() const;
    void getAdditionalSupportedPartNames(std::vector<std::string>& out, bool withCurrent) const;
    bool isConstraintsDataPopulated() const;
    int populateConstraintsData(const std::string& path);

    // Swaps the active part's device for one of its additional parts;
    // reports a failure as a message and leaves the board as it was.
    bool updateBoardPart(const std::string& part);

    // ---- Finders ----
    HBOBoardComponent* findBoardComponent(const std::string& name) const;
    HBOBoardComponent* getCompByName(const std::string& name) const;
    HBOBoardComponent* findFpgaComponent() const;
    bool getParamValue(const std::string& name, std::string& out) const;
    bool getBusIfByNameUsingConnectors(HBOBusIf*& out, const std::string& name) const;
    void getBusesOfComponent(const std::string& name, std::vector<HBOBoardBus*>& out) const;
    void getBoardBusesConnectingComponents(const HBOBoardComponent* a, const HBOBoardComponent* b,
                                           std::vector<HBOBoardBus*>& out) const;
    void getNetsOfComponent(const std::string& name, std::vector<HBOBoardBusNet*>& out) const;

    // ---- Enablement ----
    // Evaluates the jumper dependencies and writes the is-enabled texts of
    // connections, nets, components, interfaces and modes.
    void updateEnablement();

    // ---- Connector compatibility ----
    void rebuildConnectorsCompatibilityCache(const std::vector<HBOBoard*>& boards);
    bool isConnectorFullCompatibleWithConnector(const HBOBoardComponent* own, const HBOBoardComponent* other) const;
    bool isConnectorPartialCompatibleWithConnector(const HBOBoardComponent* own,
                                                   const HBOBoardComponent* other) const;
    bool isConnectorCompatibleWithConnector(const HBOBoardComponent* own, const HBOBoardComponent* other) const;
    void getCompatibleConnectorsList(const HBOBoardComponent* own, std::vector<HBOBoardComponent*>& out) const;
    void getLatestCompatibleConnectorsList(const HBOBoardComponent* own,
                                           std::vector<HBOBoardComponent*>& out) const;
    void getConnectorsList(std::vector<HBOBoardComponent*>& out) const;
    bool getConnectedConnectors(const HBOBoardComponent* c, std::vector<HBOBoardComponent*>& out) const;
    void getConnectedConnectors(std::vector<std::pair<HBOBoardComponent*, HBOBoardComponent*>>& pairs) const;
    HBOBoardComponent* getConnectorConnected(const HBOBoardComponent* c) const;
    bool isConnectorConnected(const HBOBoardComponent* c) const;

    // ---- Building integrated boards ----
    // A new board, owned by the caller: `base` copied, each daughter merged
    // under its base connector's name and wired to it. Throws on bad input.
    static HBOBoard* createBoard(const HBOBoard* base, const std::vector<IntegratedConnection>& connections,
                                 const std::string& name);
    void createConnection(const std::string& a, const std::string& b);
    bool createPinsForComponent(const std::string& component, int first, int last);
    void appendBoard(const HBOBoard* other, const std::string& name);

    // ---- Diagnostics ----
    void display(unsigned int indent) const;

private:
    HBOBoardComponent* findFpgaComponentByName(const std::string& name) const;
    void mergeDaughterBoard(const HBOBoard& daughter, const std::string& prefix);
    // Clones of another board's jumpers and images under `prefix`, held and adopted.
    void cloneJumpersAndImages(const std::vector<HBOJumper*>& jumpers, const std::vector<HBOImage*>& images,
                               const std::string& prefix);
    // Clones of another board's presets of one key, adopted.
    std::vector<HBOIpPreset*> clonePresets(const std::vector<HBOIpPreset*>& presets);

    bool m_userDefined = false;
    bool m_reservedFlag = false;  // kept through copies; nothing reads it
    std::string m_changeLogFilename;
    std::string m_boardFile;
    std::string m_vendor;
    std::string m_boardName;
    std::string m_name;
    std::string m_version;
    std::string m_boardRevision;
    std::string m_specUrl;
    std::string m_displayName;
    std::string m_longDesc;
    std::string m_repository;
    std::string m_migratedFromSchema;
    std::string m_schemaVersion;
    std::string m_fileRevision;
    std::string m_description;
    std::map<int, std::string> m_compatibleRevisions;
    std::vector<std::string> m_jtagChains;
    std::vector<HBOParameter*> m_parameters;  // owned
    std::vector<HBOJumper*> m_jumpers;        // held
    std::vector<HBOImage*> m_images;          // held
    std::vector<HBOBoardBus*> m_buses;        // owned
    std::vector<HBOPowerRail> m_powerRails;
    HBOBoardDataProps m_dataProps;
    IpPresetMap m_ipPresets;          // held; keys upper case
    IpPresetMap m_ipAssocInterfaces;  // held; keys upper case
    std::string m_presetFile;
    std::string m_boardImage;
    ComponentMap m_components;                      // owned
    mutable HBOBoardComponent* m_activePart = nullptr;  // one of m_components
    std::vector<HBOBoardComponent*> m_replacedComponents;  // owned
    HBOBoardDB* m_store = nullptr;                  // not owned
    std::map<std::string, std::string> m_connectedComponents;
    std::map<std::string, std::string> m_connectedBoards;
    ConnectorCache m_partialCompatCache;
    ConnectorCache m_fullCompatCache;
    bool m_integrated = false;
    bool m_supportsCED = true;
    const HBOBoard* m_baseBoard = nullptr;  // not owned
    std::vector<IntegratedConnection> m_integratedConnections;
    std::string m_fallbackString;  // always empty: answer of the forwarding getters without an active part
    bool m_constraintsFlagFallback = false;

    // Jumpers, images and presets that the board frees last (see adoptJumper).
    std::vector<HBOJumper*> m_ownedJumpers;
    std::vector<HBOImage*> m_ownedImages;
    std::vector<HBOIpPreset*> m_ownedPresets;
};

#endif

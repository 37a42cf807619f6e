// A part on a board: the FPGA, a memory, a connector. Owns its interfaces, pins, modes,
// parameters, images, drivers and mux positions, and keeps a copy of the identity of the
// board it stands on, since a board part in the catalogue is reached through its FPGA.
#ifndef HBOBOARDCOMPONENT_H
#define HBOBOARDCOMPONENT_H

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <boost/variant.hpp>

#include "HBOLazy.h"

class HBOBoard;
class HBOBusIf;
class HBOModelPort;
class HBOPinProps;
class HBOParameter;
class HBOImage;
class HBOComponentMode;
class HBOBoardComponentDriver;
class HBOBoardCompMuxPosition;

class HBOBoardComponent {
public:
    // A DCI cascade: one master bank driving the slave banks.
    struct DciCascadeConstr {
        int masterBank = 0;
        std::vector<int> slaveBanks;
    };
    // An internal reference voltage for one bank.
    struct InternalVrefConstr {
        int bank = 0;
        float voltage = 0.0f;
    };
    typedef boost::variant<DciCascadeConstr, InternalVrefConstr> DesignConstr;
    typedef std::vector<DesignConstr> DesignConstrs;

    typedef std::map<std::string, HBOBusIf*> BusIfMap;
    typedef std::map<std::string, HBOModelPort*> ModelPortMap;
    typedef std::map<std::string, HBOPinProps*> PinMap;

    // Pins of index 0 .. PIN_TABLE_SIZE-1 are also reachable by direct index.
    static const int PIN_TABLE_SIZE = 401;

    HBOBoardComponent();
    // Deep copy for board. A non-empty prefix rebases the component name, display name,
    // full name, modes and interfaces (boards being merged); an empty one keeps all names.
    HBOBoardComponent(const HBOBoardComponent& other, HBOBoard* board, const std::string& prefix);
    HBOBoardComponent(const HBOBoardComponent&) = delete;
    HBOBoardComponent& operator=(const HBOBoardComponent&) = delete;
    ~HBOBoardComponent();

    // ---- Names and identity ----
    const std::string& getName() const { return m_name; }
    bool setName(const std::string& name);
    // vendor:boardName:partName:version; all but the version lower-cased.
    bool setName(const std::string& vendor, const std::string& boardName, const std::string& partName,
                 const std::string& version);
    bool setVLNV(const std::string& vendor, const std::string& library, const std::string& name,
                 const std::string& version);
    bool setBoardDetails(const std::string& a, const std::string& b, const std::string& c, const std::string& family);
    bool equals(const HBOBoardComponent* other) const;

    const std::string& getComponentName() const { return m_componentName; }
    bool setComponentName(const std::string& v);
    const std::string& getType() const { return m_type; }
    bool setType(const std::string& v);
    const std::string& getSubType() const { return m_subType; }
    bool setSubType(const std::string& v);
    const std::string& getMajorGroup() const { return m_majorGroup; }
    bool setMajorGroup(const std::string& v);
    // The major group, or "Others" when there is none.
    std::string getConnectorCategory() const;
    const std::string& getPinMapFile() const { return m_pinMapFile; }
    bool setPinMapFile(const std::string& v);

    const std::string& getPartName() const { return m_partName; }
    const std::string& getPartString() const { return m_partName; }
    const std::string& getBoardPartName() const { return m_partName; }
    bool setPartName(const std::string& v);
    bool setPartString(const std::string& v);

    const std::string& getVendor() const { return m_vendor; }
    const std::string& getVendorName() const { return m_vendor; }
    bool setVendorName(const std::string& v);
    const std::string& getConnectedToLogicStr() const { return m_connectedToLogic; }
    bool setConnectedToLogicStr(const std::string& v);
    const std::string& getRepository() const { return m_repository; }
    bool setRepository(const std::string& v);
    const std::string& getIsEnabled() const { return m_isEnabled; }
    bool setIsEnabled(const std::string& v);
    bool isUserDefined() const { return m_userDefined; }
    bool setUserDefinedFlag(bool v);
    bool getRtlFileParseStatus() const { return m_rtlFileParseStatus; }
    bool setRtlFileParseStatus(bool v);
    bool isConstraintsDataPopulated() const { return m_constraintsDataPopulated; }

    const std::string& getBoardChangeLogFilename() const { return m_boardChangeLogFilename; }
    bool setBoardChangeLogFilename(const std::string& v);
    const std::string& getBoardFile() const { return m_boardFile; }
    bool setBoardFile(const std::string& v);
    const std::string& getConstraintsFile() const { return m_constraintsFile; }
    // No reader fills this; the setter exists so that a host (and the tests) can use
    // populateConstraintsData at all.
    bool setConstraintsFile(const std::string& v);
    const std::string& getImageFile() const { return m_imageFile; }
    // A bare file name is taken relative to the directory of the board file.
    bool setImageFile(const std::string& file);

    const std::string& getLibrary() const { return m_library; }
    const std::string& getBoardName() const { return m_boardName; }
    const std::string& getVersion() const { return m_version; }
    const std::string& getBoardRevision() const { return m_boardRevision; }
    const std::string& getFamily() const { return m_family; }
    bool getFamily(std::string& out) const;
    const std::string& getJtagPosition() const { return m_jtagPosition; }
    bool setJtagPosition(const std::string& v);
    const std::string& getSpecUrl() const { return m_specUrl; }
    bool setSpecUrl(const std::string& v);
    const std::string& getDisplayName() const { return m_displayName; }
    bool setDisplayName(const std::string& v);
    // The display name, else the full name.
    const std::string& getDisplayNameORVLNVName() const;
    const std::string& getDescription() const { return m_description; }
    bool setDescription(const std::string& v);
    const std::string& getLongDesc() const { return m_longDesc; }
    bool setLongDesc(const std::string& v);

    HBOBoard* getBoard() const { return m_board; }
    bool setBoard(HBOBoard* board);

    // ---- Part names ----
    bool isPartNameSupported(const std::string& part) const;
    bool addAdditionalSupportedPart(const std::string& part);
    bool getAdditionalSupportedPartNames(std::vector<std::string>& out, bool withCurrent) const;
    bool hasAdditionalSupportedParts() const { return !m_additionalParts.empty(); }
    // Makes part the current part, swapping it with the old one among the additional parts.
    bool updatePartName(const std::string& part);
    bool isPartUpdated() const { return m_partUpdated; }

    // ---- Kind tests (exact, case sensitive) ----
    bool isLPCConnector() const;
    bool isHPCConnector() const;
    bool isLPCPlusConnector() const;
    bool isDIMMConnector() const;
    bool isPMODConnector() const;
    bool isSOM240Connector() const;
    bool isSOM480Connector() const;
    bool isLPCCategoryConnector() const;
    bool isSOMCategoryConnector() const;
    bool isConnector() const;
    bool isConnectedToLogicOnly() const;
    bool isConnectedToPSOnly() const;
    bool isConnectedToPSAndLogic() const;
    bool isCompatibleWithSomVLN(const std::string& vln) const;

    // ---- Connector compatibility, answered from the caches of other's board ----
    bool isFullCompatibleWithConnector(const HBOBoardComponent* other) const;
    bool isPartialCompatibleWithConnector(const HBOBoardComponent* other) const;
    bool isCompatibleWithConnector(const HBOBoardComponent* other) const;

    // ---- Interfaces and model ports ----
    HBOBusIf* getBusIfByName(const std::string& name) const;
    bool getBusIfByName(HBOBusIf*& out, const std::string& name) const;
    const BusIfMap& getBusIfMap() const { return m_busIfs; }
    // Non-null interfaces in key order; the flag has no effect.
    bool getBusIfSeq(std::vector<HBOBusIf*>& out, bool flag) const;
    // Interfaces of an abstract type; the clock type is accepted from either library.
    bool getBusIfSeq(std::vector<HBOBusIf*>& out, const std::string& vendor, const std::string& library,
                     const std::string& name, const std::string& version) const;
    // Names of the interfaces whose abstract type fits the VLNV text.
    bool getBusIfSeq(std::vector<std::string>& names, const std::string& vlnv) const;
    void getInterfacesVec(std::vector<HBOBusIf*>& out) const;
    // Takes ownership; an interface replaced under the same name is deleted.
    bool setBusIf(const std::string& name, HBOBusIf* busIf);
    void getOfCompInterfaces(std::vector<HBOBusIf*>& out, bool useActive, const HBOBoardComponent* comp) const;

    HBOModelPort* getModelPortByName(const std::string& name) const;
    bool getModelPortByName(HBOModelPort*& out, const std::string& name) const;
    bool getModelPortSeq(std::vector<HBOModelPort*>& out) const;
    const ModelPortMap& getModelPorts() const { return m_modelPorts; }
    bool setModelPort(const std::string& name, HBOModelPort* port);
    // The component frees the port with itself, after its interfaces. A port is
    // adopted once: false for null or a port adopted before. Readers and copies
    // call it for the ports they make for this component.
    bool adoptModelPort(HBOModelPort* port);
    bool getModelPortsByBusIf(std::vector<HBOModelPort*>& out, const std::string& busIf) const;
    bool getPinPropsByBusIf(std::vector<HBOPinProps*>& out, const std::string& busIf) const;
    bool createModelPortsForInterfaces();

    // ---- Interfaces across connectors (board joining) ----
    // Walks this connector and the chain of connectors wired to it, each once.
    void getBusIfSeqFromConnectors(std::vector<HBOBusIf*>& out, std::vector<std::string>& names) const;
    // On the FPGA component: clones the interfaces of the daughter connector target that
    // reach this FPGA through the base connector source, rewritten to the FPGA's pins.
    bool copyInterfacesFromComponent(const HBOBoardComponent* source, const HBOBoardComponent* target);
    void getInterfacesWhichCanBeConnected(const HBOBoardComponent* source, const HBOBoardComponent* target,
                                          std::vector<HBOBusIf*>& out) const;
    // On the FPGA component: the FPGA pin that the daughter pin pinName reaches through base.
    bool mapConnectorPin(const HBOBoardComponent* base, const HBOBoardComponent* daughter,
                         const std::string& pinName, std::string& fpgaPin) const;
    // Every pin of busIf maps; the daughter-to-FPGA pin names are added to pinNameMap when given.
    bool canInterfaceBeConnected(const HBOBoardComponent* base, const HBOBoardComponent* daughter,
                                 const HBOBusIf* busIf,
                                 std::map<std::string, std::string>* pinNameMap = nullptr) const;

    // ---- Parameters, images, modes, drivers, positions ----
    const std::vector<HBOParameter*>& getParameters() const { return m_parameters; }
    bool addParameter(HBOParameter* p);
    bool getParamValue(const std::string& name, std::string& out) const;
    const std::vector<HBOImage*>& getImages() const { return m_images; }
    bool addImage(HBOImage* image);
    const std::vector<HBOComponentMode*>& getComponentModes() const { return m_modes; }
    bool addComponentMode(HBOComponentMode* mode);
    void updateEnablementDependencyJumperName(const std::string& from, const std::string& to);

    bool addJtagPosition(const std::string& chain, const std::string& position);
    std::string getJtagPosition(const std::string& chain) const;
    const std::map<std::string, std::string>& getJtagPositions() const { return m_jtagPositions; }
    // Number of chains; with exactly one, out is its position.
    int getJtagPositionForSingleChain(std::string& out) const;

    // Takes ownership; a position replaced under the same index is deleted.
    bool addIICPosition(int index, HBOBoardCompMuxPosition* position);
    void getIICPositions(std::vector<HBOBoardCompMuxPosition*>& out) const;
    const std::map<int, HBOBoardCompMuxPosition*>& getIICPositions() const { return m_iicPositions; }
    bool addDriver(HBOBoardComponentDriver* driver);
    const std::vector<HBOBoardComponentDriver*>& getDrivers() const { return m_drivers; }

    const DesignConstrs& getDesignConstrs() const { return m_designConstrs; }
    bool setDesignConstrs(const DesignConstrs& constrs);

    // ---- Pins ----
    // The map is made on the first call and kept up to date from then on.
    const PinMap& getPins() const;
    std::size_t getPinCount() const;
    // Takes ownership. Keeps map and index table consistent; a pin of the same name is deleted.
    bool addPin(HBOPinProps* pin);
    // Room for count more pins, for a reader that knows how many come.
    void reservePins(std::size_t count);
    HBOPinProps* findPin(const std::string& name) const;
    int findPinIndex(const std::string& name) const;
    HBOPinProps* getPinByIndex(int index) const;
    void getPinsVec(std::vector<HBOPinProps*>& out) const;

    // Fills pins from the component's XML constraints file; always 0. The argument is
    // ignored: the file comes from the component.
    int populateConstraintsData(const std::string& path);

    void display(int indent) const;

private:
    // Adopts the ports of an interface copy made for this component.
    void adoptPortsOf(const HBOBusIf* busIf);
    std::string m_name;
    std::string m_componentName;
    std::string m_type;
    std::string m_subType;
    std::string m_majorGroup;
    std::string m_pinMapFile;
    std::string m_partName;
    std::string m_vendor;
    std::string m_connectedToLogic;
    std::string m_repository;
    std::string m_isEnabled = "true";
    bool m_userDefined = false;
    bool m_rtlFileParseStatus = false;
    bool m_constraintsDataPopulated = false;
    std::string m_boardChangeLogFilename;
    std::string m_boardFile;
    std::string m_constraintsFile;
    std::string m_imageFile;
    std::string m_library;
    std::string m_boardName;
    std::string m_version;
    std::string m_boardRevision;
    std::string m_vlnv;
    std::string m_boardDetails1;
    std::string m_boardDetails2;
    std::string m_boardDetails3;
    std::string m_family;
    std::string m_jtagPosition;
    std::string m_specUrl;
    std::string m_displayName;
    std::string m_description;
    std::string m_longDesc;
    ModelPortMap m_modelPorts;                       // not owned
    std::vector<HBOModelPort*> m_adoptedPorts;       // owned (see adoptModelPort)
    HBOBoard* m_board = nullptr;                     // not owned
    std::vector<HBOParameter*> m_parameters;         // owned
    std::vector<HBOImage*> m_images;                 // owned
    std::vector<HBOComponentMode*> m_modes;          // owned
    BusIfMap m_busIfs;                               // owned
    // Pins by name, owned. Readers add them in name order, so they sit in a vector
    // sorted by their own names until getPins asks for the map, a pin comes too far
    // out of order, or a listed pin is renamed or changes owner (HBOPinProps tells);
    // the map, keyed by copies of the names, then holds them all.
    friend class HBOPinProps;
    template <class Fn>
    void forEachPin(Fn fn) const;
    PinMap& pinMap() const;
    static const std::string& nameOf(const HBOPinProps* pin);
    mutable std::vector<HBOPinProps*> m_pinList;
    HBOLazy<PinMap> m_pins;
    // Views into the pins (or a source's pins, after a copy). Made with the first
    // pin: most components of a board have none, and the table is large.
    std::vector<HBOPinProps*> m_pinTable;
    std::map<std::string, std::string> m_jtagPositions;
    std::map<int, HBOBoardCompMuxPosition*> m_iicPositions;  // owned
    std::vector<HBOBoardComponentDriver*> m_drivers;         // owned
    DesignConstrs m_designConstrs;
    std::vector<std::string> m_additionalParts;
    bool m_partUpdated = false;
};

template <class Fn>
void HBOBoardComponent::forEachPin(Fn fn) const {
    if (const PinMap* map = m_pins.peek())
        for (const auto& kv : *map)
            fn(kv.first, kv.second);
    else
        for (HBOPinProps* pin : m_pinList)
            fn(nameOf(pin), pin);
}

#endif

// Reader of schema 2 boards: board.xml, the pin file of each component and
// the preset file, into an HBOBoard. Faults of the files are collected as
// deferred messages so that one read shows many of them; what ends a read is
// thrown as HEXError and caught by parseFile.
#ifndef HBOBOARDPARSER_H
#define HBOBOARDPARSER_H

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "ComMsgMgrInstance.h"
#include "DeferredMessage.h"
#include "HBOChildElements.h"
#include "HBOElementScope.h"
#include "HBOBoardComponent.h"
#include "HXMLWElement.h"

class HBOBoard;
class HBOBoardBus;
class HBOBusIf;
class HBOBusIfPreference;
class HBOBoardComponentDriver;
class HBOComponentMode;
class HBOImage;
class HBOIpPreset;
class HBOModelPort;
class HBOParameter;
class HBOParsedVLNVs;
class HBOPinProps;

class HBOBoardParser {
public:
    // The design constraints of one component, as its pin file lists them.
    typedef HBOBoardComponent::DesignConstrs DesignConstrList;
    // The pins of one pin file: one per name, the later of a name kept, in name order.
    typedef std::vector<HBOPinProps*> PinList;

    HBOBoardParser();
    ~HBOBoardParser();

    HBOBoardParser(const HBOBoardParser&) = delete;
    HBOBoardParser& operator=(const HBOBoardParser&) = delete;

    // Reads `file` into `board`. True when the board was read and no deferred
    // fault fails it; the board is filled in place also when false.
    bool parseFile(const std::string& file, HBOBoard* board, const std::string& dtdDirectory,
                   const std::string& xmlOverrideDirectory, bool& xmlValidatedOut, HBOParsedVLNVs* parsedVlnvs);

private:
    // ---- Frame: the file reader, loading, validation, deferred messages ----
    bool readBoardFile(const std::string& file, std::string& reason);
    // Plain or packed file to its root element; throws @49-110 / @49-111.
    std::shared_ptr<HXMLWElement> loadXmlFile(const std::string& file);
    // Checks `file` against the grammar `grammar` ("board", "part0_pins",
    // "preset"); false when the grammar found faults.
    bool validateXml(const std::string& file, const std::string& grammar);
    void flushDeferredMessages();
    void addDeferredMessage(const ComMsgMgrInstance& msg, bool ok = false);
    // The element that a model object was read from, for the checks that run
    // after the file is read; null when none was recorded.
    const HXMLWElement* elementOf(const void* object) const;
    // @49-69 with the board file and `text`, deferred.
    void deferCheck(const std::string& text, bool ok = false);
    const std::string& boardFile() const;
    // Directory of the board file, without a trailing separator.
    std::string boardDirectory() const;
    // Reads a file that stands beside board.xml (pin file, preset file): a bare
    // name is taken from the board's directory; a missing file sends
    // `missingFormat` and gives false; a file that fails in `read` throws
    // `failedFormat` with the path and the reason.
    bool readSideFile(const std::string& name, const char* missingFormat, const char* failedFormat,
                      const std::function<bool(const std::string&)>& read);

    // ---- Element helpers shared by all section readers ----
    // Element names compare without regard to case; attribute names exactly.
    static bool isNamed(const HXMLWElement* e, const char* name);
    static bool hasAttr(const HXMLWElement* e, const char* name);
    // A missing attribute reads as the empty string.
    static std::string getAttr(const HXMLWElement* e, const char* name);
    static std::string getText(const HXMLWElement* e);
    // Element children in document order; empty when there are none.
    static HBOChildElements getChildElements(const HXMLWElement* e) { return HBOChildElements(e); }
    static std::string directoryOf(const std::string& file);
    static std::string toLower(std::string text);
    static std::string toUpper(std::string text);

    // ---- Header, parameters, jumpers ----
    bool readHeader(HXMLWElement* root, std::string& reason);
    bool readParameters(HXMLWElement* root, std::string& reason);
    bool readJumpers(HXMLWElement* root, std::string& reason);
    // One parameter element (board, component or interface parameters).
    static HBOParameter* makeParameter(const HXMLWElement* e);
    // One image element; `name` becomes a path beside the board file.
    HBOImage* makeImage(const HXMLWElement* e) const;
    // Strict conversion: blanks and digits only, else @49-69 thrown; the
    // standard conversion's own exceptions pass through.
    static int parseNonNegativeInt(const std::string& text, const std::string& label, const std::string& boardFile);

    // ---- Components, modes, interfaces, port maps ----
    bool readComponents(HXMLWElement* root, std::string& reason);
    bool readComponent(HBOBoardComponent* component, HXMLWElement* e, std::string& reason);
    HBOBoardComponentDriver* readDriver(HXMLWElement* e);
    void readPosition(HBOBoardComponent* component, HXMLWElement* e);
    bool readComponentMode(HBOBoardComponent* component, HXMLWElement* e, std::string& reason);
    bool readPreferredIp(HBOBusIfPreference* pref, HXMLWElement* e, const std::string& presetProc,
                         bool inInterface);
    bool readInterfaces(HBOBoardComponent* component, HXMLWElement* interfaces, std::string& reason);
    bool readInterface(HBOBusIf* busIf, HBOBoardComponent* component, HXMLWElement* e, std::string& reason);
    void lookupInterfacePreset(HBOBusIf* busIf, const std::string& presetProc);
    bool readPortMap(HBOBusIf* busIf, HBOBoardComponent* component, HXMLWElement* e,
                     std::set<std::string>& logicalPorts);
    void readComponentPin(HBOBoardComponent* component, HXMLWElement* e);
    // "{jumper value} {jumper value}" of an enablement_dependencies element.
    std::string readEnablementJumpers(HXMLWElement* dependencies);
    // Null gives 0; strict with the later checks on, plain atoi without.
    int parseIntAttribute(const char* text, const std::string& label);
    static std::unordered_set<std::string> getIgnoredPortProps(const std::string& boardName);

    // ---- Connections and the rest of board.xml ----
    bool readJtagChains(HXMLWElement* root, std::string& reason);
    bool readIpAssociatedRules(HXMLWElement* root, std::string& reason);
    bool readParamTable(HXMLWElement* root, std::string& reason);
    bool readConnections(HXMLWElement* root, std::string& reason);
    bool readConnectionMap(HXMLWElement* map, const std::string& connectionName, const std::string& comp1,
                           const std::string& comp2, std::string& reason);
    void checkPinIndices(const std::string& component, int first, int last, const std::string& connectionName);
    bool readConnectedBoards(HXMLWElement* root, std::string& reason);

    // ---- Pin file ----
    // Finds the pin file named by `pinMapFile` (relative to the board file
    // when it has no directory part) and reads it; false when it is missing.
    bool readPinFile(const std::string& pinMapFile, PinList& pins, DesignConstrList& constrs);
    bool readPinXml(const std::string& file, PinList& pins, DesignConstrList& constrs);
    void readPins(HXMLWElement* pinsElem, const std::string& file, PinList& pins);
    // Pins in document order to the result of the pin reader: of two pins of one
    // name the earlier is deleted and the later stays, and the list is in name order.
    static void keepLastPinOfEachName(PinList& pins);
    // Place of the attribute name among HBOPinProps::getPortPropNames(), or -1.
    static int portPropPlace(const char* attr);
    void readDesignConstrs(HXMLWElement* constrsElem, const std::string& file, DesignConstrList& constrs);

    // ---- Preset file ----
    bool readPresetFile(const std::string& presetFile);
    bool readPresetXml(const std::string& file);
    // One `ip` of an ip_preset: identity, then its parameters.
    bool readIp(HBOIpPreset* preset, HXMLWElement* ip);
    // Identity attributes with their "*" defaults, owner, the IP name for
    // parsedVlnvs and the preset name; also serves ip_associated_rules.
    void readIpIdentity(HBOIpPreset* preset, HXMLWElement* ip);
    void readUserParameters(HBOIpPreset* preset, HXMLWElement* params);
    void readModelParameters(HBOIpPreset* preset, HXMLWElement* params);
    // Tcl-list form of a hierarchical parameter, appended to `out`.
    static void buildHierValue(const HXMLWElement* e, int depth, std::string& out);

    // ---- Board file checks ----
    bool checkComponent(HBOBoardComponent* component);
    bool checkInterface(HBOBusIf* busIf);
    bool checkPort(HBOModelPort* port, const std::string& ofComponent, const std::string& busIfName);
    bool checkPreferredIp(HBOBusIfPreference* pref);
    bool checkPreset(HBOIpPreset* preset);
    bool checkBus(HBOBoardBus* bus);
    bool checkClockInterfaces();
    bool checkFpgaInterfaces();
    bool checkRevisionsAndModes();

    // ---- Power rails and data properties ----
    bool readPowerRails(HXMLWElement* root, std::string& reason);
    bool readBoardDataProperties(HXMLWElement* root, std::string& reason);

    // --- sections: helpers of the components, connections, checks and power readers ---
    // A component's pin of an index, as HBOBoardComponent::getPinByIndex answers,
    // without its walk over every pin for indices past the direct table.
    HBOPinProps* pinByIndex(HBOBoardComponent* component, int index);
    // --- end of the sections block ---

    HBOBoard* board = nullptr;
    bool reportEnabled = false;
    bool validateEnabled = false;
    bool checks2020Enabled = false;
    std::unordered_set<std::string> ignoredPortProps;
    HBOParsedVLNVs* parsedVlnvs = nullptr;
    std::unordered_set<std::string> readInterfaceNames;
    bool xmlValidated = true;
    std::string dtdDirectory;
    std::string xmlOverrideDirectory;
    std::vector<DeferredMessage> deferredMessages;
    // Components, interfaces and modes of board.xml to their elements, whose
    // tree outlives the checks; see elementOf.
    std::unordered_map<const void*, const HXMLWElement*> readFrom;
    // Physical port name to (interface name, of_component), over one parse,
    // for the port check's "named twice in one component" finding.
    std::map<std::string, std::pair<std::string, std::string>> portOwners;
    // Pins by index, sorted, per component, for the look-ups past the direct table
    // during the connections section only (no pin comes or goes while it is read).
    std::unordered_map<const HBOBoardComponent*, std::vector<std::pair<int, HBOPinProps*>>> pinsPastTable;
};

#endif

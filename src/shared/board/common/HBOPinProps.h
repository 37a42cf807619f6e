// One physical pin of a board component with the I/O properties the board fixes for it.
#ifndef HBOPINPROPS_H
#define HBOPINPROPS_H

#include <map>
#include <string>
#include <vector>

#include "HBOLazy.h"

class HBOBoardComponent;
class HBOModelPort;

class HBOPinProps {
public:
    HBOPinProps();
    // Copies every field, the owner pointers included.
    HBOPinProps(const HBOPinProps& other);
    // As the copy above, then the owner and owner port become the arguments.
    HBOPinProps(const HBOPinProps& other, HBOBoardComponent* owner, HBOModelPort* ownerPort);
    HBOPinProps& operator=(const HBOPinProps& other);
    ~HBOPinProps();

    // Index in the pins file; -1 for the single pin of a scalar schema 1 port.
    int getPinIndex() const { return m_pinIndex; }
    bool getPinIndex(int& out) const;
    bool setPinIndex(int index);

    HBOBoardComponent* getOwner() const { return m_owner; }
    bool setOwner(HBOBoardComponent* owner);

    HBOModelPort* getOwnerPort() const { return m_ownerPort; }
    // False when the pin has no owner port.
    bool getOwnerPort(HBOModelPort*& out) const;
    bool setOwnerPort(HBOModelPort* port);

    const std::string& getName() const { return m_name; }
    bool getName(std::string& out) const;
    bool setName(std::string name);

    const std::string& getPinLoc() const { return m_loc; }
    bool getPinLoc(std::string& out) const;
    bool setPinLoc(std::string loc);
    bool hasPinLoc() const { return !m_loc.empty(); }

    // Names are lower-cased. A read of an unknown property creates an empty entry;
    // the reference stays good for the pin's life.
    const std::string& getPortProp(const std::string& name) const;
    bool setPortProp(const std::string& name, const std::string& value);
    // The stored value, or null; unlike getPortProp this creates nothing. The name
    // must be in lower case.
    const std::string* findPortProp(const std::string& lowerName) const;
    // A copy of all properties, by name.
    std::map<std::string, std::string> getPortProps() const;
    // The sixteen known port property names, in their fixed order.
    static const std::vector<std::string>& getPortPropNames();

    const std::string& getPinDiffTerm() const;
    bool getPinDiffTerm(std::string& out) const;
    bool setPinDiffTerm(const std::string& value);
    const std::string& getPinDqsBias() const;
    bool getPinDqsBias(std::string& out) const;
    bool setPinDqsBias(const std::string& value);
    const std::string& getPinDrive() const;
    bool getPinDrive(std::string& out) const;
    bool setPinDrive(const std::string& value);
    const std::string& getPinEqualization() const;
    bool getPinEqualization(std::string& out) const;
    bool setPinEqualization(const std::string& value);
    const std::string& getPinIOStandard() const;
    bool getPinIOStandard(std::string& out) const;
    bool setPinIOStandard(const std::string& value);
    const std::string& getPinIbufLowPwr() const;
    bool getPinIbufLowPwr(std::string& out) const;
    bool setPinIbufLowPwr(const std::string& value);
    const std::string& getPinOdt() const;
    bool getPinOdt(std::string& out) const;
    bool setPinOdt(const std::string& value);
    const std::string& getPinOutputImpedance() const;
    bool getPinOutputImpedance(std::string& out) const;
    bool setPinOutputImpedance(const std::string& value);
    const std::string& getPinPreEmphasis() const;
    bool getPinPreEmphasis(std::string& out) const;
    bool setPinPreEmphasis(const std::string& value);
    const std::string& getPinSlew() const;
    bool getPinSlew(std::string& out) const;
    bool setPinSlew(const std::string& value);

    const std::string& getPinInternalVref() const;
    bool setPinInternalVref(const std::string& value);
    const std::string& getGtLoc() const;
    bool setGtLoc(const std::string& value);

    bool getIOBankPropertyList(std::map<std::string, std::string>& out) const;
    const std::map<std::string, std::string>& getIOBankPropertyList() const;
    // Case-insensitive name; empty when unknown.
    std::string getIOBankPropertyValue(const std::string& name) const;
    bool setIOBankProperty(const std::string& name, const std::string& value);

    bool addPartOf(const std::map<std::string, std::string>& partOf);
    std::vector<std::map<std::string, std::string>>& getPartOf();
    const std::vector<std::map<std::string, std::string>>& getPartOf() const;

    bool addIntfPortMap(const std::string& intf, const std::string& port);
    std::map<std::string, std::string>& getIntfPortMap();
    const std::map<std::string, std::string>& getIntfPortMap() const;
    // The port of the exact interface name, else empty.
    std::string getPortForInterface(const std::string& intf) const;
    // Interface names that pins share, one copy each for the process, at most
    // kMaxSharedInterfaceNames; past that a pin keeps its entry in its own map.
    static std::size_t getSharedInterfaceNameCount();
    static constexpr std::size_t kMaxSharedInterfaceNames = 16384;

    // One step fill used by the schema 1 readers; the location is upper-cased.
    bool setProp(int index, HBOModelPort* port, const std::string& name, const std::string& loc,
                 const std::string& diffTerm, const std::string& drive, const std::string& ioStandard,
                 const std::string& slew, const std::string& outputImpedance, const std::string& ibufLowPwr,
                 const std::string& odt, const std::string& equalization, const std::string& preEmphasis,
                 const std::string& dqsBias);

    // Takes over the non-empty I/O facts of other; identity and links stay.
    void copyIOPropertiesFrom(const HBOPinProps& other);

    void display(int indent) const;

private:
    // The interface port map, made on the first request for it; until then
    // the one entry that most pins have lives in the pin itself.
    std::map<std::string, std::string>& intfPortMap() const;
    // Port properties. Most pins have a few of the known ones, so those live in
    // the pin itself; others, and any past the inline slots, in the map. A name
    // lives in one place only; nothing moves once stored, so references stay good.
    enum { kInlineProps = 3 };
    std::string& portPropEntry(const std::string& lowerName) const;
    template <typename Fn>
    void forEachPortProp(Fn fn) const;
    // What most pins leave empty, made together when first asked for.
    struct Extras {
        std::map<std::string, std::string> otherProps;
        std::string internalVref;
        std::string gtLoc;
        std::map<std::string, std::string> ioBankProps;
        std::vector<std::map<std::string, std::string>> partOf;
        std::map<std::string, std::string> intfPortMap;
        bool hasIntfPortMap = false;
    };
    const std::map<std::string, std::string>* madeIntfPortMap() const;

    // Set while the owner keeps this pin in its name-sorted list under the pin's
    // own name (HBOBoardComponent::addPin); a copy of the pin starts unset.
    struct ListedFlag {
        bool on = false;
        ListedFlag() = default;
        ListedFlag(const ListedFlag&) {}
        ListedFlag& operator=(const ListedFlag&) { return *this; }
    };
    friend class HBOBoardComponent;
    // Before the name or the owner changes: the owner that lists the pin by its
    // name keys its pins by copies of their names from then on.
    void beforeKeyChange(const std::string* newName, const HBOBoardComponent* newOwner);

    int m_pinIndex = 0;
    // The single interface port entry: the interface's name, shared by its pins,
    // and the port index, kept as a number when it reads as one.
    mutable int m_intfPortIndex = 0;
    mutable unsigned char m_propSlot[kInlineProps] = {0, 0, 0};  // 1 + name's place in the known list; 0 free
    mutable bool m_hasIntfPort = false;                          // m_intf/m_intfPortIndex hold an entry
    ListedFlag m_listed;
    HBOBoardComponent* m_owner = nullptr;
    HBOModelPort* m_ownerPort = nullptr;
    std::string m_name;
    std::string m_loc;
    mutable std::string m_propValue[kInlineProps];
    HBOLazy<Extras> m_extras;
    mutable const std::string* m_intf = nullptr;
};

#endif

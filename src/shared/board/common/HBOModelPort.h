// A physical port of a board interface and the FPGA pins behind it.
//
// Ownership: an interface holds its ports without deleting them, and a component's
// model port map does not own them either; a reader that gives up on a port deletes
// it. The component a port was made for adopts it (HBOBoardComponent::adoptModelPort)
// and frees it with itself. A port nobody adopted is freed when the process ends
// (see HBOModelPort.cpp), so that nothing a caller can reach ever dangles.
#ifndef HBOMODELPORT_H
#define HBOMODELPORT_H

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "HBOLazy.h"

class HBOBusIf;
class HBOPinProps;

class HBOModelPort {
public:
    HBOModelPort();
    ~HBOModelPort();
    HBOModelPort(const HBOModelPort&) = delete;
    HBOModelPort& operator=(const HBOModelPort&) = delete;

    const std::string& getName() const { return m_name; }
    bool getName(std::string& out) const;
    bool setName(const std::string& name);

    const std::string& getPortDir() const { return m_direction; }
    bool getPortDir(std::string& out) const;
    bool setDirection(const std::string& direction);

    bool isPortOfTypeVec() const { return m_isVector; }
    bool setIsVector(bool isVector);

    // Bounds of a vector port; false (and -1 for a scalar port) when not known.
    bool getPortVecLeft(int& out) const;
    bool getPortVecRight(int& out) const;
    // 1 for a scalar port, |left - right| + 1 for a vector, -1 when a bound is unset.
    // Always true.
    bool getPortWidth(int& out) const;
    bool setRange(int left, int right);

    bool setOwnerBusIf(const std::string& busIfName, const std::string& logicalPort);
    const std::string& getOwnerBusIf() const { return m_ownerBusIf; }
    bool getOwnerBusIf(std::string& out) const;
    const std::string& getBusIfLogicalPortName() const { return m_logicalPortName; }
    bool getBusIfLogicalPortName(std::string& out) const;

    // Schema 1 pins, one per bit, owned by the port.
    bool populatePinProps();
    const std::vector<HBOPinProps*>& getPinPropsSeq() const { return m_pinSeq; }
    // The port's pins: on a schema 2 board looked up by name on the owning component
    // and appended; otherwise the port's own pins replace out (false when it has none).
    bool getPortPropsSeq(std::vector<HBOPinProps*>& out) const;
    // Appends, in key (text) order of the pin port map, the component pins it names.
    void getPins(std::vector<HBOPinProps*>& out) const;

    // Index within the port (as text) to FPGA pin name. The map is made on the
    // first read and kept up to date from then on.
    const std::map<std::string, std::string>& getPinPortMap() const { return pinPortMap(); }
    // A later entry of the same index replaces the earlier one.
    bool addPinPortMap(const std::string& index, std::string pin);
    // Room for count more entries, for a reader that knows how many come.
    void reservePinPortMap(std::size_t count);
    bool getPinPort(const std::string& index, std::string& out) const;
    std::string getPinPort(const std::string& index) const;
    // Rewrites the FPGA pin names found in pinMap, keeps the others.
    void updatePortPinMap(const std::map<std::string, std::string>& pinMap);

    HBOBusIf* getOwner() const { return m_owner; }
    void setOwner(HBOBusIf* owner) { m_owner = owner; }

    void display(unsigned int indent = 0) const;

private:
    friend class HBOBusIf;
    friend class HBOBoardComponent;
    // Taken off the end-of-process list; false when it was adopted already.
    bool markAdopted();

    // Rebase copy made only by the interface copy; the pin sequence stays empty.
    HBOModelPort(const HBOModelPort& other, HBOBusIf* owner, const std::string& prefix);

    std::string m_name;
    std::string m_direction;
    bool m_isVector = false;
    int m_left = -1;
    int m_right = -1;
    std::string m_ownerBusIf;
    std::string m_logicalPortName;
    std::vector<HBOPinProps*> m_pinSeq;
    // Entries in the order they came, until the first read makes the map of them,
    // which from then on holds them all: a board read holds thousands of ports
    // that nobody asks for.
    std::map<std::string, std::string>& pinPortMap() const;
    struct PinPort {
        int index;  // HBOIndexText: the entry's index text as a number
        std::string pin;
    };
    mutable std::vector<PinPort> m_pinPorts;
    HBOLazy<std::map<std::string, std::string>> m_pinPortMap;
    HBOBusIf* m_owner = nullptr;
    bool m_adopted = false;
};

#endif

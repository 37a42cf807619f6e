#include "HBOModelPort.h"

#include <cstdio>
#include <cstdlib>
#include <unordered_set>

#include "HBOBoardComponent.h"
#include "HBOBoardUtils.h"
#include "HBOBusIf.h"
#include "HBOIndexText.h"
#include "HBONativeCacheHook.h"
#include "HBOPinProps.h"
#include "HBORebase.h"

namespace {

// Interfaces and component maps only hold model ports, because one port may be held
// by several of them (a schema 1 board shares the part's ports with the interfaces
// that migration makes), and a reader deletes the ports it gives up on. The component
// a port was made for adopts it and frees it with itself; so that a port nobody
// adopted is not lost, every other live port is listed here and freed at the end of
// the process. While the process runs nothing is freed behind a caller's back.
struct PortRegistry {
    std::unordered_set<HBOModelPort*> ports;
    bool closed = false;
};

// Never destroyed itself, so that a port deleted during exit still finds it.
PortRegistry& registry() {
    static PortRegistry* instance = new PortRegistry;
    return *instance;
}

// Built when the library loads, so it runs late at exit, after the owners that are
// built on first use have let go of their boards.
struct PortSweeper {
    PortSweeper() { registry(); }
    ~PortSweeper() {
        PortRegistry& r = registry();
        std::unordered_set<HBOModelPort*> remaining;
        remaining.swap(r.ports);
        r.closed = true;
        for (HBOModelPort* port : remaining)
            delete port;
    }
};
PortSweeper sweeper;

void enlist(HBOModelPort* port) {
    PortRegistry& r = registry();
    if (!r.closed)
        r.ports.insert(port);
}

void delist(HBOModelPort* port) {
    PortRegistry& r = registry();
    if (!r.closed)
        r.ports.erase(port);
}

}  // namespace

HBOModelPort::HBOModelPort() {
    enlist(this);
}

HBOModelPort::HBOModelPort(const HBOModelPort& other, HBOBusIf* owner, const std::string& prefix)
    : m_name(HBORebase::name(prefix, other.m_name)),
      m_direction(other.m_direction),
      m_isVector(other.m_isVector),
      m_left(other.m_left),
      m_right(other.m_right),
      m_ownerBusIf(HBORebase::name(prefix, other.m_ownerBusIf)),
      m_logicalPortName(other.m_logicalPortName),
      m_pinPorts(other.m_pinPorts),
      m_pinPortMap(other.m_pinPortMap),
      m_owner(owner) {
    enlist(this);
}

bool HBOModelPort::markAdopted() {
    if (m_adopted)
        return false;
    m_adopted = true;
    delist(this);
    return true;
}

HBOModelPort::~HBOModelPort() {
    HBONativeCacheHook::remove(this);
    delist(this);
    for (HBOPinProps* pin : m_pinSeq)
        delete pin;
    m_pinSeq.clear();
}

bool HBOModelPort::getName(std::string& out) const {
    out = m_name;
    return true;
}

bool HBOModelPort::setName(const std::string& name) {
    m_name = name;
    return true;
}

bool HBOModelPort::getPortDir(std::string& out) const {
    out = m_direction;
    return true;
}

bool HBOModelPort::setDirection(const std::string& direction) {
    m_direction = direction;
    return true;
}

bool HBOModelPort::setIsVector(bool isVector) {
    m_isVector = isVector;
    return true;
}

bool HBOModelPort::getPortVecLeft(int& out) const {
    if (!m_isVector) {
        out = -1;
        return false;
    }
    if (m_left < 0)
        return false;
    out = m_left;
    return true;
}

bool HBOModelPort::getPortVecRight(int& out) const {
    if (!m_isVector) {
        out = -1;
        return false;
    }
    if (m_right < 0)
        return false;
    out = m_right;
    return true;
}

bool HBOModelPort::getPortWidth(int& out) const {
    if (!m_isVector)
        out = 1;
    else if (m_left < 0 || m_right < 0)
        out = -1;
    else
        out = std::abs(m_left - m_right) + 1;
    return true;
}

bool HBOModelPort::setRange(int left, int right) {
    m_left = left;
    m_right = right;
    return true;
}

bool HBOModelPort::setOwnerBusIf(const std::string& busIfName, const std::string& logicalPort) {
    m_ownerBusIf = busIfName;
    m_logicalPortName = logicalPort;
    return true;
}

bool HBOModelPort::getOwnerBusIf(std::string& out) const {
    out = m_ownerBusIf;
    return true;
}

bool HBOModelPort::getBusIfLogicalPortName(std::string& out) const {
    out = m_logicalPortName;
    return true;
}

bool HBOModelPort::populatePinProps() {
    int width = 0;
    getPortWidth(width);
    for (int i = 0; i < width; ++i) {
        HBOPinProps* pin = new HBOPinProps();
        if (m_isVector) {
            pin->setName(m_name + "[" + std::to_string(i) + "]");
            pin->setPinIndex(i);
        } else {
            pin->setName(m_name);
            pin->setPinIndex(-1);
        }
        pin->setOwnerPort(this);
        m_pinSeq.push_back(pin);
    }
    return true;
}

void HBOModelPort::getPins(std::vector<HBOPinProps*>& out) const {
    const HBOBoardComponent* component = m_owner ? m_owner->getOwnerComponent() : nullptr;
    if (!component)
        return;
    // Text order of the indices ("10" before "2") is the order callers rely on.
    for (const auto& entry : pinPortMap()) {
        if (HBOPinProps* pin = component->findPin(entry.second))
            out.push_back(pin);
    }
}

bool HBOModelPort::getPortPropsSeq(std::vector<HBOPinProps*>& out) const {
    if (HBOBoardUtils::isV2SchemaBoard(this)) {
        getPins(out);
        return true;
    }
    if (m_pinSeq.empty())
        return false;
    out = m_pinSeq;
    return true;
}

std::map<std::string, std::string>& HBOModelPort::pinPortMap() const {
    if (!m_pinPortMap.peek()) {
        std::map<std::string, std::string>& map = m_pinPortMap.get();
        for (PinPort& entry : m_pinPorts)
            map[std::to_string(entry.index)] = std::move(entry.pin);
        std::vector<PinPort>().swap(m_pinPorts);
    }
    return m_pinPortMap.get();
}

bool HBOModelPort::addPinPortMap(const std::string& index, std::string pin) {
    int number = 0;
    if (!m_pinPortMap.peek() && HBOIndexText::toNumber(index, number))
        m_pinPorts.push_back(PinPort{number, std::move(pin)});
    else
        pinPortMap()[index] = std::move(pin);
    return true;
}

void HBOModelPort::reservePinPortMap(std::size_t count) {
    if (!m_pinPortMap.peek())
        m_pinPorts.reserve(m_pinPorts.size() + count);
}

bool HBOModelPort::getPinPort(const std::string& index, std::string& out) const {
    const std::map<std::string, std::string>& map = pinPortMap();
    auto it = map.find(index);
    if (it != map.end())
        out = it->second;
    else
        out.clear();
    return true;
}

std::string HBOModelPort::getPinPort(const std::string& index) const {
    std::string out;
    getPinPort(index, out);
    return out;
}

void HBOModelPort::updatePortPinMap(const std::map<std::string, std::string>& pinMap) {
    std::map<std::string, std::string> updated;
    for (const auto& entry : pinPortMap()) {
        auto hit = pinMap.find(entry.second);
        updated[entry.first] = hit != pinMap.end() ? hit->second : entry.second;
    }
    pinPortMap().swap(updated);
}

void HBOModelPort::display(unsigned int indent) const {
    int left = -1;
    int right = -1;
    if (m_isVector) {
        left = m_left;
        right = m_right;
    }
    int width = 0;
    getPortWidth(width);
    std::fprintf(stderr, "%s", std::string(indent, '-').c_str());
    std::fprintf(stderr, "Port - name:%s, physical_name:%s, direction:%s, start:%d, stop:%d, width:%d \n",
                 m_logicalPortName.c_str(), m_name.c_str(), m_direction.c_str(), left, right, width);
    const std::string dashes(indent + 1, '-');
    for (const auto& entry : pinPortMap())
        std::fprintf(stderr, "%s---pin_index:%s -- fpga_pin:%s\n", dashes.c_str(), entry.first.c_str(),
                     entry.second.c_str());
}

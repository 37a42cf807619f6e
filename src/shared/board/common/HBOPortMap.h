// The pairing of one logical port of an interface type with a physical port of the board.
#ifndef HBOPORTMAP_H
#define HBOPORTMAP_H

#include <string>

class HBOPortMap {
public:
    HBOPortMap() = default;
    HBOPortMap(const std::string& logicalPort, const std::string& physicalPort);
    HBOPortMap(const HBOPortMap&) = default;
    HBOPortMap& operator=(const HBOPortMap&) = default;
    // Rebase copy: the logical port is kept, the physical port gets the prefix.
    HBOPortMap(const HBOPortMap& other, const std::string& prefix);

    const std::string& getLogicalPort() const { return m_logicalPort; }
    bool getLogicalPort(std::string& out) const;
    void setLogicalPort(const std::string& port) { m_logicalPort = port; }

    const std::string& getPhysicalPort() const { return m_physicalPort; }
    bool getPhysicalPort(std::string& out) const;
    void setPhysicalPort(const std::string& port) { m_physicalPort = port; }

private:
    std::string m_logicalPort;
    std::string m_physicalPort;
};

#endif

#include "HBOPortMap.h"

#include "HBORebase.h"

HBOPortMap::HBOPortMap(const std::string& logicalPort, const std::string& physicalPort)
    : m_logicalPort(logicalPort), m_physicalPort(physicalPort) {}

HBOPortMap::HBOPortMap(const HBOPortMap& other, const std::string& prefix)
    : m_logicalPort(other.m_logicalPort),
      m_physicalPort(HBORebase::name(prefix, other.m_physicalPort)) {}

bool HBOPortMap::getLogicalPort(std::string& out) const {
    out = m_logicalPort;
    return true;
}

bool HBOPortMap::getPhysicalPort(std::string& out) const {
    out = m_physicalPort;
    return true;
}

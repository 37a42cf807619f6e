#include "HBOBoardBus.h"

#include <cstdio>
#include <locale>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/replace.hpp>

#include "HBOBoard.h"
#include "HBOBoardBusNet.h"
#include "HBONativeCacheHook.h"
#include "HBORebase.h"

HBOBoardBus::HBOBoardBus() = default;

HBOBoardBus::HBOBoardBus(const HBOBoardBus& other, HBOBoard* board, const std::string& prefix)
    : m_name(HBORebase::name(prefix, other.m_name)),
      m_comp1(HBORebase::name(prefix, other.m_comp1)),
      m_comp2(HBORebase::name(prefix, other.m_comp2)),
      m_owner(board),
      m_connectionName(HBORebase::name(prefix, other.m_connectionName)),
      m_delay(other.m_delay),
      m_minDelay(other.m_minDelay),
      m_maxDelay(other.m_maxDelay),
      m_isEnabled(other.m_isEnabled),
      m_enablementDependency(other.m_enablementDependency),
      m_startIndexComp1(other.m_startIndexComp1),
      m_stopIndexComp1(other.m_stopIndexComp1),
      m_startIndexComp2(other.m_startIndexComp2),
      m_stopIndexComp2(other.m_stopIndexComp2) {
    for (const HBOBoardBusNet* net : other.m_nets)
        if (net)
            m_nets.push_back(new HBOBoardBusNet(*net, this));
}

HBOBoardBus::~HBOBoardBus() {
    HBONativeCacheHook::remove(this);
    for (HBOBoardBusNet* net : m_nets)
        delete net;
    m_nets.clear();
}

bool HBOBoardBus::getBoardBusNets(std::vector<HBOBoardBusNet*>& out) const {
    out = m_nets;
    return true;
}

void HBOBoardBus::addBoardBusNet(HBOBoardBusNet* net) {
    m_nets.push_back(net);
}

void HBOBoardBus::getBusComponentsVec(std::vector<HBOBoardComponent*>& out) const {
    out.clear();
    if (!m_owner)
        return;
    if (HBOBoardComponent* c1 = m_owner->findBoardComponent(m_comp1))
        out.push_back(c1);
    if (HBOBoardComponent* c2 = m_owner->findBoardComponent(m_comp2))
        out.push_back(c2);
}

void HBOBoardBus::updateEnablementDependencyJumperName(const std::string& from, const std::string& to) {
    // An empty name would match everywhere and names no jumper.
    if (from.empty())
        return;
    const std::locale& classic = std::locale::classic();
    boost::algorithm::ireplace_all(m_enablementDependency, from,
                                   boost::algorithm::to_lower_copy(to, classic), classic);
}

void HBOBoardBus::display(unsigned int indent) const {
    std::fprintf(stderr, "%s", std::string(indent, '-').c_str());
    std::fprintf(stderr,
                 "Connection - name:%s, Component1:%s, Component2:%s, delay:%f, C1StIndex:%d, C1EndIndex:%d, "
                 "C2StIndex:%d, C2EndIndex:%d\n",
                 m_name.c_str(), m_comp1.c_str(), m_comp2.c_str(), static_cast<double>(m_delay), m_startIndexComp1,
                 m_stopIndexComp1, m_startIndexComp2, m_stopIndexComp2);
}

#include "HBOBoardBusNet.h"

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardComponent.h"
#include "HBONativeCacheHook.h"

HBOBoardBusNet::HBOBoardBusNet() = default;

HBOBoardBusNet::HBOBoardBusNet(const HBOBoardBusNet& other, HBOBoardBus* bus)
    : m_name(other.m_name),
      m_c1PinIndex(other.m_c1PinIndex),
      m_c2PinIndex(other.m_c2PinIndex),
      m_minDelay(other.m_minDelay),
      m_maxDelay(other.m_maxDelay),
      m_typicalDelay(other.m_typicalDelay),
      m_isEnabled(other.m_isEnabled),
      m_enablementDependency(other.m_enablementDependency),
      m_boardBus(other.m_boardBus),
      m_owner(bus) {}

HBOBoardBusNet::~HBOBoardBusNet() {
    HBONativeCacheHook::remove(this);
}

void HBOBoardBusNet::getPinsVec(std::vector<HBOPinProps*>& out) const {
    const HBOBoard* board = m_owner ? m_owner->getOwner() : nullptr;
    if (!board)
        return;
    if (const HBOBoardComponent* c1 = board->findBoardComponent(m_owner->getComp1()))
        if (HBOPinProps* pin = c1->getPinByIndex(m_c1PinIndex))
            out.push_back(pin);
    if (const HBOBoardComponent* c2 = board->findBoardComponent(m_owner->getComp2()))
        if (HBOPinProps* pin = c2->getPinByIndex(m_c2PinIndex))
            out.push_back(pin);
}

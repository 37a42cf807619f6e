// One net of a connection: a pin index on each of the two components.
#ifndef HBOBOARDBUSNET_H
#define HBOBOARDBUSNET_H

#include <string>
#include <vector>

class HBOBoardBus;
class HBOPinProps;

class HBOBoardBusNet {
public:
    HBOBoardBusNet();
    // Copies every field unchanged; the owner becomes bus.
    HBOBoardBusNet(const HBOBoardBusNet& other, HBOBoardBus* bus);
    ~HBOBoardBusNet();
    HBOBoardBusNet(const HBOBoardBusNet&) = delete;
    HBOBoardBusNet& operator=(const HBOBoardBusNet&) = delete;

    const std::string& getName() const { return m_name; }
    void setName(std::string name) { m_name = std::move(name); }
    int getC1PinIndex() const { return m_c1PinIndex; }
    void setC1PinIndex(int index) { m_c1PinIndex = index; }
    int getC2PinIndex() const { return m_c2PinIndex; }
    void setC2PinIndex(int index) { m_c2PinIndex = index; }
    float getMinDelay() const { return m_minDelay; }
    void setMinDelay(float delay) { m_minDelay = delay; }
    float getMaxDelay() const { return m_maxDelay; }
    void setMaxDelay(float delay) { m_maxDelay = delay; }
    float getTypicalDelay() const { return m_typicalDelay; }
    void setTypicalDelay(float delay) { m_typicalDelay = delay; }
    const std::string& getIsEnabled() const { return m_isEnabled; }
    void setIsEnabled(const std::string& isEnabled) { m_isEnabled = isEnabled; }
    const std::string& getEnablementDependency() const { return m_enablementDependency; }
    void setEnablementDependency(const std::string& dep) { m_enablementDependency = dep; }
    // Name of the connection the net belongs to.
    const std::string& getBoardBus() const { return m_boardBus; }
    void setBoardBus(std::string bus) { m_boardBus = std::move(bus); }
    HBOBoardBus* getOwner() const { return m_owner; }
    void setOwner(HBOBoardBus* owner) { m_owner = owner; }

    // The pins at the two indices on the two components, those that exist.
    void getPinsVec(std::vector<HBOPinProps*>& out) const;

private:
    std::string m_name;
    int m_c1PinIndex = 0;
    int m_c2PinIndex = 0;
    float m_minDelay = 0;
    float m_maxDelay = 0;
    float m_typicalDelay = 0;
    std::string m_isEnabled = "true";
    std::string m_enablementDependency;
    std::string m_boardBus;
    HBOBoardBus* m_owner = nullptr;
};

#endif

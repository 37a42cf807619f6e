// A connection between two components of a board over a range of pins on each side.
#ifndef HBOBOARDBUS_H
#define HBOBOARDBUS_H

#include <string>
#include <vector>

class HBOBoard;
class HBOBoardBusNet;
class HBOBoardComponent;

class HBOBoardBus {
public:
    HBOBoardBus();
    // Deep copy for board; names and component names rebased with prefix, nets cloned.
    HBOBoardBus(const HBOBoardBus& other, HBOBoard* board, const std::string& prefix);
    // Deletes the nets.
    ~HBOBoardBus();
    HBOBoardBus(const HBOBoardBus&) = delete;
    HBOBoardBus& operator=(const HBOBoardBus&) = delete;

    const std::string& getName() const { return m_name; }
    void setName(const std::string& name) { m_name = name; }
    const std::string& getComp1() const { return m_comp1; }
    void setComp1(const std::string& comp) { m_comp1 = comp; }
    const std::string& getComp2() const { return m_comp2; }
    void setComp2(const std::string& comp) { m_comp2 = comp; }
    HBOBoard* getOwner() const { return m_owner; }
    void setOwner(HBOBoard* owner) { m_owner = owner; }
    const std::string& getConnectionName() const { return m_connectionName; }
    void setConnectionName(const std::string& name) { m_connectionName = name; }

    float getDelay() const { return m_delay; }
    void setDelay(float delay) { m_delay = delay; }
    float getMinDelay() const { return m_minDelay; }
    void setMinDelay(float delay) { m_minDelay = delay; }
    float getMaxDelay() const { return m_maxDelay; }
    void setMaxDelay(float delay) { m_maxDelay = delay; }

    // "true" or "false", as text.
    const std::string& getIsEnabled() const { return m_isEnabled; }
    void setIsEnabled(const std::string& isEnabled) { m_isEnabled = isEnabled; }
    // "{jumper value jumper value ...}"; empty when the connection depends on nothing.
    const std::string& getEnablementDependency() const { return m_enablementDependency; }
    void setEnablementDependency(const std::string& dep) { m_enablementDependency = dep; }

    int getStartIndexComp1() const { return m_startIndexComp1; }
    void setStartIndexComp1(int index) { m_startIndexComp1 = index; }
    int getStopIndexComp1() const { return m_stopIndexComp1; }
    void setStopIndexComp1(int index) { m_stopIndexComp1 = index; }
    int getStartIndexComp2() const { return m_startIndexComp2; }
    void setStartIndexComp2(int index) { m_startIndexComp2 = index; }
    int getStopIndexComp2() const { return m_stopIndexComp2; }
    void setStopIndexComp2(int index) { m_stopIndexComp2 = index; }

    // Nets, owned, in file order.
    const std::vector<HBOBoardBusNet*>& getBoardBusNets() const { return m_nets; }
    bool getBoardBusNets(std::vector<HBOBoardBusNet*>& out) const;
    void addBoardBusNet(HBOBoardBusNet* net);

    // The two end components found on the owner board, those that exist.
    void getBusComponentsVec(std::vector<HBOBoardComponent*>& out) const;

    // Follows a renamed jumper: every occurrence of from (any case) becomes lower-case to.
    void updateEnablementDependencyJumperName(const std::string& from, const std::string& to);

    void display(unsigned int indent = 0) const;

private:
    std::string m_name;
    std::string m_comp1;
    std::string m_comp2;
    HBOBoard* m_owner = nullptr;
    std::string m_connectionName;
    float m_delay = 0;
    float m_minDelay = 0;
    float m_maxDelay = 0;
    std::string m_isEnabled = "true";
    std::string m_enablementDependency;
    int m_startIndexComp1 = 0;
    int m_stopIndexComp1 = 0;
    int m_startIndexComp2 = 0;
    int m_stopIndexComp2 = 0;
    std::vector<HBOBoardBusNet*> m_nets;
};

#endif

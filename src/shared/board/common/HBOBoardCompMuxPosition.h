// Position of a component behind an I2C multiplexer, with its bus addresses.
#ifndef HBOBOARDCOMPMUXPOSITION_H
#define HBOBOARDCOMPMUXPOSITION_H

#include <string>
#include <utility>
#include <vector>

class HBOBoardCompMuxPosition {
public:
    int getPosition() const { return m_position; }
    bool setPosition(int position) { m_position = position; return true; }
    const std::string& getComponent() const { return m_component; }
    bool setComponent(const std::string& component) { m_component = component; return true; }
    const std::vector<std::pair<std::string, std::string>>& getAddresses() const { return m_addresses; }
    bool addAddress(const std::string& first, const std::string& second);

private:
    int m_position = 0;
    std::string m_component;
    std::vector<std::pair<std::string, std::string>> m_addresses;
};

#endif

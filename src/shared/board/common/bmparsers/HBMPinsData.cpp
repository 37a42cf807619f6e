#include "HBMPinsData.h"

#include <algorithm>

#include "HBMPin.h"

HBMPinsData::HBMPinsData() = default;
HBMPinsData::~HBMPinsData() = default;

bool HBMPinsData::addPin(HBMPin* pin) {
    m_pins.push_back(pin);
    return true;
}

bool HBMPinsData::deletePin(HBMPin* pin) {
    auto it = std::find(m_pins.begin(), m_pins.end(), pin);
    if (it == m_pins.end())
        return false;
    m_pins.erase(it);
    return true;
}

bool HBMPinsData::deletePin(const std::string& name) {
    auto it = std::find_if(m_pins.begin(), m_pins.end(), [&](const HBMPin* p) { return p && p->getName() == name; });
    if (it == m_pins.end())
        return false;
    m_pins.erase(it);
    return true;
}

HBMPin* HBMPinsData::getPinByIndex(int position) const {
    if (position < 0 || static_cast<std::size_t>(position) >= m_pins.size())
        return nullptr;
    return m_pins[static_cast<std::size_t>(position)];
}

#include "HBMPin.h"

HBMPin::HBMPin() = default;

HBMPin::HBMPin(const std::string& name, const std::string& index, const std::string& loc, const Props& props)
    : m_name(name), m_index(index), m_loc(loc), m_props(props) {}

HBMPin::~HBMPin() = default;

std::string HBMPin::getProp(const std::string& name) const {
    for (const auto& p : m_props)
        if (p.first == name)
            return p.second;
    return std::string();
}

void HBMPin::setProp(const std::string& name, const std::string& value) {
    for (auto& p : m_props) {
        if (p.first == name) {
            p.second = value;
            return;
        }
    }
    m_props.emplace_back(name, value);
}

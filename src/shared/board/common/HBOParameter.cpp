#include "HBOParameter.h"

#include <cstdio>

#include "HBONativeCacheHook.h"
#include "HBORebase.h"

HBOParameter::HBOParameter(const std::string& name, const std::string& value, const std::string& valueType,
                           const std::string& valueMin, const std::string& valueMax, const std::string& readOnly)
    : m_name(name),
      m_value(value),
      m_valueType(valueType),
      m_valueMin(valueMin),
      m_valueMax(valueMax),
      m_readOnly(readOnly) {}

HBOParameter::HBOParameter(const HBOParameter& other, const std::string& prefix) : HBOParameter(other) {
    m_name = HBORebase::name(prefix, other.m_name);
}

HBOParameter::~HBOParameter() {
    HBONativeCacheHook::remove(this);
}

void HBOParameter::getSupportedValues(std::vector<std::string>& out) const {
    out.push_back(m_valueMin);
    out.push_back(m_valueMax);
}

void HBOParameter::display(unsigned int indent) const {
    std::fprintf(stderr, "%s", std::string(indent, '-').c_str());
    std::fprintf(stderr, "Parameter - name:%s, value:%s, type:%s, min:%s, max:%s, read_only:%s \n", m_name.c_str(),
                 m_value.c_str(), m_valueType.c_str(), m_valueMin.c_str(), m_valueMax.c_str(), m_readOnly.c_str());
}

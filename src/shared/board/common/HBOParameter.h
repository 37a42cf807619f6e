// A named parameter of a board, component or interface, with its type and bounds.
#ifndef HBOPARAMETER_H
#define HBOPARAMETER_H

#include <string>
#include <vector>

class HBOParameter {
public:
    HBOParameter() = default;
    HBOParameter(const std::string& name, const std::string& value, const std::string& valueType,
                 const std::string& valueMin, const std::string& valueMax,
                 const std::string& readOnly);
    HBOParameter(const HBOParameter&) = default;
    HBOParameter& operator=(const HBOParameter&) = default;
    // Rebase copy: all fields copied, the name prefixed.
    HBOParameter(const HBOParameter& other, const std::string& prefix);
    ~HBOParameter();

    const std::string& getName() const { return m_name; }
    void setName(const std::string& name) { m_name = name; }
    const std::string& getValue() const { return m_value; }
    void setValue(const std::string& value) { m_value = value; }
    const std::string& getValueType() const { return m_valueType; }
    void setValueType(const std::string& type) { m_valueType = type; }
    const std::string& getValueMin() const { return m_valueMin; }
    void setValueMin(const std::string& value) { m_valueMin = value; }
    const std::string& getValueMax() const { return m_valueMax; }
    void setValueMax(const std::string& value) { m_valueMax = value; }
    const std::string& getReadOnly() const { return m_readOnly; }
    void setReadOnly(const std::string& readOnly) { m_readOnly = readOnly; }

    // Appends the minimum and then the maximum value.
    void getSupportedValues(std::vector<std::string>& out) const;

    void display(unsigned int indent = 0) const;

private:
    std::string m_name;
    std::string m_value;
    std::string m_valueType;
    std::string m_valueMin;
    std::string m_valueMax;
    std::string m_readOnly;
};

#endif

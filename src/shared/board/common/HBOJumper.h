// A jumper of a board and its position; connections and modes depend on jumpers.
#ifndef HBOJUMPER_H
#define HBOJUMPER_H

#include <string>

class HBOBoard;

class HBOJumper {
public:
    HBOJumper() = default;
    HBOJumper(const HBOJumper&) = default;
    HBOJumper& operator=(const HBOJumper&) = default;
    // Rebase copy for board: value and description copied, the name prefixed.
    HBOJumper(const HBOJumper& other, HBOBoard* board, const std::string& prefix);
    ~HBOJumper();

    const std::string& getName() const { return m_name; }
    void setName(const std::string& name) { m_name = name; }
    // The jumper's position: the default and the current value are one field.
    bool getDefaultValue() const { return m_defaultValue; }
    void setDefaultValue(bool value) { m_defaultValue = value; }
    HBOBoard* getOwner() const { return m_owner; }
    void setOwner(HBOBoard* owner) { m_owner = owner; }
    const std::string& getDescription() const { return m_description; }
    void setDescription(const std::string& description) { m_description = description; }

    // Sets the position; with save the owner board goes to its attached store at once.
    // The owner must be set when save is true.
    void setValue(bool value, bool save);

    void display(unsigned int indent = 0) const;

private:
    std::string m_name;
    bool m_defaultValue = true;
    HBOBoard* m_owner = nullptr;
    std::string m_description;
};

#endif

// One pin of a pins file as the migration tool keeps it: name, index and
// location as text, and the further properties in the order first set.
// Scripts reach pins through the Tcl and Python caches of HBMPin* (see
// HBONativeCaches.h); a pin's destructor removes nothing from them.
#ifndef HBMPIN_H
#define HBMPIN_H

#include <string>
#include <utility>

#include "HSTVector.h"

class HBMPin {
public:
    using Props = HSTVector<std::pair<std::string, std::string>>;

    HBMPin();
    HBMPin(const std::string& name, const std::string& index, const std::string& loc, const Props& props);
    ~HBMPin();

    const std::string& getName() const { return m_name; }
    void setName(const std::string& name) { m_name = name; }
    const std::string& getIndex() const { return m_index; }
    void setIndex(const std::string& index) { m_index = index; }
    const std::string& getLOC() const { return m_loc; }
    void setLOC(const std::string& loc) { m_loc = loc; }

    const Props& getAllProps() const { return m_props; }
    // The value, or an empty text for a name never set.
    std::string getProp(const std::string& name) const;
    // An existing name (compared exactly) keeps its place; a new one goes last.
    void setProp(const std::string& name, const std::string& value);

private:
    std::string m_name;
    std::string m_index;
    std::string m_loc;
    Props m_props;
};

#endif

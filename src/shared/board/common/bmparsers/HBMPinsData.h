// The content of a pins file: the part it is for and its pins in order of
// addition. It holds the pins without owning them; HBMPinsFile owns them.
#ifndef HBMPINSDATA_H
#define HBMPINSDATA_H

#include <string>

#include "HSTVector.h"

class HBMPin;

class HBMPinsData {
public:
    HBMPinsData();
    ~HBMPinsData();

    const std::string& getPartName() const { return m_partName; }
    void setPartName(const std::string& name) { m_partName = name; }

    // Appends; always true.
    bool addPin(HBMPin* pin);
    // Detach the first matching pin without freeing it; false when there is none.
    bool deletePin(HBMPin* pin);
    bool deletePin(const std::string& name);

    HSTVector<HBMPin*> getPins() const { return m_pins; }
    // The pin at that position, or null past the end.
    HBMPin* getPinByIndex(int position) const;

protected:
    const HSTVector<HBMPin*>& pins() const { return m_pins; }

private:
    std::string m_partName;
    HSTVector<HBMPin*> m_pins;
};

#endif

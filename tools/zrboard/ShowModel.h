// Small views of the board model shared by the outline and the JSON form of
// `zrboard show`, so that both present the same content in the same order.
#ifndef ZRBOARD_SHOWMODEL_H
#define ZRBOARD_SHOWMODEL_H

#include <string>
#include <utility>
#include <vector>

#include "HBOBoardDataProps.h"

class HBOBoard;
class HBOBoardCompMuxPosition;
class HBOBoardComponent;
class HBOBusIf;
class HBOBusIfPreference;
class HBOModelPort;
class HBOPinProps;

namespace zrboard {
namespace show {

// The pins of a component ordered by pin index (then by name), the order a
// reader of the pins file expects; the model keys them by name.
std::vector<const HBOPinProps*> pinsByIndex(const HBOBoardComponent& component);

// The I/O properties of a pin other than the I/O standard, which is shown on
// its own: the known names first in their fixed order, then any others.
// Empty values are left out; the model creates them on mere reads.
std::vector<std::pair<std::string, std::string>> otherPortProps(const HBOPinProps& pin);
// A pin property without creating it on the pin; empty when it is not set.
std::string portProp(const HBOPinProps& pin, const std::string& name);

// The model port behind a physical port name of an interface. Schema 2
// interfaces hold their ports; a schema 1 interface may only name a port of
// its component, so that is tried second.
const HBOModelPort* portOf(const HBOBusIf& busIf, const std::string& physicalPort);

// vendor:library:name:version of the interface type.
std::string interfaceType(const HBOBusIf& busIf);

// The IP named by a preferred IP.
std::string preferredIpVlnv(const HBOBusIfPreference& pref);

// The pin port map of a port in numeric index order ("2" before "10").
std::vector<std::pair<std::string, std::string>> pinPortMapByIndex(const HBOModelPort& port);

// "[left:right]" for a vector port, empty for a scalar one.
std::string portRange(const HBOModelPort& port);

// The name of the pin at `index` of the named component, or empty.
std::string pinNameAt(const HBOBoard& board, const std::string& component, int index);

// The addresses of an IIC position, "address/alias" each, blank separated.
std::string iicAddresses(const HBOBoardCompMuxPosition& position);

// A float as short text: 0.42 rather than 0.420000.
std::string formatFloat(double value);

// A data property value: either text or a nested group.
struct DataPropValue {
    bool isGroup = false;
    std::string text;
    const HBOBoardDataProps::PropMap* group = nullptr;
    bool known = true;  // false for a value of a type the reader never stores
};
DataPropValue dataPropValue(const boost::any& value);

}  // namespace show
}  // namespace zrboard

#endif

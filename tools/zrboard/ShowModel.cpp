#include "ShowModel.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <sstream>

#include <boost/core/demangle.hpp>

#include "HBOBoard.h"
#include "HBOBoardCompMuxPosition.h"
#include "HBOBoardComponent.h"
#include "HBOBoardUtils.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOModelPort.h"
#include "HBOPinProps.h"

namespace zrboard {
namespace show {

std::vector<const HBOPinProps*> pinsByIndex(const HBOBoardComponent& component) {
    std::vector<const HBOPinProps*> pins;
    for (const auto& kv : component.getPins())
        if (kv.second)
            pins.push_back(kv.second);
    std::stable_sort(pins.begin(), pins.end(), [](const HBOPinProps* a, const HBOPinProps* b) {
        return a->getPinIndex() < b->getPinIndex();
    });
    return pins;
}

std::string portProp(const HBOPinProps& pin, const std::string& name) {
    const auto& props = pin.getPortProps();
    auto it = props.find(name);
    return it == props.end() ? std::string() : it->second;
}

std::vector<std::pair<std::string, std::string>> otherPortProps(const HBOPinProps& pin) {
    const std::map<std::string, std::string> props = pin.getPortProps();
    const std::vector<std::string>& known = HBOPinProps::getPortPropNames();
    std::vector<std::pair<std::string, std::string>> out;
    for (const std::string& name : known) {
        auto it = props.find(name);
        if (name != "iostandard" && it != props.end() && !it->second.empty())
            out.emplace_back(name, it->second);
    }
    const std::set<std::string> knownSet(known.begin(), known.end());
    for (const auto& kv : props)
        if (!knownSet.count(kv.first) && !kv.second.empty())
            out.push_back(kv);
    return out;
}

const HBOModelPort* portOf(const HBOBusIf& busIf, const std::string& physicalPort) {
    const auto& ports = busIf.getPortMaps();
    auto it = ports.find(physicalPort);
    if (it != ports.end() && it->second)
        return it->second;
    if (const HBOBoardComponent* owner = busIf.getOwnerComponent())
        return owner->getModelPortByName(physicalPort);
    return nullptr;
}

std::string interfaceType(const HBOBusIf& busIf) {
    std::string vlnv;
    busIf.getAbstractTypeVLNV(vlnv, ":");
    return vlnv;
}

std::string preferredIpVlnv(const HBOBusIfPreference& pref) {
    const std::string vlnv = pref.getDefaultIpVlnv();
    if (!vlnv.empty())
        return vlnv;
    return pref.getVendor() + ":" + pref.getLibrary() + ":" + pref.getName() + ":" + pref.getVersion();
}

std::vector<std::pair<std::string, std::string>> pinPortMapByIndex(const HBOModelPort& port) {
    std::vector<std::pair<std::string, std::string>> out(port.getPinPortMap().begin(), port.getPinPortMap().end());
    // Indices are decimal texts; anything else keeps its byte order behind them.
    auto numeric = [](const std::string& s, long& n) {
        if (s.empty())
            return false;
        char* end = nullptr;
        n = std::strtol(s.c_str(), &end, 10);
        return *end == '\0';
    };
    std::stable_sort(out.begin(), out.end(), [&](const std::pair<std::string, std::string>& a,
                                                 const std::pair<std::string, std::string>& b) {
        long na = 0, nb = 0;
        const bool ia = numeric(a.first, na), ib = numeric(b.first, nb);
        if (ia != ib)
            return ia;
        return ia ? na < nb : a.first < b.first;
    });
    return out;
}

std::string portRange(const HBOModelPort& port) {
    int left = -1, right = -1;
    if (!port.isPortOfTypeVec())
        return "";
    port.getPortVecLeft(left);
    port.getPortVecRight(right);
    return "[" + std::to_string(left) + ":" + std::to_string(right) + "]";
}

std::string pinNameAt(const HBOBoard& board, const std::string& component, int index) {
    const HBOBoardComponent* c = board.findBoardComponent(component);
    if (!c)
        return "";
    const HBOPinProps* pin = c->getPinByIndex(index);
    return pin ? pin->getName() : "";
}

std::string iicAddresses(const HBOBoardCompMuxPosition& position) {
    std::vector<std::string> addresses;
    for (const auto& a : position.getAddresses())
        addresses.push_back(a.first + (a.second.empty() ? "" : "/" + a.second));
    return HBOBoardUtils::join(addresses, " ");
}

std::string formatFloat(double value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

DataPropValue dataPropValue(const boost::any& value) {
    DataPropValue v;
    if (const std::string* text = boost::any_cast<std::string>(&value)) {
        v.text = *text;
    } else if (const HBOBoardDataProps::PropMap* group = boost::any_cast<HBOBoardDataProps::PropMap>(&value)) {
        v.isGroup = true;
        v.group = group;
    } else {
        v.known = false;
        v.text = boost::core::demangle(value.type().name());
    }
    return v;
}

}  // namespace show
}  // namespace zrboard

// The walks down a board that every scripting layer offers: from objects of
// some kinds to the objects below them, in model order.
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBOModelPort.h"
#include "HBOParameter.h"
#include "HBOPinProps.h"
#include "ZrWalkSteps.h"

namespace zrbind {

namespace {

template <class T>
void addAll(const std::vector<T*>& objects, std::vector<Ref>& out) {
    for (T* o : objects)
        if (o)
            out.push_back(refOf(o));
}
template <class K, class T>
void addValues(const std::map<K, T*>& objects, std::vector<Ref>& out) {
    for (const auto& e : objects)
        if (e.second)
            out.push_back(refOf(e.second));
}

void presetsOf(const HBOBoard* board, const std::string& proc, std::vector<Ref>& out) {
    if (board && !proc.empty())
        addAll(board->findPresetProc(proc), out);
}

bool components(const Ref& from, std::vector<Ref>& out) {
    if (HBOBoard* b = from.as<HBOBoard>()) {
        addValues(b->getBoardComponents(), out);
    } else if (HBOBoardBus* bus = from.as<HBOBoardBus>()) {
        std::vector<HBOBoardComponent*> ends;
        bus->getBusComponentsVec(ends);
        addAll(ends, out);
    } else {
        return false;
    }
    return true;
}

bool interfaces(const Ref& from, std::vector<Ref>& out) {
    if (HBOBoard* b = from.as<HBOBoard>()) {
        for (const auto& e : b->getBoardComponents())
            addValues(e.second->getBusIfMap(), out);
    } else if (HBOBoardComponent* c = from.as<HBOBoardComponent>()) {
        addValues(c->getBusIfMap(), out);
    } else {
        return false;
    }
    return true;
}

bool pins(const Ref& from, std::vector<Ref>& out) {
    if (HBOBoardComponent* c = from.as<HBOBoardComponent>()) {
        addValues(c->getPins(), out);
    } else if (HBOModelPort* p = from.as<HBOModelPort>()) {
        std::vector<HBOPinProps*> found;
        p->getPins(found);
        addAll(found, out);
    } else if (HBOBusIf* i = from.as<HBOBusIf>()) {
        std::vector<HBOPinProps*> found;
        i->getPortMapPinPropsSeq(found);
        addAll(found, out);
    } else {
        return false;
    }
    return true;
}

bool ports(const Ref& from, std::vector<Ref>& out) {
    HBOBusIf* i = from.as<HBOBusIf>();
    if (!i)
        return false;
    addValues(i->getPortMaps(), out);
    return true;
}

bool modes(const Ref& from, std::vector<Ref>& out) {
    HBOBoardComponent* c = from.as<HBOBoardComponent>();
    if (!c)
        return false;
    addAll(c->getComponentModes(), out);
    return true;
}

bool jumpers(const Ref& from, std::vector<Ref>& out) {
    HBOBoard* b = from.as<HBOBoard>();
    if (!b)
        return false;
    addAll(b->getJumpers(), out);
    return true;
}

bool parameters(const Ref& from, std::vector<Ref>& out) {
    if (HBOBoard* b = from.as<HBOBoard>())
        addAll(b->getParameters(), out);
    else if (HBOBoardComponent* c = from.as<HBOBoardComponent>())
        addAll(c->getParameters(), out);
    else if (HBOBusIf* i = from.as<HBOBusIf>())
        addAll(i->getParameters(), out);
    else
        return false;
    return true;
}

bool buses(const Ref& from, std::vector<Ref>& out) {
    if (HBOBoard* b = from.as<HBOBoard>()) {
        addAll(b->getBuses(), out);
    } else if (HBOBoardComponent* c = from.as<HBOBoardComponent>()) {
        std::vector<HBOBoardBus*> found;
        if (c->getBoard())
            c->getBoard()->getBusesOfComponent(c->getComponentName(), found);
        addAll(found, out);
    } else {
        return false;
    }
    return true;
}

bool nets(const Ref& from, std::vector<Ref>& out) {
    HBOBoardBus* bus = from.as<HBOBoardBus>();
    if (!bus)
        return false;
    addAll(bus->getBoardBusNets(), out);
    return true;
}

bool preferences(const Ref& from, std::vector<Ref>& out) {
    if (HBOBusIf* i = from.as<HBOBusIf>())
        addAll(i->getPreferences(), out);
    else if (HBOComponentMode* m = from.as<HBOComponentMode>())
        addAll(m->getPreferredIps(), out);
    else
        return false;
    return true;
}

bool presets(const Ref& from, std::vector<Ref>& out) {
    if (HBOBoard* b = from.as<HBOBoard>()) {
        for (const auto& e : b->getIpPresets())
            addAll(e.second, out);
        for (const auto& e : b->getIpAssociatedInterfaces())
            addAll(e.second, out);
    } else if (HBOBusIf* i = from.as<HBOBusIf>()) {
        HBOBoardComponent* owner = i->getOwnerComponent();
        presetsOf(owner ? owner->getBoard() : nullptr, i->getPresetProcName(), out);
    } else if (HBOComponentMode* m = from.as<HBOComponentMode>()) {
        HBOBoardComponent* owner = m->getOwnerComponent();
        presetsOf(owner ? owner->getBoard() : nullptr, m->getPresetProcName(), out);
    } else {
        return false;
    }
    return true;
}

}  // namespace

const std::vector<Walk>& walks() {
    static const std::vector<Walk> all = {
        {"get_board_components", "boards or buses", components},
        {"get_board_component_interfaces", "boards or components", interfaces},
        {"get_board_component_pins", "components, interfaces or ports", pins},
        {"get_board_interface_ports", "interfaces", ports},
        {"get_board_component_modes", "components", modes},
        {"get_board_jumpers", "boards", jumpers},
        {"get_board_parameters", "boards, components or interfaces", parameters},
        {"get_board_buses", "boards or components", buses},
        {"get_board_bus_nets", "buses", nets},
        {"get_board_ip_preferences", "interfaces or modes", preferences},
        {"get_board_ip_presets", "boards, interfaces or modes", presets},
    };
    return all;
}

std::vector<Ref> walkResult(const std::vector<Ref>& found, const std::function<bool(const std::string&)>& keep) {
    std::vector<Ref> result;
    std::set<const void*> seen;
    for (const Ref& r : found) {
        if (!seen.insert(r.object).second)
            continue;
        if (keep && !keep(nameOf(r)))
            continue;
        result.push_back(r);
    }
    return result;
}

}  // namespace zrbind

// The walks down a board: each takes -of_objects and an optional name pattern
// (glob, any case) and gives the objects found, each once, in model order.
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
#include "ZrCommands.h"
#include "ZrHandles.h"

namespace zrtcl {

namespace {

// Appends the children of one object; false when the walk doesn't start from its kind.
typedef bool (*Step)(const Ref& from, std::vector<Ref>& out);

struct Walk {
    const char* name;
    const char* usage;
    const char* sources;  // the kinds -of_objects takes, for the error text
    Step step;
};

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

const Walk kWalks[] = {
    {"get_board_components", "get_board_components -of_objects OBJECTS ?PATTERN?", "boards or buses", components},
    {"get_board_component_interfaces", "get_board_component_interfaces -of_objects OBJECTS ?PATTERN?",
     "boards or components", interfaces},
    {"get_board_component_pins", "get_board_component_pins -of_objects OBJECTS ?PATTERN?",
     "components, interfaces or ports", pins},
    {"get_board_interface_ports", "get_board_interface_ports -of_objects OBJECTS ?PATTERN?", "interfaces", ports},
    {"get_board_component_modes", "get_board_component_modes -of_objects OBJECTS ?PATTERN?", "components", modes},
    {"get_board_jumpers", "get_board_jumpers -of_objects OBJECTS ?PATTERN?", "boards", jumpers},
    {"get_board_parameters", "get_board_parameters -of_objects OBJECTS ?PATTERN?",
     "boards, components or interfaces", parameters},
    {"get_board_buses", "get_board_buses -of_objects OBJECTS ?PATTERN?", "boards or components", buses},
    {"get_board_bus_nets", "get_board_bus_nets -of_objects OBJECTS ?PATTERN?", "buses", nets},
    {"get_board_ip_preferences", "get_board_ip_preferences -of_objects OBJECTS ?PATTERN?", "interfaces or modes",
     preferences},
    {"get_board_ip_presets", "get_board_ip_presets -of_objects OBJECTS ?PATTERN?", "boards, interfaces or modes",
     presets},
};

int walk(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    const Walk& w = *static_cast<const Walk*>(data);
    Tcl_Obj* of = nullptr;
    const char* pattern = nullptr;
    for (int i = 1; i < objc; ++i) {
        std::string arg = Tcl_GetString(objv[i]);
        if (arg == "-of_objects") {
            if (++i == objc)
                return usageError(interp, w.usage, "-of_objects needs a value");
            of = objv[i];
        } else if (!arg.empty() && arg[0] == '-') {
            return usageError(interp, w.usage, "unknown option '" + arg + "'");
        } else if (pattern) {
            return usageError(interp, w.usage, "only one pattern may be given");
        } else {
            pattern = Tcl_GetString(objv[i]);
        }
    }
    if (!of)
        return usageError(interp, w.usage, "-of_objects is required");
    std::vector<Ref> from, found;
    if (!resolve(interp, of, from))
        return usageError(interp, w.usage, Tcl_GetStringResult(interp));
    for (const Ref& r : from)
        if (!w.step(r, found))
            return usageError(interp, w.usage,
                              std::string("-of_objects takes ") + w.sources + ", not the " + r.kind() + " '" +
                                  nameOf(r) + "'");
    std::vector<Ref> result;
    std::set<const void*> seen;
    for (const Ref& r : found) {
        if (!seen.insert(r.object).second)
            continue;
        if (pattern && !Tcl_StringCaseMatch(nameOf(r).c_str(), pattern, TCL_MATCH_NOCASE))
            continue;
        result.push_back(r);
    }
    Tcl_SetObjResult(interp, handleList(result));
    return TCL_OK;
}

}  // namespace

void createWalkCommands(Tcl_Interp* interp) {
    for (const Walk& w : kWalks)
        Tcl_CreateObjCommand(interp, w.name, walk, const_cast<Walk*>(&w), nullptr);
}

}  // namespace zrtcl

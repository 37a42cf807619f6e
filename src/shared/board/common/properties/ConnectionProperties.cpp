// Properties of a connection between two components and of its nets.
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOCPropertyInit.h"
#include "HBOPropertyRegistry.h"

using namespace HBOPropertyRegistry;

namespace {

// Registered as a string, published as an integer.
template <class Get>
void addIndex(HCPProperty::ObjectInfo& info, const char* name, Get get) {
    addProperty<HBOBoardBus>(info, name, HATAttrTypes::ATTR_STRING,
                             [get](Tcl_Interp* interp, const HBOBoardBus& b, const std::string&, HATAttrAny& out) {
                                 return publishIntResult(interp, get(b), out);
                             });
}

}  // namespace

namespace HBOCPropertyInit {

namespace board_bus {
void init() {
    typedef HBOBoardBus B;
    HCPProperty::ObjectInfo info = objectInfo<B>();
    addClass(info, "board_bus");
    addString<B>(info, "name", [](const B& b) { return b.getName(); });
    addString<B>(info, "component_1", [](const B& b) { return b.getComp1(); });
    addString<B>(info, "component_2", [](const B& b) { return b.getComp2(); });
    addString<B>(info, "delay", [](const B& b) { return delayText(b.getDelay()); });
    addList<B>(info, "enablement_dependency", [](const B& b) { return dependencyList(b.getEnablementDependency()); });
    addString<B>(info, "is_enabled", [](const B& b) { return b.getIsEnabled(); });
    addString<B>(info, "min_delay", [](const B& b) { return delayText(b.getMinDelay()); });
    addString<B>(info, "max_delay", [](const B& b) { return delayText(b.getMaxDelay()); });
    addIndex(info, "Component_1.START", [](const B& b) { return b.getStartIndexComp1(); });
    addIndex(info, "Component_1.STOP", [](const B& b) { return b.getStopIndexComp1(); });
    addIndex(info, "Component_2.START", [](const B& b) { return b.getStartIndexComp2(); });
    addIndex(info, "Component_2.STOP", [](const B& b) { return b.getStopIndexComp2(); });
}
}  // namespace board_bus

namespace board_bus_net {
void init() {
    typedef HBOBoardBusNet N;
    HCPProperty::ObjectInfo info = objectInfo<N>();
    addClass(info, "board_bus_net");
    addString<N>(info, "name", [](const N& n) { return n.getName(); });
    addString<N>(info, "delay", [](const N& n) { return delayText(n.getTypicalDelay()); });
    addList<N>(info, "enablement_dependency", [](const N& n) { return dependencyList(n.getEnablementDependency()); });
    addString<N>(info, "is_enabled",
                 [](const N& n) { return n.getIsEnabled().empty() ? std::string("true") : n.getIsEnabled(); });
    addString<N>(info, "min_delay", [](const N& n) { return delayText(n.getMinDelay()); });
    addString<N>(info, "max_delay", [](const N& n) { return delayText(n.getMaxDelay()); });
    addString<N>(info, "bus", [](const N& n) { return n.getOwner() ? n.getOwner()->getName() : std::string(); });
}
}  // namespace board_bus_net

}  // namespace HBOCPropertyInit

// Finding the objects of the reference board by name.
#ifndef ZR_TEST_MODEL_OBJECTS_H
#define ZR_TEST_MODEL_OBJECTS_H

#include <string>

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

namespace model_objects {

inline HBOBoardComponent* component(const HBOBoard& b, const std::string& name) {
    for (const auto& e : b.getBoardComponents())
        if (e.second->getComponentName() == name)
            return e.second;
    return nullptr;
}

inline HBOBusIf* busIf(const HBOBoard& b, const std::string& name) { return b.getBusIfByName(name); }

inline HBOBoardBus* bus(const HBOBoard& b, const std::string& name) {
    for (HBOBoardBus* bus : b.getBuses())
        if (bus->getName() == name)
            return bus;
    return nullptr;
}

inline HBOJumper* jumper(const HBOBoard& b, const std::string& name) {
    for (HBOJumper* j : b.getJumpers())
        if (j->getName() == name)
            return j;
    return nullptr;
}

inline HBOParameter* parameter(const HBOBoard& b, const std::string& name) {
    for (HBOParameter* p : b.getParameters())
        if (p->getName() == name)
            return p;
    return nullptr;
}

}  // namespace model_objects

#endif

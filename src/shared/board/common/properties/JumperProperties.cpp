// Properties of a jumper. Its position is the one property a script can write;
// the board's enablement follows each jumper as it is set.
#include <vector>

#include "HBOBoard.h"
#include "HBOCPropertyInit.h"
#include "HBOJumper.h"
#include "HBOPropertyRegistry.h"
#include "HUTConvert.h"

using namespace HBOPropertyRegistry;

namespace HBOCPropertyInit {
namespace board_jumper {

namespace current_value {
namespace {

void setAndUpdate(HBOJumper* jumper, bool value) {
    jumper->setValue(value, true);
    if (HBOBoard* owner = jumper->getOwner())
        owner->updateEnablement();
}

class setter : public HCPProperty::Setter {
public:
    int set(Tcl_Interp*, const Objects& objects, const std::string&, const HATAttr& newValue) override {
        value = newValue;
        for (const tclany& object : objects.items()) {
            HBOJumper* jumper = HCPProperty::Types::nativeOf<HBOJumper*>(object);
            if (!jumper)
                continue;
            oldValues.emplace_back(jumper->getDefaultValue());
            jumpers.push_back(jumper);
        }
        apply();
        return 0;
    }
    int undo() override {
        for (std::size_t i = 0; i < jumpers.size(); ++i)
            setAndUpdate(jumpers[i], oldValues[i].getBoolVal());
        return 0;
    }
    int redo() override {
        apply();
        return 0;
    }

private:
    void apply() {
        bool on = HUTConvert::toBool(value.getCharStringVal());
        for (HBOJumper* jumper : jumpers)
            setAndUpdate(jumper, on);
    }

    HATAttr value;
    std::vector<HATAttr> oldValues;
    std::vector<HBOJumper*> jumpers;
};

}  // namespace
}  // namespace current_value

void init() {
    typedef HBOJumper J;
    HCPProperty::ObjectInfo info = objectInfo<J>();
    addClass(info, "board_jumper");
    addString<J>(info, "name", [](const J& j) { return j.getName(); });
    HCPProperty::Spec& position =
        addProperty<J>(info, "current_value", HATAttrTypes::ATTR_BOOL,
                       [](Tcl_Interp* interp, const J& j, const std::string&, HATAttrAny& out) {
                           return publishBoolResult(interp, j.getDefaultValue(), out);
                       });
    position.getAttrSpec().setReadOnly(false);
    position.setSetterFcn([]() { return std::unique_ptr<HCPProperty::Setter>(new current_value::setter); });
    addString<J>(info, "description", [](const J& j) { return j.getDescription(); });
}

}  // namespace board_jumper
}  // namespace HBOCPropertyInit

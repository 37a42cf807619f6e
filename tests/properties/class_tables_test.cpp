// What each class registers: names in the order of registration, attribute
// types, hidden and writable properties, listing order, and the class names
// before and after the second registration.
#include "property_fixture.h"

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

using namespace property_fixture;

namespace {

template <class T>
HCPProperty::ObjectInfo infoOf() {
    return HCPProperty::getObjectInfo(typeid(T*));
}

template <class T>
Names registered() {
    Names out;
    for (const HCPProperty::Spec* s : infoOf<T>().getSpecs())
        out.push_back(s->getName());
    return out;
}

template <class T>
Names hidden() {
    Names out;
    for (const HCPProperty::Spec* s : infoOf<T>().getSpecs())
        if (!s->getAttrSpec().isVisible())
            out.push_back(s->getName());
    return out;
}

// Names of the given attribute type, in registration order.
template <class T>
Names ofType(HATAttrTypes::AttrType type) {
    Names out;
    for (const HCPProperty::Spec* s : infoOf<T>().getSpecs())
        if (s->getName() != "_default_" && s->getAttrSpec().getAttrType() == type)
            out.push_back(s->getName());
    return out;
}

template <class T>
std::string className() {
    T object;
    return get(&object, "class");
}

}  // namespace

TEST_F(PropertyTest, EachClassRegistersItsTableInOrder) {
    EXPECT_EQ(registered<HBOBoard>(),
              (Names{"class", "name", "board_name", "display_name", "file_version", "Compatible_board_revisions",
                     "vendor_name", "spec_url", "FILE_NAME", "REPOSITORY", "jtag_chains", "description",
                     "supports_ced", "_default_"}));
    EXPECT_EQ(registered<HBOBoardComponent>(),
              (Names{"class", "name", "part_name", "SPEC_URL", "jtag_position", "_default_", "BOARD_NAME",
                     "vendor_name", "BOARD_PART_FILE_VERSION", "BOARD_REVISION", "DISPLAY_NAME", "FILE_NAME",
                     "REPOSITORY", "additionally_supported_part_names", "component_name", "component_vendor", "type",
                     "sub_type", "description", "configuration_modes", "is_enabled", "supports_ced"}));
    EXPECT_EQ(registered<HBOComponentMode>(),
              (Names{"class", "name", "description", "interfaces", "enablement_dependency", "presets",
                     "preferences", "is_enabled"}));
    EXPECT_EQ(registered<HBOBusIf>(),
              (Names{"class", "name", "VLNV", "PRESET_FILE", "MODE", "vendor", "library", "busdef_name", "version",
                     "presets", "_default_", "of_component", "description", "preferences", "is_enabled"}));
    EXPECT_EQ(registered<HBOModelPort>(), (Names{"class", "name", "direction", "width", "left", "right", "interface",
                                                 "logical_name", "_default_"}));
    Names pin{"class", "name", "loc"};
    for (const std::string& n : HBOPinProps::getPortPropNames())
        pin.push_back(n);
    for (const char* n : {"internal_vref", "pin_index", "_default_", "bus_direction", "bus_name", "interface",
                          "logical_name", "bus_start", "bus_stop", "bus_width", "interfaces"})
        pin.push_back(n);
    EXPECT_EQ(registered<HBOPinProps>(), pin);
    EXPECT_EQ(registered<HBOBoardBus>(),
              (Names{"class", "name", "component_1", "component_2", "delay", "enablement_dependency", "is_enabled",
                     "min_delay", "max_delay", "Component_1.START", "Component_1.STOP", "Component_2.START",
                     "Component_2.STOP"}));
    EXPECT_EQ(registered<HBOBoardBusNet>(), (Names{"class", "name", "delay", "enablement_dependency", "is_enabled",
                                                   "min_delay", "max_delay", "bus"}));
    EXPECT_EQ(registered<HBOJumper>(), (Names{"class", "name", "current_value", "description"}));
    EXPECT_EQ(registered<HBOParameter>(),
              (Names{"class", "name", "value", "value_type", "supported_values", "read_only"}));
    EXPECT_EQ(registered<HBOIpPreset>(), (Names{"class", "name", "ip_name", "ip_vendor", "ip_library", "ip_version",
                                                "ip_interface", "_default_"}));
    EXPECT_EQ(registered<HBOBusIfPreference>(),
              (Names{"class", "ip_name", "ip_vendor", "ip_library", "ip_version", "order"}));
}

TEST_F(PropertyTest, TypesFollowTheTablesIncludingTheOddOnes) {
    EXPECT_EQ(ofType<HBOBoard>(HATAttrTypes::ATTR_STRING_LIST), (Names{"Compatible_board_revisions", "jtag_chains"}));
    EXPECT_EQ(ofType<HBOBoardComponent>(HATAttrTypes::ATTR_STRING_LIST),
              (Names{"additionally_supported_part_names", "configuration_modes"}));
    EXPECT_EQ(ofType<HBOComponentMode>(HATAttrTypes::ATTR_STRING_LIST),
              (Names{"interfaces", "enablement_dependency", "presets", "preferences"}));
    EXPECT_EQ(ofType<HBOBusIf>(HATAttrTypes::ATTR_STRING_LIST), (Names{"presets", "preferences"}));
    EXPECT_EQ(ofType<HBOPinProps>(HATAttrTypes::ATTR_STRING_LIST), (Names{"interfaces"}));
    EXPECT_EQ(ofType<HBOBoardBus>(HATAttrTypes::ATTR_STRING_LIST), (Names{"enablement_dependency"}));
    EXPECT_EQ(ofType<HBOParameter>(HATAttrTypes::ATTR_STRING_LIST), (Names{"supported_values"}));
    EXPECT_EQ(ofType<HBOJumper>(HATAttrTypes::ATTR_BOOL), (Names{"current_value"}));
    EXPECT_EQ(ofType<HBOBusIfPreference>(HATAttrTypes::ATTR_INT), (Names{"order"}));
    // Published as booleans and integers, registered as strings.
    EXPECT_EQ(typeOf(infoOf<HBOBoard>(), "supports_ced"), HATAttrTypes::ATTR_STRING);
    EXPECT_EQ(typeOf(infoOf<HBOPinProps>(), "bus_width"), HATAttrTypes::ATTR_STRING);
    EXPECT_EQ(typeOf(infoOf<HBOBoardBus>(), "Component_2.STOP"), HATAttrTypes::ATTR_STRING);
}

TEST_F(PropertyTest, OnlyTheJumperPositionIsWritable) {
    int writable = 0;
    for (const HCPProperty::ObjectInfo& info :
         {infoOf<HBOBoard>(), infoOf<HBOBoardComponent>(), infoOf<HBOComponentMode>(), infoOf<HBOBusIf>(),
          infoOf<HBOModelPort>(), infoOf<HBOPinProps>(), infoOf<HBOBoardBus>(), infoOf<HBOBoardBusNet>(),
          infoOf<HBOJumper>(), infoOf<HBOParameter>(), infoOf<HBOIpPreset>(), infoOf<HBOBusIfPreference>()})
        for (const HCPProperty::Spec* s : info.getSpecs())
            if (!s->getAttrSpec().isReadOnly()) {
                ++writable;
                EXPECT_EQ(s->getName(), "current_value");
                EXPECT_TRUE(s->getSetterFcn());
            }
    EXPECT_EQ(writable, 1);
}

TEST_F(PropertyTest, HiddenPropertiesAreTheDeliberateFew) {
    EXPECT_EQ(hidden<HBOBoard>(), (Names{"_default_"}));
    EXPECT_EQ(hidden<HBOBoardComponent>(), (Names{"_default_", "is_enabled"}));
    EXPECT_EQ(hidden<HBOBusIf>(), (Names{"is_enabled"}));
    EXPECT_EQ(hidden<HBOModelPort>(), (Names{"_default_"}));
    EXPECT_EQ(hidden<HBOIpPreset>(), (Names{"_default_"}));
    EXPECT_EQ(hidden<HBOPinProps>(), (Names{"_default_"}));
    for (Names names : {hidden<HBOComponentMode>(), hidden<HBOBoardBus>(), hidden<HBOBoardBusNet>(),
                        hidden<HBOJumper>(), hidden<HBOParameter>(), hidden<HBOBusIfPreference>()})
        EXPECT_TRUE(names.empty());
    // The interface's dynamic names carry one shared spec, made once.
    const HCPProperty::Spec* dyn = infoOf<HBOBusIf>().getDefaultSpec();
    ASSERT_TRUE(dyn->getGetDefaultAttrSpecFcn());
    const HATAttrSpec* a = dyn->getGetDefaultAttrSpecFcn()(zrc::tcltasks::tclany(), "PARAM.x");
    EXPECT_EQ(a, dyn->getGetDefaultAttrSpecFcn()(zrc::tcltasks::tclany(), "PORT.y"));
    EXPECT_TRUE(a->isReadOnly() && a->isVisible() && a->getAttrType() == HATAttrTypes::ATTR_STRING);
}

TEST_F(PropertyTest, ListingsAreSortedButForPresetsInterfacesAndPreferences) {
    EXPECT_TRUE(infoOf<HBOBoard>().getSortProperties());
    EXPECT_TRUE(infoOf<HBOPinProps>().getSortProperties());
    EXPECT_FALSE(infoOf<HBOIpPreset>().getSortProperties());
    EXPECT_FALSE(infoOf<HBOBusIf>().getSortProperties());
    EXPECT_FALSE(infoOf<HBOBusIfPreference>().getSortProperties());
    HBOBusIfPreference pref;
    EXPECT_EQ(listed(&pref), (Names{"class", "ip_name", "ip_vendor", "ip_library", "ip_version", "order"}));
    HBOJumper jumper;
    EXPECT_EQ(listed(&jumper), (Names{"class", "current_value", "description", "name"}));
}

TEST_F(PropertyTest, ThreeClassesChangeTheirNameWithTheSecondRegistration) {
    using namespace HBOCPropertyInit;
    board_component::init();
    board_part_interface::init();
    board_part_pin::init();
    EXPECT_EQ(className<HBOBoardComponent>(), "board_part");
    EXPECT_EQ(className<HBOBusIf>(), "board_part_interface");
    EXPECT_EQ(className<HBOPinProps>(), "board_part_pin");
    board_component::initV2Props();
    board_part_interface::initV2Props();
    board_part_pin::initV2Props();
    EXPECT_EQ(className<HBOBoardComponent>(), "board_component");
    EXPECT_EQ(className<HBOBusIf>(), "board_component_interface");
    EXPECT_EQ(className<HBOPinProps>(), "board_component_pin");
    // The renamed class keeps the first place in an unsorted listing.
    EXPECT_EQ(registered<HBOBusIf>().front(), "class");
    EXPECT_EQ(className<HBOBoard>(), "board");
    EXPECT_EQ(className<HBOIpPreset>(), "ip_configuration_info");
    EXPECT_EQ(className<HBOBusIfPreference>(), "ip_preference");
    EXPECT_EQ(className<HBOBoardBusNet>(), "board_bus_net");
}

// Old names and their advisory texts, fixed when they are registered; and the
// one writable property, the jumper position, with undo and redo.
#include "model_objects.h"
#include "property_fixture.h"

#include "HBOBoardDB.h"

using namespace property_fixture;
using namespace model_objects;

namespace {

template <class T>
std::string advisory(const std::string& name) {
    return HCPProperty::getObjectInfo(typeid(T*)).findSpec(name)->getAttrSpec().advisoryText;
}

// Notes, at each save, the enablement the board had when the jumper moved.
class EnablementLog : public HBOBoardDB {
public:
    explicit EnablementLog(std::vector<std::string> buses) : m_buses(std::move(buses)) {}
    void saveBoard(HBOBoard* board) override {
        std::string line;
        for (const std::string& name : m_buses)
            line += (line.empty() ? "" : " ") + bus(*board, name)->getIsEnabled();
        saves.push_back(line);
    }
    std::vector<std::string> saves;

private:
    std::vector<std::string> m_buses;
};

HCPProperty::Setter::Objects jumpers(const HBOBoard& b, std::initializer_list<const char*> names) {
    HCPProperty::Setter::Objects objects;
    for (const char* n : names)
        objects.append(zrc::tcltasks::tclany(jumper(b, n)));
    return objects;
}

std::string positions(const HBOBoard& b) {
    std::string out;
    for (const HBOJumper* j : b.getJumpers())
        out += j->getDefaultValue() ? '1' : '0';
    return out;
}

}  // namespace

TEST_F(PropertyTest, AdvisoryTextsAreStoredOnlyWithSchemaTwoOnAtRegistration) {
    const std::string boardOf = " [get_boards -of_objects <board_part object>]'";
    const std::string portsOf = " [get_board_interface_ports <port_name>]'";
    const std::vector<std::pair<std::string, std::string>> componentTexts = {
        {"jtag_position", "Use 'JTAG_POSITION.chain1'"},
        {"BOARD_NAME", "Use 'get_property BOARD_NAME" + boardOf},
        {"vendor_name", "Use 'get_property VENDOR_NAME" + boardOf},
        {"BOARD_PART_FILE_VERSION", "Use 'get_property FILE_VERSION" + boardOf},
        {"BOARD_REVISION", "Use 'get_property COMPATIBLE_BOARD_REVISIONS" + boardOf},
        {"REPOSITORY", "Use 'get_property REPOSITORY" + boardOf},
        {"component_vendor", "Use 'get_property VENDOR_NAME" + boardOf}};
    const std::vector<std::pair<std::string, std::string>> pin = {
        {"bus_direction", "Use 'get_property DIRECTION" + portsOf},
        {"bus_name", "Use 'get_property NAME" + portsOf},
        {"interface", "Use 'INTERFACES'"},
        {"logical_name", "Use 'get_property LOGICAL_NAME" + portsOf},
        {"bus_start", "Use 'get_property LEFT" + portsOf},
        {"bus_stop", "Use 'get_property RIGHT" + portsOf},
        {"bus_width", "Use 'get_property WIDTH" + portsOf}};
    for (const auto& e : componentTexts)
        EXPECT_EQ(advisory<HBOBoardComponent>(e.first), e.second);
    for (const auto& e : pin)
        EXPECT_EQ(advisory<HBOPinProps>(e.first), e.second);
    EXPECT_EQ(advisory<HBOBusIf>("PRESET_FILE"), "Use 'PRESETS'");
    EXPECT_EQ(advisory<HBOBoardComponent>("DISPLAY_NAME"), "");
    EXPECT_EQ(advisory<HBOBoardComponent>("FILE_NAME"), "");

    HBOBoard& b = reference();
    HBOBoardComponent* ddr = model_objects::component(b, "ddr3_sdram");
    clearMessages();
    EXPECT_EQ(get(ddr, "board_name"), "tarnwick");
    EXPECT_EQ(warnings(), (Names{"Property 'BOARD_NAME' is deprecated. Use 'get_property BOARD_NAME" + boardOf}));

    // Registered again with the parameter off (or missing): no texts, same values,
    // and turning it on afterwards changes nothing.
    HPAParamMgr::getParamMgr()->setValue("board.enableSchemaV2", "false");
    registerAll();
    HPAParamMgr::getParamMgr()->setValue("board.enableSchemaV2", "true");
    for (const auto& e : componentTexts)
        EXPECT_EQ(advisory<HBOBoardComponent>(e.first), "") << e.first;
    for (const auto& e : pin)
        EXPECT_EQ(advisory<HBOPinProps>(e.first), "") << e.first;
    EXPECT_EQ(advisory<HBOBusIf>("PRESET_FILE"), "");
    clearMessages();
    EXPECT_EQ(get(ddr, "BOARD_NAME"), "tarnwick");
    EXPECT_TRUE(warnings().empty());
}

TEST_F(PropertyTest, JumperWritesMoveEachJumperAndEnablementFollowsEachOne) {
    HBOBoard& b = reference();
    EnablementLog log({"part0_fmc_lpc_1", "part0_usb_uart_1", "part0_pmod_ja_1"});
    b.attach(&log);
    ASSERT_EQ(positions(b), "110");
    EXPECT_EQ(get(bus(b, "part0_pmod_ja_1"), "is_enabled"), "false");

    // jp3 and jp7 off: the save of jp7 already sees the connection of jp3 off.
    ASSERT_EQ(HCPProperty::setProperty(nullptr, jumpers(b, {"jp3", "jp7"}), "Current_Value", HATAttr("false")), 0);
    EXPECT_EQ(positions(b), "000");
    EXPECT_EQ(log.saves, (Names{"true true false", "false true false"}));
    EXPECT_EQ(get(bus(b, "part0_usb_uart_1"), "is_enabled"), "false");
    EXPECT_EQ(get(component(b, "usb_uart"), "is_enabled"), "false");
    EXPECT_EQ(tclResult(jumper(b, "jp3"), "current_value"), "0");

    // All three on at once, from a value given as 1.
    ASSERT_EQ(HCPProperty::setProperty(nullptr, jumpers(b, {"jp9", "jp3", "jp7"}), "current_value", HATAttr("1")), 0);
    EXPECT_EQ(positions(b), "111");
    EXPECT_EQ(get(bus(b, "part0_pmod_ja_1"), "is_enabled"), "true");

    // Undo puts each jumper back, in order, the board judged after each.
    log.saves.clear();
    ASSERT_TRUE(HCPProperty::undo());
    EXPECT_EQ(positions(b), "000");
    EXPECT_EQ(log.saves, (Names{"true true true", "true true false", "false true false"}));
    EXPECT_EQ(get(bus(b, "part0_pmod_ja_1"), "is_enabled"), "false");
    ASSERT_TRUE(HCPProperty::undo());
    EXPECT_EQ(positions(b), "110");
    EXPECT_EQ(get(component(b, "usb_uart"), "is_enabled"), "true");
    ASSERT_TRUE(HCPProperty::redo());
    EXPECT_EQ(positions(b), "000");
    ASSERT_TRUE(HCPProperty::redo());
    EXPECT_EQ(positions(b), "111");
    EXPECT_FALSE(HCPProperty::redo());
    b.attach(nullptr);
}

TEST_F(PropertyTest, JumperWritesRefuseWhatIsNoBoolean) {
    HBOBoard& b = reference();
    EXPECT_THROW(HCPProperty::setProperty(nullptr, jumpers(b, {"jp3"}), "current_value", HATAttr("maybe")),
                 HTCErrors::error);
    EXPECT_THROW(HCPProperty::setProperty(nullptr, jumpers(b, {"jp3"}), "name", HATAttr("x")), HTCErrors::error);
    EXPECT_EQ(positions(b), "110");
    // A jumper of no board moves alone.
    HBOJumper loose;
    HCPProperty::Setter::Objects one;
    one.append(zrc::tcltasks::tclany(&loose));
    EXPECT_EQ(HCPProperty::setProperty(nullptr, one, "current_value", HATAttr("off")), 0);
    EXPECT_FALSE(loose.getDefaultValue());
    EXPECT_TRUE(HCPProperty::undo());
    EXPECT_TRUE(loose.getDefaultValue());
}

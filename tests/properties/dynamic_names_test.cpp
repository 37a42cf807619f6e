// Names that exist only at run time: their prefixes, the schema switch, the
// data properties of a board with their flat names, and their listings.
#include "model_objects.h"
#include "property_fixture.h"

using namespace property_fixture;
using namespace model_objects;

namespace {

void setParam(const char* name, const char* value) { HPAParamMgr::getParamMgr()->setValue(name, value); }

// What f writes to standard output.
template <class F>
std::string stdoutOf(F f) {
    testing::internal::CaptureStdout();
    f();
    return testing::internal::GetCapturedStdout();
}

}  // namespace

TEST_F(PropertyTest, ComponentDynamicNamesFollowTheSchemaSwitchAtReadTime) {
    HBOBoard& b = reference();
    HBOBoardComponent* fpga = component(b, "part0");
    HBOBoardComponent* ddr = component(b, "ddr3_sdram");
    fpga->addParameter(new HBOParameter("speed", "fast", "", "", "", ""));
    EXPECT_EQ(get(fpga, "PARAM.speed"), "fast");
    EXPECT_EQ(get(fpga, "param.speed"), "<none>");
    EXPECT_EQ(get(fpga, "JTAG_POSITION.chain1"), "0");
    // A chain without a position for this component is no property, but is listed empty.
    EXPECT_EQ(get(ddr, "JTAG_POSITION.chain1"), "<none>");
    std::vector<HCPProperty::ListedProperty> all = listing(ddr);
    auto chain = std::find_if(all.begin(), all.end(), [](const auto& p) { return p.name == "JTAG_POSITION.chain1"; });
    ASSERT_NE(chain, all.end());
    EXPECT_EQ(chain->value.getCharStringVal(), "");
    EXPECT_EQ(listedWith(fpga, "PARAM."), (Names{"PARAM.speed"}));
    // Any case, never listed.
    b.setMigratedFromSchema("1.1");
    EXPECT_EQ(get(ddr, "schema_version"), "2.2");
    EXPECT_EQ(get(ddr, "SCHEMA_VERSION"), "2.2");
    EXPECT_EQ(get(ddr, "Migrated_From_Schema"), "1.1");
    EXPECT_TRUE(listedWith(ddr, "SCHEMA").empty());

    setParam("board.enableSchemaV2", "false");
    EXPECT_EQ(get(fpga, "PARAM.speed"), "<none>");
    EXPECT_EQ(get(fpga, "JTAG_POSITION.chain1"), "<none>");
    EXPECT_TRUE(listedWith(fpga, "PARAM.").empty());
    EXPECT_TRUE(listedWith(fpga, "JTAG_POSITION.").empty());
    EXPECT_EQ(get(ddr, "schema_version"), "2.2");
}

TEST_F(PropertyTest, BoardParametersComeFirstAndDataPropertiesOnlyWhenSwitchedOn) {
    HBOBoard& b = reference();
    HBOBoardDataProps::PropMap rails{{"VCCINT", std::string("1.0")}, {"VCCAUX", std::string("1.8")}};
    HBOBoardDataProps::PropMap cond{{"RAILS", rails}, {"TEMP", std::string("85")}};
    HBOBoardDataProps::PropMap top{{"OPERATING_CONDITIONS", cond}, {"PARAM.HEAT_SINK", std::string("fan")},
                                   {"WEIGHT", std::string("")}, {"COUNT", 3}};
    b.setBoardDataProps(HBOBoardDataProps(top));

    setParam("board.dataProps.enableTclProps", "false");
    EXPECT_EQ(get(&b, "WEIGHT"), "<none>");
    EXPECT_EQ(stdoutOf([&] { EXPECT_EQ(listedWith(&b, "OPERATING"), Names()); }), "");

    setParam("board.dataProps.enableTclProps", "true");
    // A found parameter wins; a missing one goes on to the data properties.
    EXPECT_EQ(get(&b, "PARAM.heat_sink"), "passive");
    b.getParameters()[2]->setName("gone");
    EXPECT_EQ(get(&b, "PARAM.heat_sink"), "fan");
    EXPECT_EQ(get(&b, "weight"), "");
    EXPECT_EQ(get(&b, "OPERATING_CONDITIONS"), "TEMP 85");
    EXPECT_EQ(get(&b, "NOTHING"), "<none>");

    Names names;
    std::string out = stdoutOf([&] { names = listed(&b); });
    EXPECT_EQ(out, std::string("BAD ANY_CAST in board_part::fillFlatStrMap_--expected PropValByStr but got") +
                       typeid(int).name() + "!\n");
    for (const char* n : {"OPERATING_CONDITIONS.RAILS.VCCAUX", "OPERATING_CONDITIONS.RAILS.VCCINT",
                          "OPERATING_CONDITIONS.TEMP", "WEIGHT", "PARAM.gone"})
        EXPECT_EQ(std::count(names.begin(), names.end(), n), 1) << n;
    EXPECT_EQ(std::count(names.begin(), names.end(), "COUNT"), 0);
}

TEST_F(PropertyTest, InterfaceAndPinPrefixesAreExactAndTheirListingsComplete) {
    HBOBoard& b = reference();
    HBOBusIf* clock = busIf(b, "sys_diff_clock");
    EXPECT_EQ(get(clock, "PARAM.frequency"), "200000000");
    EXPECT_EQ(get(clock, "PARAM.FREQUENCY"), "200000000");
    EXPECT_EQ(get(clock, "param.frequency"), "<none>");
    EXPECT_EQ(get(clock, "PORT.CLK_P"), get(clock, "PORT.clk_p"));
    Names dyn = listedWith(clock, "P");
    EXPECT_EQ(dyn.front(), "PRESET_FILE");
    EXPECT_EQ(std::count(dyn.begin(), dyn.end(), "PARAM.frequency"), 1);
    // The dynamic names' Tcl result comes through the service helper too.
    EXPECT_EQ(tclResult(clock, "PARAM.frequency"), "200000000");

    HBOPinProps pin;
    pin.setIOBankProperty("Vcco", "1.8");
    pin.addIntfPortMap("leds", "3");
    EXPECT_EQ(get(&pin, "IOBANK.vcco"), "1.8");
    EXPECT_EQ(get(&pin, "IOBANK.none"), "<none>");
    EXPECT_EQ(get(&pin, "PORT.leds"), "3");
    EXPECT_EQ(get(&pin, "PORT.LEDS"), "<none>");
    EXPECT_EQ(listedWith(&pin, "IOBANK."), (Names{"IOBANK.Vcco"}));
    EXPECT_EQ(listedWith(&pin, "PORT."), (Names{"PORT.leds"}));
}

TEST_F(PropertyTest, PortPinNamesTakeTheIndexUpToTheLastByte) {
    HBOModelPort port;
    port.setName("d");
    port.addPinPortMap("2", "P2");
    EXPECT_EQ(get(&port, "PIN.d[2]"), "P2");
    EXPECT_EQ(get(&port, "PIN.d[2)"), "P2");
    EXPECT_EQ(get(&port, "PIN.d[7]"), "");
    EXPECT_EQ(get(&port, "PIN.e[2]"), "<none>");
    EXPECT_EQ(get(&port, "PIN.d["), "<none>");
    EXPECT_EQ(listedWith(&port, "PIN."), (Names{"PIN.d[2]"}));
}

TEST_F(PropertyTest, PresetParametersAreBareNamesAndAssociationsListTheirInterfaces) {
    HBOIpPreset preset;
    preset.setParam("CONFIG.W", "8");
    EXPECT_EQ(get(&preset, "CONFIG.W"), "8");
    EXPECT_EQ(get(&preset, "config.w"), "<none>");
    // A preset may also be read as an association; it lists only its parameters.
    EXPECT_EQ(tclResult(&preset, "BOARD_INTERFACES"), "CONFIG.W");
    EXPECT_EQ(listedWith(&preset, "CONFIG"), (Names{"CONFIG.W"}));
    EXPECT_EQ(listedWith(&preset, "BOARD"), Names());

    HBOIpPreset assoc;
    assoc.setPresetorAssocIntf("assoc_intf");
    assoc.setParam("c_if", "10");
    assoc.setParam("a_if", "2");
    assoc.setParam("b_if", "2");  // same number: the later key wins
    EXPECT_EQ(tclResult(&assoc, "BOARD_INTERFACES"), "b_if c_if");
    EXPECT_EQ(listedWith(&assoc, "a_if"), Names());

    HBOIpPreset neither;
    neither.setPresetorAssocIntf("other");
    neither.setParam("x", "1");
    EXPECT_EQ(listed(&neither).size(), 7u);
}

TEST_F(PropertyTest, PresetListsFollowVersionsAndInterface) {
    HBOBoard b;
    HBOBoardComponent* c = new HBOBoardComponent;
    c->setComponentName("c");
    c->setBoard(&b);
    b.addBoardComponent(c);
    HBOComponentMode* mode = new HBOComponentMode;
    mode->setPresetProcName("proc");
    mode->setOwnerComponent(c);
    c->addComponentMode(mode);
    HBOIpPreset p1, p2;
    for (HBOIpPreset* p : {&p1, &p2}) {
        p->setVendor("v");
        p->setLibrary("l");
        p->setName("n");
    }
    p1.setVersion("1.0,2.0");
    p1.setIpInterface("S_AXI");
    p2.setVersion("");
    b.setIpPreset("proc", {&p1, &p2});
    EXPECT_EQ(tclResult(mode, "presets"), "proc:v:l:n:1.0:S_AXI proc:v:l:n:2.0:S_AXI proc:v:l:n:*");
    mode->setPresetProcName("PROC");
    EXPECT_EQ(tclResult(mode, "presets"), "PROC:v:l:n:1.0:S_AXI PROC:v:l:n:2.0:S_AXI PROC:v:l:n:*");
    mode->setPresetProcName("");
    EXPECT_EQ(tclResult(mode, "presets"), "");
    mode->setEnablementDependency("a  b");
    HATAttrAny value = getAny(mode, "enablement_dependency");
    const HATStringList* dep = value.get<HATStringList>();
    ASSERT_NE(dep, nullptr);
    EXPECT_EQ(dep->items(), (HSTVector<std::string>{"a", "", "b"}));
}

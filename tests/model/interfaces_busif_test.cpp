// Board interfaces: look-ups and their case rules, port maps, the rebase copy used
// when boards are merged, the pins of all ports, and the display line.

#include "HBOBusIfPreference.h"
#include "board_fixture.h"

using namespace board_fixture;

namespace {

typedef std::map<std::string, std::string> StrMap;

// A port mapped from `logical`, named `physical`, with the given pin port map.
HBOModelPort* addMapped(HBOBusIf& busIf, const std::string& logical, const std::string& physical,
                        const StrMap& pins = {}) {
    busIf.populatePortMap(new HBOPortMap(logical, physical));
    HBOModelPort* port = new HBOModelPort();
    port->setName(physical);
    port->setOwner(&busIf);
    port->setOwnerBusIf(busIf.getName(), logical);
    if (pins.size() > 1) {
        port->setIsVector(true);
        port->setRange(static_cast<int>(pins.size()) - 1, 0);
    }
    for (const auto& entry : pins)
        port->addPinPortMap(entry.first, entry.second);
    busIf.addPort(port);
    return port;
}

// An interface "ddr" of type korvelhw:interface:ddrx_rtl:1.0 of component "MEM",
// with everything the copy has to carry over.
void fillDdr(HBOBusIf& busIf) {
    busIf.setName("ddr");
    busIf.setDisplayName("DDR memory");
    busIf.setPresetFile("preset.xml");
    busIf.setAbstractTypeVendor("korvelhw");
    busIf.setAbstractTypeLibrary("interface");
    busIf.setAbstractTypeName("ddrx_rtl");
    busIf.setAbstractTypeVersion("1.0");
    busIf.setInterfaceMode("master");
    busIf.setPresetProcName("ddr_preset");
    busIf.setOfComponent("MEM");
    busIf.setDescription("main memory");
    busIf.setIsEnabled("false");
    busIf.setParam("frequency", "100");
    busIf.addJumper("j1", true);
    busIf.addParam("use_ddr", false);
    busIf.addParameter(new HBOParameter("rate", "1600", "int", "", "", "true"));
    addMapped(busIf, "DQ", "ddr_dq", {{"0", "A1"}, {"1", "A2"}});
    addMapped(busIf, "CLK", "ddr_clk");
}

std::string vlnvOf(const HBOBusIf& busIf, const char* separator) {
    std::string vlnv;
    EXPECT_TRUE(busIf.getAbstractTypeVLNV(vlnv, separator));
    return vlnv;
}

}  // namespace

TEST(InterfacesBusIf, LogicalPortLookupIgnoresCase) {
    HBOBusIf busIf;
    busIf.setName("clk");
    busIf.populatePortMap(new HBOPortMap("clk_p", "sys_clk_p"));
    busIf.populatePortMap(new HBOPortMap("CLK_P", "second"));
    busIf.populatePortMap(new HBOPortMap("clk_n", "sys_clk_n"));
    std::string out;
    EXPECT_TRUE(busIf.getPPortByLPort("CLK_P", out));
    EXPECT_EQ("sys_clk_p", out);  // first of the two in file order
    EXPECT_TRUE(busIf.getPPortByLPort("Clk_N", out));
    EXPECT_EQ("sys_clk_n", out);
    out = "kept";
    EXPECT_FALSE(busIf.getPPortByLPort("clk", out));
    EXPECT_FALSE(busIf.getPPortByLPort("", out));
    EXPECT_EQ("kept", out);
    Names physical{"x"};
    busIf.getPhysicalPortSeq(physical);
    EXPECT_EQ((Names{"x", "sys_clk_p", "second", "sys_clk_n"}), physical);
    std::vector<HBOPortMap*> maps{nullptr};
    busIf.getPortMapSeq(maps);
    EXPECT_EQ(3u, maps.size());
}

TEST(InterfacesBusIf, ParameterValuesIgnoreCaseOnLookupOnly) {
    HBOBusIf busIf;
    std::string out = "kept";
    EXPECT_FALSE(busIf.getParamValue("frequency", out));  // empty map
    EXPECT_FALSE(busIf.setParam("", "1"));
    EXPECT_TRUE(busIf.setParam("FREQ_HZ", "100"));
    EXPECT_TRUE(busIf.setParam("freq_hz", "200"));  // a second entry: keys keep their case
    EXPECT_EQ(2u, busIf.getParamList().size());
    // The first key in byte order wins: "FREQ_HZ" < "freq_hz".
    EXPECT_TRUE(busIf.getParamValue("Freq_Hz", out));
    EXPECT_EQ("100", out);
    EXPECT_FALSE(busIf.getParamValue("", out));
    EXPECT_FALSE(busIf.getParamValue("freq", out));
    busIf.setParam("FREQ_HZ", "300");
    StrMap list;
    busIf.getParamList(list);
    EXPECT_EQ("300", list["FREQ_HZ"]);
}

// The interface frees a replaced port and both preferences, once each (the
// sanitizer run checks it).
TEST(InterfacesBusIf, PortsAreKeyedByTheirNameAndPreferencesAppend) {
    HBOBusIf busIf;
    busIf.setName("ddr");
    HBOModelPort* first = addMapped(busIf, "DQ", "ddr_dq");
    HBOModelPort* again = new HBOModelPort();
    again->setName("ddr_dq");
    busIf.addPort(again);
    busIf.addPort(nullptr);
    ASSERT_EQ(1u, busIf.getPortMaps().size());
    EXPECT_EQ(again, busIf.getPortMaps().at("ddr_dq"));
    EXPECT_NE(first, again);
    HBOBusIfPreference* chosen = new HBOBusIfPreference();
    HBOBusIfPreference* other = new HBOBusIfPreference();
    EXPECT_TRUE(busIf.setPreference(chosen));
    EXPECT_TRUE(busIf.setPreferences(chosen));
    EXPECT_TRUE(busIf.setPreferences(other));
    EXPECT_EQ(chosen, busIf.getPreference());
    EXPECT_EQ((std::vector<HBOBusIfPreference*>{chosen, other}), busIf.getPreferences());
}

TEST(InterfacesBusIf, RebaseCopyPrefixesNamesAndReferences) {
    HBOBoard board;
    HBOBoardComponent* owner = addComponent(board, "fmc0_mem", "");
    HBOBusIf source;
    fillDdr(source);
    source.setPreference(new HBOBusIfPreference());
    source.setPreferences(source.getPreference());
    EXPECT_EQ("korvelhw/interface/ddrx_rtl/1.0", vlnvOf(source, "/"));
    HBOBusIf* copy = new HBOBusIf(source, owner, "fmc0");
    owner->setBusIf(copy->getName(), copy);  // the component frees it
    EXPECT_EQ((Names{"fmc0_ddr", "DDR memory (fmc0)", "fmc0_ddr_preset", "fmc0_mem", "false",
                     "korvelhw:interface:ddrx_rtl:1.0"}),  // the of-component is lower-cased
              (Names{copy->getName(), copy->getDisplayName(), copy->getPresetProcName(), copy->getOfComponent(),
                     copy->getIsEnabled(), vlnvOf(*copy, ":")}));
    EXPECT_EQ(owner, copy->getOwnerComponent());
    EXPECT_EQ(&board, copy->getParentBoard());
    EXPECT_EQ(nullptr, copy->getPreference());
    EXPECT_TRUE(copy->getPreferences().empty());
    EXPECT_EQ((std::map<std::string, bool>{{"fmc0_j1", true}}), copy->getJumpers());
    EXPECT_EQ((std::map<std::string, bool>{{"fmc0_use_ddr", false}}), copy->getParams());
    EXPECT_EQ(source.getParamList(), copy->getParamList());  // values are not renamed
    ASSERT_EQ(1u, copy->getParameters().size());
    EXPECT_NE(source.getParameters()[0], copy->getParameters()[0]);
    EXPECT_EQ("fmc0_rate", copy->getParameters()[0]->getName());
    ASSERT_EQ(2u, copy->getPortMapSeq().size());
    EXPECT_EQ("DQ", copy->getPortMapSeq()[0]->getLogicalPort());
    EXPECT_EQ("fmc0_ddr_dq", copy->getPortMapSeq()[0]->getPhysicalPort());
    ASSERT_EQ(2u, copy->getPortMaps().size());
    EXPECT_TRUE(copy->getPortMaps().count("fmc0_ddr_clk"));
    HBOModelPort* port = copy->getPortMaps().at("fmc0_ddr_dq");
    HBOModelPort* original = source.getPortMaps().at("ddr_dq");
    EXPECT_NE(original, port);
    EXPECT_EQ(copy, port->getOwner());
    EXPECT_EQ("fmc0_ddr", port->getOwnerBusIf());
    EXPECT_EQ("DQ", port->getBusIfLogicalPortName());
    EXPECT_EQ(original->getPinPortMap(), port->getPinPortMap());
    int width = 0;
    port->getPortWidth(width);
    EXPECT_EQ(2, width);

    // Without a prefix the names, and the of-component's case, are kept; no owner is fine.
    HBOBusIf same(source, nullptr, "");
    EXPECT_EQ((Names{"ddr", "DDR memory", "ddr_preset", "MEM", "rate", "ddr"}),
              (Names{same.getName(), same.getDisplayName(), same.getPresetProcName(), same.getOfComponent(),
                     same.getParameters()[0]->getName(), same.getPortMaps().at("ddr_dq")->getOwnerBusIf()}));
    EXPECT_EQ(nullptr, same.getOwnerComponent());
}

TEST(InterfacesBusIf, UpdatePortPinMapReachesEveryPort) {
    HBOBusIf busIf;
    busIf.setName("ddr");
    HBOModelPort* dq = addMapped(busIf, "DQ", "ddr_dq", {{"0", "A1"}, {"1", "C3"}});
    HBOModelPort* clk = addMapped(busIf, "CLK", "ddr_clk", {{"0", "A1"}});
    busIf.updatePortPinMap({{"A1", "B7"}});
    EXPECT_EQ((StrMap{{"0", "B7"}, {"1", "C3"}}), dq->getPinPortMap());
    EXPECT_EQ("B7", clk->getPinPort("0"));
}

TEST(InterfacesBusIf, PinsOfAllPortsAccumulateOnSchemaTwoOnly) {
    for (const std::string schema : {"2.0", "1.0"}) {
        SCOPED_TRACE(schema);
        HBOBoard board;
        board.setBoardSchemaVersion(schema);
        HBOBoardComponent* component = addComponent(board, "fpga", "");
        for (int i = 0; i < 4; ++i)
            component->addPin(makePin("P" + std::to_string(i), i));
        HBOBusIf* busIf = addInterface(component, "ddr", "");
        addMapped(*busIf, "A", "a_port", {{"0", "P0"}, {"1", "P1"}})->populatePinProps();
        addMapped(*busIf, "B", "b_port", {{"0", "P3"}})->populatePinProps();
        addMapped(*busIf, "C", "c_port");  // no pins of either kind
        std::vector<HBOPinProps*> out;
        EXPECT_TRUE(busIf->getPortMapPinPropsSeq(out));
        if (schema == "2.0")
            EXPECT_EQ((Names{"P0", "P1", "P3"}), namesOf(out));
        else  // each port replaces the sequence; the last one with pins remains
            EXPECT_EQ((Names{"b_port"}), namesOf(out));
    }
}

TEST(InterfacesBusIf, DisplayFormat) {
    HBOBusIf busIf;
    fillDdr(busIf);
    EXPECT_EQ("-Interface - name:ddr, mode:master, vlnv:korvelhw:interface:ddrx_rtl:1.0, prefferred IP:TBD, "
              "of_component:MEM preset_proc:ddr_preset\n"
              "----Ports:\n"
              "--Port - name:CLK, physical_name:ddr_clk, direction:, start:-1, stop:-1, width:1 \n"
              "--Port - name:DQ, physical_name:ddr_dq, direction:, start:1, stop:0, width:2 \n"
              "------pin_index:0 -- fpga_pin:A1\n"
              "------pin_index:1 -- fpga_pin:A2\n",
              stderrOf([&] { busIf.display(1); }));
}

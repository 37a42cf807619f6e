// Pins of a component: the property record, and the name map / index table pair.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ComMsgMgr.h"
#include "HBOBoardComponent.h"
#include "HBOModelPort.h"
#include "HBOPinProps.h"

namespace {

HBOPinProps* makePin(const std::string& name, int index) {
    HBOPinProps* p = new HBOPinProps();
    p->setName(name);
    p->setPinIndex(index);
    return p;
}

// Collects the lines of one debug channel while alive.
struct ChannelRecorder {
    explicit ChannelRecorder(const std::string& channel) : m_channel(channel) {
        ComMsgMgr::enableScope(channel, true);
        m_handle = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) {
            if (m.getChannel() == m_channel && !m.getArgs().empty())
                lines.push_back(m.getArgs()[0]);
        });
    }
    ~ChannelRecorder() {
        ComMsgMgr::removeListener(m_handle);
        ComMsgMgr::enableScope(m_channel, false);
    }
    std::string m_channel;
    int m_handle = 0;
    std::vector<std::string> lines;
};

}  // namespace

TEST(ComponentPinProps, PortPropertiesFoldNamesAndGrowOnRead) {
    HBOPinProps pin;
    pin.setPortProp("DRIVE", "12");
    EXPECT_EQ("12", pin.getPortProp("drive"));
    EXPECT_EQ("12", pin.getPortProp("Drive"));
    EXPECT_EQ("12", pin.getPinDrive());
    std::string out;
    EXPECT_TRUE(pin.getPinDrive(out));
    EXPECT_EQ("12", out);

    EXPECT_EQ(1u, pin.getPortProps().size());
    EXPECT_EQ("", pin.getPortProp("VOH"));
    // The read left an empty entry behind, under the folded name.
    auto props = pin.getPortProps();
    ASSERT_EQ(2u, props.size());
    EXPECT_EQ(1u, props.count("voh"));

    pin.setPinIOStandard("LVCMOS18");
    pin.setPinSlew("FAST");
    pin.setPinOdt("RTT_40");
    EXPECT_EQ("LVCMOS18", pin.getPortProp("iostandard"));
    EXPECT_EQ("FAST", pin.getPortProp("slew"));
    EXPECT_EQ("RTT_40", pin.getPinOdt());
}

TEST(ComponentPinProps, StoredValuesStayPutAsThePinGrows) {
    HBOPinProps pin;
    const std::string& drive = pin.getPortProp("drive");  // created empty by the read
    pin.setPinDrive("8");
    // Past the few properties a pin holds in itself, and names outside the known list.
    const char* const more[] = {"slew", "iostandard", "odt", "voh", "pull_type", "x_custom", "diff_term"};
    for (const char* name : more)
        pin.setPortProp(name, std::string(name) + "_v");
    const std::string& custom = pin.getPortProp("X_CUSTOM");
    pin.setPortProp("pcb_max_delay", "4");
    pin.setPortProp("DRIVE", "16");
    EXPECT_EQ("16", drive);
    EXPECT_EQ("x_custom_v", custom);
    EXPECT_EQ("diff_term_v", pin.getPinDiffTerm());

    const auto props = pin.getPortProps();
    ASSERT_EQ(9u, props.size());
    EXPECT_EQ("diff_term", props.begin()->first);  // a map: by name, wherever stored
    EXPECT_EQ("4", props.at("pcb_max_delay"));

    EXPECT_EQ(nullptr, pin.findPortProp("equalization"));
    EXPECT_EQ(9u, pin.getPortProps().size());  // looking did not create it
    ASSERT_NE(nullptr, pin.findPortProp("slew"));
    EXPECT_EQ("slew_v", *pin.findPortProp("slew"));

    // A copy has values of its own.
    HBOPinProps copy(pin);
    copy.setPinSlew("FAST");
    EXPECT_EQ("slew_v", pin.getPinSlew());
    EXPECT_EQ(pin.getPortProps().size(), copy.getPortProps().size());
}

TEST(ComponentPinProps, SetPropFillsInOneStep) {
    HBOPinProps pin;
    pin.setPortProp("pull_type", "up");
    pin.setProp(3, nullptr, "d[3]", "b12", "TRUE", "8", "LVDS", "SLOW", "", "", "", "", "", "");
    EXPECT_EQ("B12", pin.getPinLoc());
    EXPECT_EQ("d[3]", pin.getName());
    EXPECT_EQ(3, pin.getPinIndex());
    EXPECT_EQ("TRUE", pin.getPinDiffTerm());
    EXPECT_EQ("LVDS", pin.getPinIOStandard());
    EXPECT_EQ("up", pin.getPortProp("pull_type"));
    // Empty values are stored as entries too: ten named ones plus the earlier one.
    EXPECT_EQ(11u, pin.getPortProps().size());
    HBOModelPort* out = nullptr;
    EXPECT_FALSE(pin.getOwnerPort(out));
    HBOModelPort port;
    pin.setOwnerPort(&port);
    EXPECT_TRUE(pin.getOwnerPort(out));
    EXPECT_EQ(&port, out);
}

TEST(ComponentPinProps, IOBankAndInterfaceMaps) {
    HBOPinProps pin;
    EXPECT_EQ("", pin.getIOBankPropertyValue("vref"));
    EXPECT_FALSE(pin.setIOBankProperty("", "x"));
    EXPECT_TRUE(pin.setIOBankProperty("Vref", "0.9"));
    EXPECT_EQ("0.9", pin.getIOBankPropertyValue("VREF"));
    EXPECT_EQ("", pin.getIOBankPropertyValue(""));
    EXPECT_EQ("", pin.getIOBankPropertyValue("vcc"));

    pin.addIntfPortMap("ddr4", "dq");
    pin.addIntfPortMap("ddr4", "dqs");
    EXPECT_EQ("dqs", pin.getPortForInterface("ddr4"));
    EXPECT_EQ("", pin.getPortForInterface("DDR4"));
    pin.addPartOf({{"group", "g1"}});
    EXPECT_EQ(1u, pin.getPartOf().size());
}

TEST(ComponentPinProps, CopyIOPropertiesTakesOnlyWhatTheOtherKnows) {
    HBOPinProps mine;
    mine.setName("fpga_a1");
    mine.setPinIndex(7);
    mine.setPinLoc("A1");
    mine.setPinDrive("12");
    mine.setPinSlew("SLOW");
    mine.setPinInternalVref("0.6");
    mine.setIOBankProperty("vref", "0.6");
    mine.addIntfPortMap("led", "0");

    HBOPinProps theirs;
    theirs.setName("d_5");
    theirs.setPinIndex(5);
    theirs.setPinDrive("");
    theirs.setPinSlew("FAST");
    theirs.setPinIOStandard("LVCMOS33");
    theirs.setGtLoc("GTX0");
    theirs.setIOBankProperty("vcco", "3.3");

    mine.copyIOPropertiesFrom(theirs);
    EXPECT_EQ("A1", mine.getPinLoc());
    EXPECT_EQ("12", mine.getPinDrive());
    EXPECT_EQ("FAST", mine.getPinSlew());
    EXPECT_EQ("LVCMOS33", mine.getPinIOStandard());
    EXPECT_EQ("0.6", mine.getPinInternalVref());
    EXPECT_EQ("GTX0", mine.getGtLoc());
    EXPECT_EQ("0.6", mine.getIOBankPropertyValue("vref"));
    EXPECT_EQ("3.3", mine.getIOBankPropertyValue("vcco"));
    EXPECT_EQ("fpga_a1", mine.getName());
    EXPECT_EQ(7, mine.getPinIndex());
    EXPECT_EQ("0", mine.getPortForInterface("led"));

    theirs.setPinLoc("C9");
    mine.copyIOPropertiesFrom(theirs);
    EXPECT_EQ("C9", mine.getPinLoc());
}

TEST(ComponentPinProps, DisplayPutsLabelledKeysFirst) {
    HBOPinProps pin;
    pin.setName("clk_p");
    pin.setPinIndex(4);
    pin.setPinIOStandard("LVDS");
    pin.setPinDrive("8");
    pin.setPortProp("pull_type", "none");
    pin.setIOBankProperty("vref", "0.9");
    testing::internal::CaptureStderr();
    pin.display(0);
    std::string text = testing::internal::GetCapturedStderr();
    EXPECT_EQ("Pin - index:4, name:clk_p, iostd:LVDS, drive:8, pull_type:none, iobank.vref:0.9\n", text);

    pin.setPinLoc("E3");
    pin.setPinSlew("FAST");
    testing::internal::CaptureStderr();
    pin.display(2);
    text = testing::internal::GetCapturedStderr();
    EXPECT_EQ("Pin - index:4, name:clk_p, iostd:LVDS, loc:E3, drive:8, slew:FAST, pull_type:none, iobank.vref:0.9\n",
              text);
}

TEST(ComponentPins, TableAndMapStayConsistent) {
    HBOBoardComponent c;
    HBOPinProps* a = makePin("A", 3);
    EXPECT_TRUE(c.addPin(a));
    EXPECT_FALSE(c.addPin(nullptr));
    EXPECT_EQ(a, c.findPin("A"));
    EXPECT_EQ(nullptr, c.findPin("a"));
    EXPECT_EQ(3, c.findPinIndex("A"));
    EXPECT_EQ(-1, c.findPinIndex("B"));
    EXPECT_EQ(a, c.getPinByIndex(3));
    EXPECT_EQ(nullptr, c.getPinByIndex(4));

    // Same name, new index: the old pin goes, and so does its table slot.
    HBOPinProps* a2 = makePin("A", 9);
    c.addPin(a2);
    EXPECT_EQ(nullptr, c.getPinByIndex(3));
    EXPECT_EQ(a2, c.getPinByIndex(9));
    EXPECT_EQ(a2, c.findPin("A"));
    EXPECT_EQ(1u, c.getPins().size());

    // Same index, new name: the older pin stays in the map and loses its slot.
    HBOPinProps* b = makePin("B", 9);
    c.addPin(b);
    EXPECT_EQ(b, c.getPinByIndex(9));
    EXPECT_EQ(a2, c.findPin("A"));
    EXPECT_EQ(2u, c.getPins().size());

    // Adding the same object again changes nothing.
    c.addPin(b);
    EXPECT_EQ(b, c.findPin("B"));
    EXPECT_EQ(2u, c.getPins().size());

    std::vector<HBOPinProps*> all;
    c.getPinsVec(all);
    ASSERT_EQ(2u, all.size());
    EXPECT_EQ(a2, all[0]);
    EXPECT_EQ(b, all[1]);
}

TEST(ComponentPins, IndicesBeyondTheTableLiveOnlyInTheMap) {
    HBOBoardComponent c;
    HBOPinProps* p400 = makePin("P400", 400);
    HBOPinProps* p401 = makePin("P401", 401);
    HBOPinProps* neg = makePin("NEG", -1);
    HBOPinProps* z401 = makePin("Z401", 401);
    c.addPin(z401);
    c.addPin(p400);
    c.addPin(p401);
    c.addPin(neg);
    EXPECT_EQ(p400, c.getPinByIndex(400));
    // Walk in key order: "P401" comes before "Z401".
    EXPECT_EQ(p401, c.getPinByIndex(401));
    EXPECT_EQ(neg, c.getPinByIndex(-1));
    EXPECT_EQ(nullptr, c.getPinByIndex(402));

    // A table slot answers even when the map would have a pin of that index elsewhere.
    p400->setPinIndex(5);
    EXPECT_EQ(p400, c.getPinByIndex(400));
    EXPECT_EQ(nullptr, c.getPinByIndex(5));

    // Replacing the renumbered pin by name leaves no slot behind.
    c.addPin(makePin("P400", 7));
    EXPECT_EQ(nullptr, c.getPinByIndex(400));
}

TEST(ComponentPins, ClashTextGoesToTheDebugChannel) {
    HBOBoardComponent c;
    c.setName("v:b:part0:1.0");
    c.addPin(makePin("A", 1));
    ChannelRecorder rec("board.pins");
    c.addPin(makePin("B", 2));
    EXPECT_TRUE(rec.lines.empty());

    c.addPin(makePin("C", 1));
    ASSERT_EQ(1u, rec.lines.size());
    EXPECT_EQ("Adding pin of index: 1 name: \"C\" to component: \"v:b:part0:1.0\".\n"
              "  A pin with the same index but a different name (\"A\") already exists.\n",
              rec.lines[0]);

    c.addPin(makePin("B", 1));
    ASSERT_EQ(2u, rec.lines.size());
    EXPECT_EQ("Adding pin of index: 1 name: \"B\" to component: \"v:b:part0:1.0\".\n"
              "  A pin with the same index but a different name (\"C\") already exists.\n"
              "  A pin with the same name but a different index (2) already exists.",
              rec.lines[1]);

    c.addPin(makePin("D", 500));
    c.addPin(makePin("D", 600));
    ASSERT_EQ(3u, rec.lines.size());
    EXPECT_NE(std::string::npos, rec.lines[2].find("same name but a different index (500)"));
    EXPECT_EQ(std::string::npos, rec.lines[2].find("same index"));
}

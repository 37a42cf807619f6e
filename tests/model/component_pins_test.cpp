// Pins of a component: the property record, and the name map / index table pair.

#include <cstdio>

#include "board_fixture.h"

using namespace board_fixture;

namespace {
Names keysOf(const HBOBoardComponent::PinMap& pins) {
    Names out;
    for (const auto& kv : pins)
        out.push_back(kv.first);
    return out;
}
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
    EXPECT_EQ((Names{"LVCMOS18", "FAST", "RTT_40"}),
              (Names{pin.getPortProp("iostandard"), pin.getPortProp("slew"), pin.getPinOdt()}));
}

TEST(ComponentPinProps, StoredValuesStayPutAsThePinGrows) {
    HBOPinProps pin;
    const std::string& drive = pin.getPortProp("drive");  // created empty by the read
    pin.setPinDrive("8");
    // Past the few properties a pin holds in itself, and names outside the known list.
    for (const char* name : {"slew", "iostandard", "odt", "voh", "pull_type", "x_custom", "diff_term"})
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
    EXPECT_EQ((Names{"B12", "d[3]", "TRUE", "LVDS", "up"}),
              (Names{pin.getPinLoc(), pin.getName(), pin.getPinDiffTerm(), pin.getPinIOStandard(),
                     pin.getPortProp("pull_type")}));
    EXPECT_EQ(3, pin.getPinIndex());
    // Empty values are stored as entries too: ten named ones plus the earlier one.
    EXPECT_EQ(11u, pin.getPortProps().size());
    HBOModelPort* out = nullptr;
    EXPECT_FALSE(pin.getOwnerPort(out));
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

    // A numbered entry of one interface lives in the pin; a second interface or an
    // index that is no plain number makes the map, which keeps the texts.
    typedef std::map<std::string, std::string> Ports;
    HBOPinProps one;
    one.addIntfPortMap("led", "3");
    one.addIntfPortMap("led", "14");
    EXPECT_EQ("14", one.getPortForInterface("led"));
    HBOPinProps copy(one);
    one.addIntfPortMap("uart", "07");
    EXPECT_EQ((Ports{{"led", "14"}, {"uart", "07"}}), one.getIntfPortMap());
    EXPECT_EQ("14", copy.getPortForInterface("led"));
    // A map handed out stays the pin's and follows assignments.
    const Ports& handed = copy.getIntfPortMap();
    EXPECT_EQ((Ports{{"led", "14"}}), handed);
    copy = HBOPinProps();
    EXPECT_TRUE(handed.empty());
    HBOPinProps numbered;
    numbered.addIntfPortMap("gpio", "12");
    copy = numbered;
    EXPECT_EQ((Ports{{"gpio", "12"}}), handed);
    EXPECT_EQ("12", copy.getPortForInterface("gpio"));
}

// The shared interface names are bounded: past the bound, pins of new names keep
// their entries themselves and answer as before.
TEST(ComponentPinProps, SharedInterfaceNamesStayBounded) {
    typedef std::map<std::string, std::string> Ports;
    HBOPinProps early;
    early.addIntfPortMap("bounded_early", "1");
    for (std::size_t i = 0; HBOPinProps::getSharedInterfaceNameCount() < HBOPinProps::kMaxSharedInterfaceNames; ++i) {
        HBOPinProps filler;
        filler.addIntfPortMap("bounded_fill_" + std::to_string(i), "0");
    }
    HBOPinProps late;
    late.addIntfPortMap("bounded_late", "5");
    late.addIntfPortMap("bounded_late", "6");
    EXPECT_EQ(HBOPinProps::kMaxSharedInterfaceNames, HBOPinProps::getSharedInterfaceNameCount());
    EXPECT_EQ("6", late.getPortForInterface("bounded_late"));
    EXPECT_EQ((Ports{{"bounded_late", "6"}}), late.getIntfPortMap());
    HBOPinProps copy(late);
    EXPECT_EQ("6", copy.getPortForInterface("bounded_late"));
    // A name held before the bound is still shared by any pin.
    HBOPinProps again;
    again.addIntfPortMap("bounded_early", "2");
    EXPECT_EQ(HBOPinProps::kMaxSharedInterfaceNames, HBOPinProps::getSharedInterfaceNameCount());
    EXPECT_EQ("2", again.getPortForInterface("bounded_early"));
    EXPECT_EQ("1", early.getPortForInterface("bounded_early"));
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
    EXPECT_EQ((Names{"A1", "12", "FAST", "LVCMOS33", "0.6", "GTX0", "0.6", "3.3", "fpga_a1", "0"}),
              (Names{mine.getPinLoc(), mine.getPinDrive(), mine.getPinSlew(), mine.getPinIOStandard(),
                     mine.getPinInternalVref(), mine.getGtLoc(), mine.getIOBankPropertyValue("vref"),
                     mine.getIOBankPropertyValue("vcco"), mine.getName(), mine.getPortForInterface("led")}));
    EXPECT_EQ(7, mine.getPinIndex());
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
    EXPECT_EQ("Pin - index:4, name:clk_p, iostd:LVDS, drive:8, pull_type:none, iobank.vref:0.9\n",
              stderrOf([&] { pin.display(0); }));
    pin.setPinLoc("E3");
    pin.setPinSlew("FAST");
    EXPECT_EQ("Pin - index:4, name:clk_p, iostd:LVDS, loc:E3, drive:8, slew:FAST, pull_type:none, iobank.vref:0.9\n",
              stderrOf([&] { pin.display(2); }));
}

TEST(ComponentPins, TableAndMapStayConsistent) {
    HBOBoardComponent c;
    EXPECT_EQ(nullptr, c.getPinByIndex(0));
    HBOPinProps* a = makePin("A", 3);
    EXPECT_TRUE(c.addPin(a));
    EXPECT_FALSE(c.addPin(nullptr));
    EXPECT_EQ(a, c.findPin("A"));
    EXPECT_EQ(nullptr, c.findPin("a"));
    EXPECT_EQ(3, c.findPinIndex("A"));
    EXPECT_EQ(-1, c.findPinIndex("B"));
    EXPECT_EQ(a, c.getPinByIndex(3));
    EXPECT_EQ(nullptr, c.getPinByIndex(4));
    EXPECT_EQ(nullptr, c.getPinByIndex(400));

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
    // Adding the same object again changes nothing.
    c.addPin(b);
    EXPECT_EQ(b, c.findPin("B"));
    // A far index widens the table; the slots below keep their pins.
    HBOPinProps* far = makePin("F", 399);
    c.addPin(far);
    EXPECT_EQ(far, c.getPinByIndex(399));
    EXPECT_EQ(b, c.getPinByIndex(9));
    EXPECT_EQ(nullptr, c.getPinByIndex(398));
    c.addPin(makePin("F", 1));
    EXPECT_EQ(nullptr, c.getPinByIndex(399));
    std::vector<HBOPinProps*> all;
    c.getPinsVec(all);
    EXPECT_EQ((std::vector<HBOPinProps*>{a2, b, c.findPin("F")}), all);
}

TEST(ComponentPins, IndicesBeyondTheTableLiveOnlyInTheMap) {
    HBOBoardComponent c;
    HBOPinProps* p400 = makePin("P400", 400);
    HBOPinProps* p401 = makePin("P401", 401);
    HBOPinProps* neg = makePin("NEG", -1);
    for (HBOPinProps* p : {makePin("Z401", 401), p400, p401, neg})
        c.addPin(p);
    EXPECT_EQ(p400, c.getPinByIndex(400));
    EXPECT_EQ(p401, c.getPinByIndex(401));  // walked in key order: "P401" before "Z401"
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

// Pins sit in a sorted list until the map is asked for or they come too far out
// of order; whichever form holds them, look-ups, replacement and order agree.
TEST(ComponentPins, AnyOrderOfAddingGivesTheSameMap) {
    auto names = [](const HBOBoardComponent::PinMap& map) {
        Names out;
        for (const auto& kv : map)
            out.push_back(kv.first + "=" + std::to_string(kv.second->getPinIndex()));
        return out;
    };
    for (const int count : {5, 300}) {
        HBOBoardComponent forward;
        HBOBoardComponent backward;
        HBOBoardComponent mapFirst;
        const HBOBoardComponent::PinMap& early = mapFirst.getPins();
        for (int i = 0; i < count; ++i) {
            char name[16];
            std::snprintf(name, sizeof name, "P%04d", i);
            forward.addPin(makePin(name, i));
            std::snprintf(name, sizeof name, "P%04d", count - 1 - i);
            backward.addPin(makePin(name, count - 1 - i));
            mapFirst.addPin(makePin(name, count - 1 - i));
        }
        // A later pin of one name replaces the earlier in every form.
        forward.addPin(makePin("P0002", 1000));
        backward.addPin(makePin("P0002", 1000));
        mapFirst.addPin(makePin("P0002", 1000));
        EXPECT_EQ(1000, forward.findPinIndex("P0002"));
        EXPECT_EQ(1000, backward.findPinIndex("P0002"));
        EXPECT_EQ(static_cast<std::size_t>(count), forward.getPinCount());
        EXPECT_EQ(static_cast<std::size_t>(count), backward.getPinCount());
        EXPECT_EQ(nullptr, backward.findPin("P"));
        std::vector<HBOPinProps*> vec;
        backward.getPinsVec(vec);
        ASSERT_EQ(static_cast<std::size_t>(count), vec.size());
        EXPECT_EQ("P0000", vec.front()->getName());
        EXPECT_EQ(backward.findPin("P0001"), vec[1]);
        const Names expected = names(forward.getPins());
        EXPECT_EQ(expected, names(backward.getPins()));
        // The reference taken before any pin came follows every addition.
        EXPECT_EQ(expected, names(early));
        // Once made, the map stays the one the getter returns and keeps up.
        forward.addPin(makePin("A", 3000));
        EXPECT_EQ(&forward.getPins(), &forward.getPins());
        EXPECT_EQ(forward.findPin("A"), forward.getPins().at("A"));
        EXPECT_EQ(static_cast<std::size_t>(count + 1), forward.getPinCount());
    }
}

// A pin stays under the name it was added with, whatever happens to it later.
TEST(ComponentPins, RenamedOrMovedPinsKeepTheirKey) {
    auto owned = [](HBOBoardComponent& c, const char* name, int index) {
        HBOPinProps* pin = makePin(name, index);
        pin->setOwner(&c);
        c.addPin(pin);
        return pin;
    };
    HBOBoardComponent c;
    HBOPinProps* a = owned(c, "A", 1);
    HBOPinProps* b = owned(c, "B", 2);
    owned(c, "C", 3);
    b->setName("A0");  // would sort before "A" by its new name
    EXPECT_EQ(b, c.findPin("B"));
    EXPECT_EQ(nullptr, c.findPin("A0"));
    EXPECT_EQ(a, c.findPin("A"));
    EXPECT_EQ((Names{"A", "B", "C"}), keysOf(c.getPins()));

    // Copies of a listed component list their own pins; renaming one of them
    // leaves the source alone.
    HBOBoardComponent source;
    owned(source, "P1", 1);
    HBOPinProps* p2 = owned(source, "P2", 2);
    HBOBoardComponent copy(source, nullptr, "");
    copy.findPin("P1")->setName("Z");
    EXPECT_EQ("Z", copy.findPin("P1")->getName());
    EXPECT_EQ("P1", source.findPin("P1")->getName());
    // Setting the same name or owner again changes nothing; a new owner does.
    p2->setName("P2");
    p2->setOwner(&source);
    EXPECT_EQ(p2, source.findPin("P2"));
    p2->setOwner(nullptr);
    p2->setName("Q");
    EXPECT_EQ(p2, source.findPin("P2"));
    p2->setOwner(&source);

    // A pin owned elsewhere (or by no one) is keyed by a copy of its name at once.
    HBOBoardComponent loose;
    HBOPinProps* l = makePin("L", 1);
    loose.addPin(l);
    l->setName("M");
    EXPECT_EQ(l, loose.findPin("L"));
    // Assigning a pin takes the other's name: the key stays.
    HBOBoardComponent assigned;
    HBOPinProps* x = owned(assigned, "X", 1);
    HBOPinProps other;
    other.setName("Y");
    other.setOwner(&assigned);
    *x = other;
    EXPECT_EQ(x, assigned.findPin("X"));
    EXPECT_EQ("Y", assigned.findPin("X")->getName());
}

TEST(ComponentPins, ClashTextGoesToTheDebugChannel) {
    HBOBoardComponent c;
    c.setName("v:b:part0:1.0");
    c.addPin(makePin("A", 1));
    MessageRecorder rec("board.pins");
    c.addPin(makePin("B", 2));
    EXPECT_TRUE(rec.channelLines().empty());
    c.addPin(makePin("C", 1));
    c.addPin(makePin("B", 1));
    c.addPin(makePin("D", 500));
    c.addPin(makePin("D", 600));
    const Names lines = rec.channelLines();
    ASSERT_EQ(3u, lines.size());
    EXPECT_EQ("Adding pin of index: 1 name: \"C\" to component: \"v:b:part0:1.0\".\n"
              "  A pin with the same index but a different name (\"A\") already exists.\n",
              lines[0]);
    EXPECT_EQ("Adding pin of index: 1 name: \"B\" to component: \"v:b:part0:1.0\".\n"
              "  A pin with the same index but a different name (\"C\") already exists.\n"
              "  A pin with the same name but a different index (2) already exists.",
              lines[1]);
    EXPECT_NE(std::string::npos, lines[2].find("same name but a different index (500)"));
    EXPECT_EQ(std::string::npos, lines[2].find("same index"));
}

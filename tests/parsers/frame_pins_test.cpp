// The pin file of a component: where it is looked for, pins and their
// properties, the uniqueness rules, and the design constraints.
#include "parser_fixture.h"

#include <boost/variant/get.hpp>

#include "HBOBoardComponent.h"
#include "HBOPinProps.h"

namespace {

std::string pinsXml(const std::string& pins, const std::string& rootAttrs = "part_name=\"xc-test\"",
                    const std::string& constrs = "") {
    return "<?xml version=\"1.0\"?>\n<part_info " + rootAttrs + ">\n" + constrs + "<pins>\n" + pins +
           "</pins>\n</part_info>\n";
}

std::string constrsXml(const std::string& body) {
    return pinsXml("", "", "<design_constrs>" + body + "</design_constrs>");
}

std::string fpga(const std::string& pinMapFile = "part0_pins.xml") {
    return "<components><component name=\"part0\" type=\"fpga\" part_name=\"xc-test\" pin_map_file=\"" + pinMapFile +
           "\"/></components>";
}

}  // namespace

class PinFixture : public ParserFixture {
protected:
    Parsed readWith(const std::string& pinsFile, const std::string& schema = "2.1") {
        write("pb/part0_pins.xml", pinsFile);
        return parse(write("pb/board.xml", boardXml(basics() + fpga(), "", schema)));
    }
    HBOBoardComponent* part0() { return board().findBoardComponent("part0"); }
    std::string pinFile() const { return dir() + "/pb/part0_pins.xml"; }
};

TEST_F(PinFixture, PinsWithPropertiesAndBankProperties) {
    ASSERT_TRUE(readWith(pinsXml(
        "<pin index=\"0\" name=\"CLK_P\" loc=\"A1\" iostandard=\"LVDS\" slew=\"FAST\" iobank.vref=\"0.75\" "
        "iobank.Other=\"x\" unknown=\"u\"/>\n<PIN index=\"1\" name=\"CLK_N\" loc=\"A2\"/>\n")).ok);
    ASSERT_EQ(part0()->getPins().size(), 2u);
    HBOPinProps* p = part0()->findPin("CLK_P");
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->getPinIndex(), 0);
    EXPECT_EQ((Strings{p->getPinLoc(), p->getPortProp("iostandard"), p->getPortProp("slew")}),
              (Strings{"A1", "LVDS", "FAST"}));
    EXPECT_EQ(p->getIOBankPropertyList(), (std::map<std::string, std::string>{{"vref", "0.75"}, {"Other", "x"}}));
    EXPECT_EQ(p->getOwner(), part0());
    EXPECT_EQ(part0()->getPinByIndex(1), part0()->findPin("CLK_N"));
}

TEST_F(PinFixture, MissingIndexAndLocationAreDeferredButPinsKept) {
    setParam("board.validateXML", "true");
    EXPECT_FALSE(readWith(pinsXml("<pin name=\"NOIDX\" loc=\"B1\"/>\n<pin index=\"4\" name=\"NOLOC\"/>\n")).ok);
    EXPECT_EQ(argsOf("49-98"), (Args{{pinFile(), "NOIDX"}}));
    EXPECT_EQ(checkTexts(), Strings{"Location constraints are not provided for 'NOLOC'."});
    EXPECT_EQ(part0()->getPins().size(), 2u);
    EXPECT_EQ(part0()->findPin("NOIDX")->getPinIndex(), 0);
}

// Repeated indices and locations are faults only with the later checks; a
// repeated name always keeps the later pin.
TEST_F(PinFixture, UniquenessRulesDependOnLaterChecks) {
    setParam("board.validateXML", "true");
    const std::string pins = pinsXml("<pin index=\"1\" name=\"A\" loc=\"L1\"/><pin index=\"1\" name=\"B\" loc=\"L1\"/>"
                                     "<pin index=\"2\" name=\"A\" loc=\"L2\"/>");
    EXPECT_TRUE(readWith(pins, "2.1").ok);
    EXPECT_TRUE(checkTexts().empty());
    EXPECT_EQ(part0()->getPins().size(), 2u);
    EXPECT_EQ(part0()->findPin("A")->getPinLoc(), "L2");
    clearMessages();
    EXPECT_FALSE(readWith(pins, "2.2").ok);
    EXPECT_EQ(checkTexts(),
              (Strings{"The pin index '1' is used for both 'A' and for 'B'. Pin index must be unique.",
                       "The pin index '1' and '1' both have the same  loc value 'L1'. Pin locations must be unique."}));
}

// The pins reach the component in name order, whatever the file's order: of two
// names with one index the one later by name holds the index. Index clashes are
// found for any index, not only small ones, across sections of one file.
TEST_F(PinFixture, PinsReachTheComponentByNameAcrossSections) {
    EXPECT_TRUE(readWith("<?xml version=\"1.0\"?>\n<part_info>\n<pins>\n"
                         "<pin index=\"3\" name=\"Z\" loc=\"L1\"/>\n<pin index=\"3\" name=\"B\" loc=\"L2\"/>\n"
                         "<pin index=\"5000\" name=\"FAR\" loc=\"L3\"/>\n<pin index=\"-2\" name=\"NEG\" loc=\"L4\"/>\n"
                         "</pins>\n<pins>\n<pin index=\"5000\" name=\"FAR2\" loc=\"L5\"/>\n"
                         "<pin index=\"-2\" name=\"NEG2\" loc=\"L6\"/>\n<pin index=\"7\" name=\"Z\" loc=\"L7\"/>\n"
                         "</pins>\n</part_info>\n", "2.1").ok);
    EXPECT_EQ(part0()->getPins().size(), 6u);
    EXPECT_EQ(part0()->getPinByIndex(3), part0()->findPin("B"));  // Z moved to 7 in the second section
    EXPECT_EQ(part0()->findPin("Z")->getPinLoc(), "L7");
    EXPECT_EQ(part0()->getPinByIndex(7), part0()->findPin("Z"));
    const std::string clash = pinsXml(
        "<pin index=\"3\" name=\"Z\" loc=\"L1\"/>\n<pin index=\"3\" name=\"B\" loc=\"L2\"/>\n"
        "<pin index=\"5000\" name=\"FAR\" loc=\"L3\"/>\n<pin index=\"5000\" name=\"FAR2\" loc=\"L5\"/>\n");
    EXPECT_TRUE(readWith(clash, "2.1").ok);
    EXPECT_EQ(part0()->getPinByIndex(3), part0()->findPin("Z"));
    clearMessages();
    setParam("board.validateXML", "true");
    EXPECT_FALSE(readWith(clash, "2.2").ok);
    EXPECT_EQ(checkTexts(),
              (Strings{"The pin index '3' is used for both 'Z' and for 'B'. Pin index must be unique.",
                       "The pin index '5000' is used for both 'FAR' and for 'FAR2'. Pin index must be unique."}));
}

TEST_F(PinFixture, PartNameMismatchNeedsLaterChecksAndReporting) {
    const std::string pins = pinsXml("<pin index=\"0\" name=\"A\" loc=\"L1\"/>\n", "part_name=\"xc-other\"");
    setParam("board.validateXML", "true");
    EXPECT_TRUE(readWith(pins, "2.1").ok);
    EXPECT_EQ(count("49-147"), 0);
    EXPECT_FALSE(readWith(pins, "2.2").ok);
    EXPECT_EQ(argsOf("49-147"), (Args{{"xc-other", pinFile(), "xc-test"}}));
    clearMessages();
    EXPECT_TRUE(readWith(pinsXml("<pin index=\"0\" name=\"A\" loc=\"L1\"/>\n", ""), "2.2").ok);
    EXPECT_EQ(count("49-147"), 0);
}

TEST_F(PinFixture, PinFileMissingBrokenOrElsewhere) {
    ASSERT_TRUE(read("np/board.xml", fpga("absent_pins.xml")).ok);
    EXPECT_EQ(ids(), Strings{"49-55"});
    EXPECT_EQ(arg("49-55", 0), dir() + "/np/absent_pins.xml");
    ASSERT_NE(part0(), nullptr);
    EXPECT_TRUE(part0()->getPins().empty());
    const std::string abs = write("other/pins.xml", pinsXml("<pin index=\"3\" name=\"Z\" loc=\"Z9\"/>\n"));
    ASSERT_TRUE(read("np/board2.xml", fpga(abs)).ok);
    EXPECT_NE(part0()->findPin("Z"), nullptr);
    clearMessages();
    EXPECT_FALSE(readWith("<part_info><pins><pin index=\"0\"></pins>").ok);
    EXPECT_EQ(ids(), (Strings{"49-111", "49-57", "49-56"}));
    EXPECT_EQ(arg("49-57", 0), pinFile());
}

TEST_F(PinFixture, DesignConstraintsInDocumentOrderAndBadOnesDropped) {
    ASSERT_TRUE(readWith(pinsXml("", "", "<design_constrs part_name=\"xc-test\">"
                                         "<internal_vref bank_id=\"65\" voltage=\"0.75\"/>"
                                         "<DCI_CASCADE master_bank_id=\"64\" slave_bank_ids=\"65, 66\"/>"
                                         "</design_constrs>")).ok);
    const HBOBoardComponent::DesignConstrs& c = part0()->getDesignConstrs();
    ASSERT_EQ(c.size(), 2u);
    const auto* vref = boost::get<HBOBoardComponent::InternalVrefConstr>(&c[0]);
    const auto* dci = boost::get<HBOBoardComponent::DciCascadeConstr>(&c[1]);
    ASSERT_TRUE(vref && dci);
    EXPECT_EQ(vref->bank, 65);
    EXPECT_FLOAT_EQ(vref->voltage, 0.75f);
    EXPECT_EQ(dci->masterBank, 64);
    EXPECT_EQ(dci->slaveBanks, (std::vector<int>{65, 66}));
    setParam("board.validateXML", "true");
    clearMessages();
    EXPECT_FALSE(readWith(constrsXml("<dci_cascade master_bank_id=\"1\"/>"
                                     "<dci_cascade master_bank_id=\"1\" slave_bank_ids=\"1,,2\"/>"
                                     "<internal_vref bank_id=\"2\"/><internal_vref bank_id=\"2\" voltage=\"high\"/>"
                                     "<internal_vref bank_id=\"3\" voltage=\"1.2\"/>")).ok);
    EXPECT_EQ(checkTexts(),
              (Strings{"No \"slaves_ids\" attribute specified for dci_cascade.",
                       "Incorrect format for \"slave_ids\" attribute (\"1,,2\") in dci_cascade. The \"slave_ids\" "
                       "attribute must be a comma-separated list of integer bank IDs.",
                       "Incorrect format for \"voltage\" attribute (\"\") in internal_vref. Must be a floating point "
                       "number.",
                       "Incorrect format for \"voltage\" attribute (\"high\") in internal_vref. Must be a floating "
                       "point number."}));
    EXPECT_EQ(part0()->getDesignConstrs().size(), 1u);
    clearMessages();
    EXPECT_FALSE(readWith(constrsXml("<dci_cascade master_bank_id=\"-1\" slave_bank_ids=\"2\"/>")).ok);
    EXPECT_EQ(checkTexts(),
              Strings{"dci_cascade master attribute value \"-1\" is not valid, must be a non-negative integer."});
}

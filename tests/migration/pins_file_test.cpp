// The pins file model: what a read keeps and where it stops, the list
// operations, and the exact bytes it writes.
#include "migration_fixture.h"

#include <memory>
#include <sstream>

#include "HBMPin.h"
#include "HBMPinsFile.h"

namespace {

using Strings = std::vector<std::string>;

std::string pinsXml(const std::string& pins, const std::string& rootAttrs = "part_name=\"zx-part\"") {
    return "<part_info " + rootAttrs + "><pins>" + pins + "</pins></part_info>";
}

// Each pin as "name/index/loc".
Strings listed(const HBMPinsFile& file) {
    Strings out;
    for (const HBMPin* p : file.getAllPins())
        out.push_back(p->getName() + "/" + p->getIndex() + "/" + p->getLOC());
    return out;
}

struct ReadCase {
    const char* what;
    std::string xml;
    bool result;
    Strings pins;
};

}  // namespace

class PinsFile : public MigrationFixture {};

TEST_F(PinsFile, ReadStopsSilentlyAtTheFirstBadPinAndKeepsTheEarlierOnes) {
    const std::vector<ReadCase> cases = {
        {"first pin without index", pinsXml("<pin name=\"a\" loc=\"A1\"/><pin index=\"1\" name=\"b\" loc=\"B1\"/>"),
         false, {}},
        {"empty loc", pinsXml("<pin index=\"0\" name=\"a\" loc=\"A1\"/><pin index=\"1\" name=\"b\" loc=\"\"/>"
                              "<pin index=\"2\" name=\"c\" loc=\"C1\"/>"),
         false, {"a/0/A1"}},
        {"missing loc", pinsXml("<pin index=\"0\" name=\"a\"/>"), false, {}},
        {"duplicate index", pinsXml("<pin index=\"4\" name=\"a\" loc=\"A1\"/><pin index=\"4\" name=\"b\" loc=\"B1\"/>"),
         false, {"a/4/A1"}},
        {"duplicate loc", pinsXml("<pin index=\"0\" name=\"a\" loc=\"A1\"/><pin index=\"1\" name=\"b\" loc=\"A1\"/>"),
         false, {"a/0/A1"}},
        {"duplicate name", pinsXml("<pin index=\"0\" name=\"a\" loc=\"A1\"/><pin index=\"1\" name=\"a\" loc=\"B1\"/>"),
         true, {"a/0/A1", "a/1/B1"}},
        {"empty index is an index", pinsXml("<pin index=\"\" name=\"a\" loc=\"A1\"/>"), true, {"a//A1"}},
        {"index kept as text", pinsXml("<pin index=\"007\" name=\"a\" loc=\"A1\"/><pin index=\"7\" name=\"b\" loc=\"B1\"/>"),
         true, {"a/007/A1", "b/7/B1"}},
        {"tags in other case, pins of any tag",
         "<part_info><PINS><Pin index=\"0\" name=\"a\" loc=\"A1\"/><port index=\"1\" loc=\"B1\"/></PINS></part_info>",
         true, {"a/0/A1", "/1/B1"}},
        {"a repeat across two lists", pinsXml("<pin index=\"0\" name=\"a\" loc=\"A1\"/></pins><pins>"
                                              "<pin index=\"1\" name=\"b\" loc=\"B1\"/><pin index=\"0\" name=\"c\" loc=\"C1\"/>"),
         false, {"a/0/A1", "b/1/B1"}},
        {"children other than pins", "<part_info><design_constrs><pin index=\"0\" loc=\"A1\"/></design_constrs></part_info>",
         true, {}},
    };
    for (const ReadCase& c : cases) {
        HBMPinsFile file;
        auto root = xml(c.xml);
        EXPECT_EQ(file.parse(root.get()), c.result) << c.what;
        EXPECT_EQ(listed(file), c.pins) << c.what;
    }
    EXPECT_TRUE(m_messages.empty());
    HBMPinsFile file;
    EXPECT_FALSE(file.parse(nullptr));
}

TEST_F(PinsFile, ReadKeepsOnlyTheKnownNonEmptyPropertiesInTheirFixedOrder) {
    HBMPinsFile file;
    auto root = xml(pinsXml("<pin index=\"0\" name=\"a\" loc=\"A1\" slew=\"FAST\" iostandard=\"LVCMOS18\" drive=\"\" "
                            "IOSTANDARD=\"X\" iobank.vref=\"0.9\" custom=\"y\" pcb_max_delay=\"12\"/>"));
    ASSERT_TRUE(file.parse(root.get()));
    EXPECT_EQ(file.getPartName(), "zx-part");
    const HBMPin::Props expectedProps = {{"iostandard", "LVCMOS18"}, {"slew", "FAST"}, {"pcb_max_delay", "12"}};
    EXPECT_EQ(file.getPin("a")->getAllProps(), expectedProps);

    // A second read adds its pins; only the part name is replaced.
    auto more = xml(pinsXml("<pin index=\"0\" name=\"b\" loc=\"A1\"/>", ""));
    EXPECT_TRUE(file.parse(more.get()));
    EXPECT_EQ(listed(file), (Strings{"a/0/A1", "b/0/A1"}));
    EXPECT_EQ(file.getPartName(), "");
}

TEST(PinRecord, SetPropKeepsThePlaceOfAnExistingNameAndGetPropOfAnUnknownOneIsEmpty) {
    HBMPin pin("a", "0", "A1", {{"slew", "SLOW"}});
    pin.setProp("iostandard", "LVDS");
    pin.setProp("slew", "FAST");
    pin.setProp("Slew", "X");
    EXPECT_EQ(pin.getAllProps(), (HBMPin::Props{{"slew", "FAST"}, {"iostandard", "LVDS"}, {"Slew", "X"}}));
    EXPECT_EQ(pin.getProp("slew"), "FAST");
    EXPECT_EQ(pin.getProp("drive"), "");
}

TEST_F(PinsFile, ListOperationsDetachWithoutFreeing) {
    HBMPinsFile file;
    HBMPin* a = file.createPin("a", "0", "A1");
    EXPECT_TRUE(file.getAllPins().empty()) << "createPin must not add";
    for (HBMPin* p : {a, file.createPin("b", "1", "B1"), file.createPin("b", "2", "B2")})
        EXPECT_TRUE(file.addPin(p));
    EXPECT_EQ(file.getPin("b"), file.getPinByIndex(1));
    EXPECT_EQ(file.getPin("B"), nullptr);
    EXPECT_EQ(file.getPinByIndex(3), nullptr);

    HBMPin* b1 = file.getPin("b");
    EXPECT_TRUE(file.deletePin(std::string("b")));
    EXPECT_FALSE(file.deletePin(std::string("nope")));
    file.deletePin(a);
    EXPECT_FALSE(static_cast<HBMPinsData&>(file).deletePin(a));
    EXPECT_EQ(listed(file), (Strings{"b/2/B2"}));
    // Detached pins are the caller's, still alive.
    EXPECT_EQ(a->getName() + b1->getName(), "ab");
    delete a;
    delete b1;
}

TEST_F(PinsFile, WritesTheFixedFormExactly) {
    EXPECT_EQ(written(HBMPinsFile()), expected("pins_empty.xml"));

    // No "pins" wrapper, no "=" in properties, nothing escaped.
    HBMPinsFile file;
    file.setPartName("zx<7>&\"q\"");
    HBMPin* pin = file.createPin("CLK_P", "0", "U1");
    pin->setProp("iostandard", "DIFF_SSTL15");
    pin->setProp("ibuf_low_pwr", "FALSE");
    file.addPin(pin);
    file.addPin(file.createPin("a&b<c>", "1", "\"V2\""));
    EXPECT_EQ(written(file), expected("pins_props.xml"));

    std::ostringstream one;
    file.writePin(one, 0);
    file.writePin(one, 9);
    EXPECT_EQ(one.str(), "<pin index=\"0\" name=\"CLK_P\" loc=\"U1\" iostandard\"DIFF_SSTL15\" ibuf_low_pwr\"FALSE\"/>\n");
}

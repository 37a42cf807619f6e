// Every kind of board file fault is placed at the element that caused it,
// and the messages themselves stay as they were.
#include "position_support.h"


namespace {

const char* const kLedComponent = "<component name=\"led_4bits\"";

}  // namespace

class ReaderPositions : public PositionFixture {};

TEST_F(ReaderPositions, MalformedXmlKeepsTheParsersPlaceAndWords) {
    const std::string dir = copyBoard("board_files/durnival/1.0");
    const std::string file = dir + "/board.xml";
    const std::string text = change(file, "<description>", "<description><unclosed>");
    EXPECT_FALSE(read(file));
    const ComMsgMgrInstance m = first("49-59");
    // The message the front door sends is as it was: id, severity, arguments.
    EXPECT_EQ(m.getMask(), ComMsgMgr::MSG_CRITICAL_WARNING);
    EXPECT_EQ(m.getArgs(), std::vector<std::string>{file});
    // Beside it: where the parser gave up, and its own words.
    const Place closing = placeOf(text, "</description>");
    EXPECT_EQ(m.getPosition().file, file);
    EXPECT_EQ(m.getPosition().line, closing.line);
    EXPECT_GT(m.getPosition().column, 0);
    EXPECT_NE(m.getDetail().find("unclosed"), std::string::npos) << m.getDetail();
    EXPECT_EQ(m.getText().find("unclosed"), std::string::npos) << m.getText();
}

TEST_F(ReaderPositions, ReaderFaultsAtTheirElements) {
    const std::string dir = copyBoard("board_files/durnival/1.0");
    const std::string file = dir + "/board.xml";
    const std::string original = slurp(file);
    // A bad enumerated value.
    std::string text = change(file, "type=\"chip\" sub_type=\"led\"", "type=\"gadget\" sub_type=\"led\"");
    EXPECT_FALSE(read(file));
    EXPECT_AT(firstWith("49-69", "should be fpga/chip/connector"), file, text, kLedComponent);
    // An interface of an unknown component.
    write(file, original);
    text = change(file, "of_component=\"usb_uart\"", "of_component=\"nowhere\"");
    EXPECT_FALSE(read(file));
    // Found after the whole file is read, yet placed at the interface.
    EXPECT_AT(firstWith("49-69", "nowhere"), file, text, "<interface name=\"usb_uart\" type=");
}

TEST_F(ReaderPositions, DeferredMessagesKeepThePlaceTheyWereMadeAt) {
    const std::string dir = copyBoard("board_files/durnival/1.0");
    const std::string file = dir + "/board.xml";
    change(file, "component_pin=\"LED1\"", "component_pin=\"LEDX\"");
    const std::string text = change(file, "component_pin=\"BTN1\"", "component_pin=\"BTNX\"");
    read(file);
    EXPECT_AT(firstWith("49-69", "for LEDX"), file, text, "<pin_map port_index=\"1\" component_pin=\"LEDX\"");
    EXPECT_AT(firstWith("49-69", "for BTNX"), file, text, "<pin_map port_index=\"1\" component_pin=\"BTNX\"");
}

TEST_F(ReaderPositions, AReadEndedByAnExceptionIsPlacedWhereItLeftTheReader) {
    const std::string dir = copyBoard("board_files/durnival/1.0");
    const std::string file = dir + "/board.xml";
    const std::string text = change(file, "<revision id=\"0\">", "<revision id=\"  \">");
    EXPECT_FALSE(read(file));
    const ComMsgMgrInstance m = first("49-56");
    EXPECT_EQ(m.getArgs().at(0), file);
    EXPECT_AT(m, file, text, "<revision ");
}

TEST_F(ReaderPositions, GrammarFaultsWhereTheValidatorFoundThem) {
    const std::string dir = copyBoard("board_files/durnival/1.0");
    const std::string file = dir + "/board.xml";
    const std::string text = change(file, "<revision id=\"0\">", "<revision>");
    read(file);
    const ComMsgMgrInstance m = first("49-105");
    const Place revision = placeOf(text, "<revision>");
    EXPECT_EQ(m.getPosition().file, file);
    EXPECT_EQ(m.getPosition().line, revision.line);
    // The validator reports the end of the start tag.
    EXPECT_EQ(m.getPosition().column, revision.column + static_cast<int>(std::string("<revision>").size()));
    // Its line argument is the same line.
    EXPECT_EQ(m.getArgs().at(1), std::to_string(revision.line));
}

TEST_F(ReaderPositions, PinFileFaultsInThePinFile) {
    const std::string dir = copyBoard("board_files/durnival/1.0");
    const std::string pins = dir + "/part0_pins.xml";
    const std::string original = slurp(pins);
    // The reader's own check of the pins.
    std::string text = change(pins, "<pin index=\"3\" name=\"LED1\" loc=\"A4\"", "<pin index=\"3\" name=\"LED1\" loc=\"A3\"");
    EXPECT_FALSE(read(dir + "/board.xml"));
    EXPECT_AT(firstWith("49-69", "same  loc value 'A3'"), pins, text, "<pin index=\"3\"");
    // A missing required attribute, found by the grammar.
    write(pins, original);
    text = change(pins, "<pin index=\"6\" name=\"BTN0\"", "<pin name=\"BTN0\"");
    EXPECT_FALSE(read(dir + "/board.xml"));
    const ComMsgMgrInstance m = first("49-105");
    EXPECT_EQ(m.getPosition().file, pins);
    EXPECT_EQ(m.getPosition().line, placeOf(text, "<pin name=\"BTN0\"").line);
}

TEST_F(ReaderPositions, BrokenPinFileAtItsFaultAndAtTheComponentThatNamesIt) {
    const std::string dir = copyBoard("board_files/durnival/1.0");
    const std::string pins = dir + "/part0_pins.xml";
    const std::string pinText = change(pins, "<pins>", "<pins><pin>");
    setParam("board.validateXML", "false");
    EXPECT_FALSE(read(dir + "/board.xml"));
    const ComMsgMgrInstance broken = first("49-111");
    EXPECT_EQ(broken.getPosition().file, pins);
    EXPECT_EQ(broken.getPosition().line, placeOf(pinText, "</pins>").line);
    EXPECT_FALSE(broken.getDetail().empty());
    EXPECT_AT(first("49-57"), dir + "/board.xml", slurp(dir + "/board.xml"), "<component name=\"part0\"");
}

TEST_F(ReaderPositions, PresetFileFaults) {
    const std::string dir = copyBoard("board_files/durnival/1.0");
    const std::string preset = dir + "/preset.xml";
    // A grammar fault in the preset file is placed there.
    const std::string text = change(preset, "<ip ", "<ipp/><ip ");
    read(dir + "/board.xml");
    const ComMsgMgrInstance m = first("49-105");
    EXPECT_EQ(m.getPosition().file, preset);
    EXPECT_EQ(m.getPosition().line, placeOf(text, "<ipp/>").line);
    // The board's failure to read it is placed at the root that names the file.
    EXPECT_AT(first("49-63"), dir + "/board.xml", slurp(dir + "/board.xml"), "<board ");
}

TEST_F(ReaderPositions, SchemaOneFiles) {
    const std::string dir = copyBoard("board_parts/tamsel/1.0");
    const std::string file = dir + "/board.xml";
    const std::string original = slurp(file);
    const std::size_t typeAt = original.find("type=\"", original.find("<interface "));
    ASSERT_NE(typeAt, std::string::npos);
    std::string text = original;
    text.replace(typeAt, 6, "type=\"bad:");
    write(file, text);
    EXPECT_FALSE(read(file));
    const ComMsgMgrInstance m = first("49-37");
    EXPECT_EQ(m.getPosition().file, file);
    EXPECT_EQ(m.getPosition().line, placeOf(text, "<interface ").line);

    // An error that the reader keeps to itself lends its place and words to the general message.
    write(file, original);
    const std::size_t vendor = original.find("vendor=\"");
    ASSERT_NE(vendor, std::string::npos);
    text = original;
    text.replace(vendor, 8, "maker=\"");
    write(file, text);
    EXPECT_FALSE(read(file));
    const ComMsgMgrInstance general = first("49-4");
    EXPECT_EQ(general.getArgs().at(0), file);
    EXPECT_EQ(general.getPosition().line, placeOf(text, "<board").line);
    EXPECT_FALSE(general.getDetail().empty());
}

TEST_F(ReaderPositions, PackedFilesAsTheirText) {
    const std::string dir = copyBoard("board_files/durnival/1.0");
    const std::string file = dir + "/board.xml";
    const std::string text = change(file, "type=\"chip\" sub_type=\"led\"", "type=\"gadget\" sub_type=\"led\"");
    write(file, packed(text));
    EXPECT_FALSE(read(file));
    EXPECT_AT(firstWith("49-69", "should be fpga/chip/connector"), file, text, kLedComponent);
    // A packed pin file.
    write(file, packed(slurp(kData + "/boards/board_files/durnival/1.0/board.xml")));
    const std::string pins = dir + "/part0_pins.xml";
    const std::string pinText = change(pins, "<pin index=\"3\" name=\"LED1\" loc=\"A4\"", "<pin index=\"3\" name=\"LED1\" loc=\"A3\"");
    write(pins, packed(pinText));
    EXPECT_FALSE(read(file));
    EXPECT_AT(firstWith("49-69", "same  loc value 'A3'"), pins, pinText, "<pin index=\"3\"");
}

TEST_F(ReaderPositions, MessagesOutsideAnyElementHaveNoPlace) {
    EXPECT_FALSE(read(dir() + "/missing/board.xml"));
    EXPECT_FALSE(first("49-36").getPosition().known());
}

TEST(PositionScopes, NestAndUnwind) {
    const std::string outer = "outer.xml", inner = "inner.xml";
    EXPECT_FALSE(ComMsgPositionScope::current().known());
    {
        const ComMsgPositionScope a(outer, 3, 4);
        try {
            const ComMsgPositionScope b(inner, 7, 0);
            const ComMsgMgrInstance m = ComMsgMgrInstance::createInstance::eval(
                1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-37@%s", std::string("x"));
            EXPECT_EQ(m.getPosition().file, inner);
            EXPECT_EQ(m.getPosition().line, 7);
            EXPECT_EQ(m.getPosition().column, 0);
            throw 1;
        } catch (int) {
        }
        // The exception left the inner scope first; the place of the catch is the outer one.
        EXPECT_EQ(ComMsgPositionScope::takeUnwound().file, inner);
        EXPECT_FALSE(ComMsgPositionScope::takeUnwound().known());
        EXPECT_EQ(ComMsgPositionScope::current().file, outer);
        EXPECT_EQ(ComMsgPositionScope::current().column, 4);
    }
    EXPECT_FALSE(ComMsgPositionScope::current().known());
}

TEST(PositionScopes, TheMessageItselfIsUnchanged) {
    const ComMsgMgrInstance plain = ComMsgMgrInstance::createInstance::eval(
        2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-69@%s%s", std::string("b.xml"),
        std::string("Pin index must be unique."));
    const std::string file = "b.xml";
    const ComMsgPositionScope at(file, 12, 5);
    const ComMsgMgrInstance placed = ComMsgMgrInstance::createInstance::eval(
        2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-69@%s%s", std::string("b.xml"),
        std::string("Pin index must be unique."));
    EXPECT_EQ(placed.getLine(), plain.getLine());
    EXPECT_EQ(placed.getArgs(), plain.getArgs());
    EXPECT_EQ(placed.getId(), plain.getId());
    EXPECT_TRUE(placed.getPosition().known());
}

// The migration tool's file models keep every bound of the readers: a file
// that breaks one is told with the bound's message, reads as no document, and
// never leaves parse() as an exception.
#include <gtest/gtest.h>

#include "../parsers/parser_fixture.h"
#include "HBMBoard.h"
#include "HXMLWInterface.h"
#include "packed_bomb.h"

namespace {

class MigrationModelBounds : public ParserFixture {};

TEST_F(MigrationModelBounds, BrokenParseBoundsAreToldAndReadAsNoDocument) {
    // Ten levels of ten references: 10^11 characters on paper.
    std::string bomb = "<?xml version=\"1.0\"?>\n<!DOCTYPE pins [\n<!ENTITY a0 \"hhhhhhhhhh\">\n";
    for (int i = 1; i <= 10; ++i) {
        bomb += "<!ENTITY a" + std::to_string(i) + " \"";
        for (int j = 0; j < 10; ++j)
            bomb += "&a" + std::to_string(i - 1) + ";";
        bomb += "\">\n";
    }
    bomb += "]>\n<pins><pin index=\"0\" name=\"&a10;\" loc=\"A1\"/></pins>\n";
    std::string deep = "<?xml version=\"1.0\"?>\n";
    for (int i = 0; i <= HXMLWLimits::kMaxDepth; ++i)
        deep += "<ip_presets>";
    const std::string pins = write("m/part0_pins.xml", bomb);
    const std::string presets = write("m/preset.xml", deep);
    HBMBoard model;
    EXPECT_FALSE(model.parsePins(pins));
    EXPECT_FALSE(model.parsePresets(presets));
    const Args told = argsOf("49-901");
    ASSERT_EQ(told.size(), 2u);
    EXPECT_EQ(told[0], (Strings{pins, HXMLWLimits::kExpansionSizeBound}));
    EXPECT_EQ(told[1], (Strings{presets, HXMLWLimits::kDepthBound}));
}

TEST_F(MigrationModelBounds, PackedFileThatUnpacksPastTheBoundIsRefusedWithoutThrowing) {
    const std::string file = dir() + "/z/part0_pins.xml";
    writePackedBomb(file, "<pins>");
    HBMBoard model;
    bool read = true;
    EXPECT_NO_THROW(read = model.parsePins(file));
    EXPECT_FALSE(read);
    ASSERT_EQ(count("49-900"), 1);
    EXPECT_EQ(arg("49-900", 0), file);
    EXPECT_EQ(arg("49-900", 1).compare(0, 9, "unpacked,"), 0) << arg("49-900", 1);
}

}  // namespace

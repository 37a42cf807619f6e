// The readers speak through numbered messages only: nothing of the XML
// library's own text reaches standard error, whatever a file holds.
#include <gtest/gtest.h>

#include "../parsers/parser_fixture.h"
#include "HBOParser.h"
#include "HXMLWInterface.h"

namespace {

// Bytes that no decoder of the declared encoding takes: the XML library
// reports them outside the parse's own error channel.
const std::string kBadlyEncoded = std::string("<?xml version=\"1.0\" encoding=\"EUC-JP\"?>\n<board schema_version=\"2.1\">") +
                                  std::string("\xff\xfe\x00\x00", 4) + "</board>\n";

class ParserOutput : public ParserFixture {};

TEST_F(ParserOutput, EncodingFaultsAreReportedNotPrinted) {
    const std::string file = write("enc/board.xml", kBadlyEncoded);
    testing::internal::CaptureStderr();
    const bool fromBuffer = HXMLWInterface::readFromBuffer(kBadlyEncoded) != nullptr;
    const std::string bufferError = HXMLWInterface::lastError();
    const bool fromFile = HXMLWInterface::readFromFile(file) != nullptr;
    const bool plain = HBOParser().parseFile(file, freshBoard());
    setParam("board.validateXML", "true");
    const bool validated = HBOParser().parseFile(file, freshBoard());
    const std::string printed = testing::internal::GetCapturedStderr();
    EXPECT_EQ(printed, "");
    EXPECT_FALSE(fromBuffer);
    EXPECT_FALSE(fromFile);
    EXPECT_FALSE(plain);
    EXPECT_FALSE(validated);
    // The fault still says what went wrong, and where.
    EXPECT_NE(bufferError.find("line "), std::string::npos) << bufferError;
}

}  // namespace

// The plain XML tree: every element knows where its start tag begins.
#include "position_support.h"

#include <cstring>

#include "HBOXmlFileLoader.h"
#include "HXMLWInterface.h"

namespace {

// The text of `line` (from 1) of `text` from character `column` (from 1) on.
std::string textAt(const std::string& text, int line, int column) {
    std::size_t at = 0;
    for (int l = 1; l < line; ++l) {
        at = text.find('\n', at);
        if (at == std::string::npos)
            return std::string();
        ++at;
    }
    for (int c = 1; c < column && at < text.size(); ++c) {
        ++at;
        while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80)
            ++at;
    }
    return text.substr(at, text.find('\n', at) - at);
}

// Every element below `e` starts with "<tag" at its place in `text`; the count of them.
int expectTagsInPlace(const HXMLWElement* e, const std::string& text, const std::string& file) {
    const std::string here = textAt(text, e->getLine(), e->getColumn());
    EXPECT_EQ(here.compare(0, std::strlen(e->getTagName()) + 1, std::string("<") + e->getTagName()), 0)
        << file << ":" << e->getLine() << ":" << e->getColumn() << " is '" << here << "', not <" << e->getTagName();
    int n = 1;
    for (int i = 0; i < e->getChildCount(); ++i)
        n += expectTagsInPlace(e->getChild(i), text, file);
    return n;
}

}  // namespace

TEST(ElementPositions, EveryElementOfEveryBundledFile) {
    int files = 0, elements = 0;
    for (fs::recursive_directory_iterator it(kData + "/boards"), end; it != end; ++it) {
        if (it->path().extension() != ".xml")
            continue;
        const std::string file = it->path().string();
        std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromFile(file);
        ASSERT_TRUE(root) << file << ": " << HXMLWInterface::lastError();
        elements += expectTagsInPlace(root.get(), slurp(file), file);
        ++files;
    }
    EXPECT_GE(files, 20);
    EXPECT_GT(elements, 1000);
}

TEST(ElementPositions, AwkwardLayouts) {
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
        "<!DOCTYPE r>\r\n"
        "<r a=\"1\"\r\n"
        "   b=\"\xC3\xA9t\xC3\xA9\"><!-- \xE2\x86\x92 --><p name=\"\xC3\xBC\" q='>'/><p\n"
        "\tc=\"2\"\n"
        "/>" + std::string(9000, ' ') + "<deep/>\n"
        "<![CDATA[ <not/> ]]><last/></r>\n";
    std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromBuffer(text);
    ASSERT_TRUE(root) << HXMLWInterface::lastError();
    ASSERT_EQ(root->getChildCount(), 4);
    // A start tag over several lines is placed where it begins.
    EXPECT_EQ(root->getLine(), 3);
    EXPECT_EQ(root->getColumn(), 1);
    // Columns count characters, as editors do, not bytes.
    EXPECT_EQ(root->getChild(0)->getLine(), 4);
    EXPECT_EQ(root->getChild(0)->getColumn(), 22);
    EXPECT_EQ(root->getChild(1)->getLine(), 4);
    EXPECT_EQ(root->getChild(1)->getColumn(), 41);
    // After a long line, and after a CDATA section holding a '<'.
    EXPECT_EQ(root->getChild(2)->getLine(), 6);
    EXPECT_EQ(root->getChild(2)->getColumn(), 9003);
    EXPECT_EQ(root->getChild(3)->getLine(), 7);
    EXPECT_EQ(root->getChild(3)->getColumn(), 21);
}

TEST(ElementPositions, PackedFilesCountLinesOfTheirText) {
    const std::string text = "<a>\n  <b/>\n    <c/>\n</a>\n";
    const std::string file = (fs::temp_directory_path() / fs::unique_path("zr-packed-%%%%-%%%%.xml")).string();
    std::ofstream(file, std::ios::binary) << packed(text);
    std::shared_ptr<HXMLWElement> root = HBOXmlFileLoader::loadRoot(file);
    fs::remove(file);
    ASSERT_TRUE(root);
    EXPECT_EQ(root->getChild(0)->getLine(), 2);
    EXPECT_EQ(root->getChild(0)->getColumn(), 3);
    EXPECT_EQ(root->getChild(1)->getLine(), 3);
    EXPECT_EQ(root->getChild(1)->getColumn(), 5);
}

TEST(ElementPositions, RejectionsKeepTheParsersPlace) {
    EXPECT_FALSE(HXMLWInterface::readFromBuffer("<a>\n  <b>\n</a>\n"));
    EXPECT_EQ(HXMLWInterface::lastErrorLine(), 3);
    EXPECT_EQ(HXMLWInterface::lastErrorColumn(), 5);
    EXPECT_NE(HXMLWInterface::lastError().find("line 3, column 5"), std::string::npos) << HXMLWInterface::lastError();

    // A broken bound is placed where the parse stopped.
    std::string deep;
    for (int i = 0; i <= HXMLWLimits::kMaxDepth; ++i)
        deep += "<d>\n";
    EXPECT_FALSE(HXMLWInterface::readFromBuffer(deep));
    EXPECT_FALSE(HXMLWInterface::lastBound().empty());
    EXPECT_EQ(HXMLWInterface::lastErrorLine(), HXMLWLimits::kMaxDepth + 1);

    // A read that succeeds, or fails before parsing, has no place.
    EXPECT_TRUE(HXMLWInterface::readFromBuffer("<a/>"));
    EXPECT_EQ(HXMLWInterface::lastErrorLine(), 0);
    EXPECT_FALSE(HXMLWInterface::readFromFile("/nonexistent/zr/board.xml"));
    EXPECT_EQ(HXMLWInterface::lastErrorLine(), 0);
}

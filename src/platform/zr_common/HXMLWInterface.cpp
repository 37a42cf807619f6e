// Reads XML into a lean read-only tree in one SAX pass. Every string and every
// element but the root lies in one arena that the root owns, so a whole board
// file costs a handful of allocations and is freed at once with its root.
#include "HXMLWInterface.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <mutex>
#include <new>

#include <boost/filesystem/operations.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/EntityResolver.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

HXMLWElement::~HXMLWElement() = default;

namespace {


class Arena {
public:
    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena() {
        for (char* b : m_blocks)
            delete[] b;
    }

    void* allocate(std::size_t size, std::size_t align) {
        std::size_t pad = (align - reinterpret_cast<std::uintptr_t>(m_cur) % align) % align;
        if (pad + size > m_left) {
            std::size_t blockSize = size + align > m_nextBlock ? size + align : m_nextBlock;
            m_blocks.push_back(new char[blockSize]);
            m_cur = m_blocks.back();
            m_left = blockSize;
            // Blocks stay below the allocator's mapping threshold, so that a
            // freed tree's memory serves the next one without new page faults.
            if (m_nextBlock < 64 * 1024)
                m_nextBlock *= 2;
            pad = (align - reinterpret_cast<std::uintptr_t>(m_cur) % align) % align;
        }
        char* p = m_cur + pad;
        m_cur = p + size;
        m_left -= pad + size;
        return p;
    }

    const char* copy(const std::string& s) {
        char* p = static_cast<char*>(allocate(s.size() + 1, 1));
        std::memcpy(p, s.data(), s.size());
        p[s.size()] = '\0';
        return p;
    }

    template <class T>
    T* array(std::size_t n) {
        return static_cast<T*>(allocate(n * sizeof(T), alignof(T)));
    }

private:
    std::vector<char*> m_blocks;
    char* m_cur = nullptr;
    std::size_t m_left = 0;
    std::size_t m_nextBlock = 8 * 1024;
};

struct Attr {
    const char* name;
    const char* value;
};

class Element : public HXMLWElement {
public:
    const char* getTagName() const override { return m_tag; }
    const char* getText() const override { return m_text; }
    const char* getAttribute(const char* name) const override {
        if (!name)
            return nullptr;
        for (int i = 0; i < m_attrCount; ++i)
            if (std::strcmp(m_attrs[i].name, name) == 0)
                return m_attrs[i].value;
        return nullptr;
    }
    int getAttributeCount() const override { return m_attrCount; }
    const char* getAttributeName(int index) const override {
        return index >= 0 && index < m_attrCount ? m_attrs[index].name : nullptr;
    }
    int getChildCount() const override { return m_childCount; }
    HXMLWElement* getChild(int index) const override {
        return index >= 0 && index < m_childCount ? m_children[index] : nullptr;
    }
    void getChildren(std::shared_ptr<HXMLWElementList>& out) const override {
        if (m_childCount == 0) {
            out.reset();
            return;
        }
        out = std::make_shared<HXMLWElementList>(m_children, m_children + m_childCount);
    }

    const char* m_tag = "";
    const char* m_text = nullptr;
    Attr* m_attrs = nullptr;
    HXMLWElement** m_children = nullptr;
    int m_attrCount = 0;
    int m_childCount = 0;
};

// The root owns the arena in which its descendants live. They hold no resources
// of their own, so releasing the arena is all that their destruction takes.
class RootElement : public Element {
public:
    Arena arena;
};

// Thread-local so that readers on different threads neither share a parser nor
// see each other's failures.
thread_local std::string t_lastError;

// Writes into room made once: at most three bytes per UTF-16 unit (a
// surrogate pair, two units, takes four).
void appendUtf8(std::string& out, const XMLCh* s, XMLSize_t n) {
    const std::size_t start = out.size();
    out.resize(start + 3 * n);
    char* p = &out[start];
    for (XMLSize_t i = 0; i < n; ++i) {
        unsigned long c = s[i];
        if (c < 0x80) {
            *p++ = static_cast<char>(c);
            continue;
        }
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < n && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF) {
            c = 0x10000 + ((c - 0xD800) << 10) + (s[i + 1] - 0xDC00);
            ++i;
        }
        if (c < 0x800) {
            *p++ = static_cast<char>(0xC0 | (c >> 6));
            *p++ = static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            *p++ = static_cast<char>(0xE0 | (c >> 12));
            *p++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            *p++ = static_cast<char>(0x80 | (c & 0x3F));
        } else {
            *p++ = static_cast<char>(0xF0 | (c >> 18));
            *p++ = static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            *p++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            *p++ = static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    out.resize(static_cast<std::size_t>(p - out.data()));
}

std::string toUtf8(const XMLCh* s) {
    std::string out;
    if (s)
        appendUtf8(out, s, xercesc::XMLString::stringLen(s));
    return out;
}

class TreeBuilder : public xercesc::DefaultHandler {
public:
    // Starts a document; the scratch buffers keep their capacity across documents.
    void reset() {
        m_root.reset(new RootElement);
        m_rootStarted = false;
        m_frames.clear();
        m_pending.clear();
        m_error.clear();
    }

    RootElement* takeRoot() { return m_rootStarted && m_frames.empty() ? m_root.release() : nullptr; }
    void dropRoot() { m_root.reset(); }
    const std::string& error() const { return m_error; }

    void startElement(const XMLCh* const, const XMLCh* const, const XMLCh* const qname,
                      const xercesc::Attributes& attrs) override {
        Arena& arena = m_root->arena;
        Element* e;
        if (!m_rootStarted) {
            e = m_root.get();
            m_rootStarted = true;
        } else {
            e = new (arena.array<Element>(1)) Element;
        }
        e->m_tag = copyUtf8(arena, qname);
        XMLSize_t n = attrs.getLength();
        if (n > 0) {
            e->m_attrs = arena.array<Attr>(n);
            for (XMLSize_t i = 0; i < n; ++i) {
                e->m_attrs[i].name = copyUtf8(arena, attrs.getQName(i));
                e->m_attrs[i].value = copyUtf8(arena, attrs.getValue(i));
            }
            e->m_attrCount = static_cast<int>(n);
        }
        std::size_t depth = m_frames.size();
        if (m_texts.size() <= depth)
            m_texts.resize(depth + 1);
        m_texts[depth].clear();
        m_frames.push_back(Frame{e, m_pending.size(), false});
    }

    void endElement(const XMLCh* const, const XMLCh* const, const XMLCh* const) override {
        Arena& arena = m_root->arena;
        Frame f = m_frames.back();
        m_frames.pop_back();
        std::size_t count = m_pending.size() - f.firstChild;
        if (count > 0) {
            f.element->m_children = arena.array<HXMLWElement*>(count);
            std::copy(m_pending.begin() + f.firstChild, m_pending.end(), f.element->m_children);
            f.element->m_childCount = static_cast<int>(count);
            m_pending.resize(f.firstChild);
        }
        if (f.hasText)
            f.element->m_text = arena.copy(m_texts[m_frames.size()]);
        if (!m_frames.empty())
            m_pending.push_back(f.element);
    }

    void characters(const XMLCh* const chars, const XMLSize_t length) override { addText(chars, length); }
    // Without a grammar nothing is ignorable; keep such blanks as they stand all the same.
    void ignorableWhitespace(const XMLCh* const chars, const XMLSize_t length) override { addText(chars, length); }

    void error(const xercesc::SAXParseException&) override {}
    void fatalError(const xercesc::SAXParseException& e) override {
        m_error = toUtf8(e.getMessage());
        m_error += " (line " + std::to_string(e.getLineNumber()) + ", column " +
                   std::to_string(e.getColumnNumber()) + ")";
        throw e;
    }

private:
    struct Frame {
        Element* element;
        std::size_t firstChild;
        bool hasText;
    };

    // Names and values are nearly always ASCII: those are narrowed straight
    // into the arena; anything else goes through the UTF-8 encoder.
    const char* copyUtf8(Arena& arena, const XMLCh* s) {
        std::size_t n = 0;
        bool ascii = true;
        for (; s[n]; ++n)
            ascii = ascii && s[n] < 0x80;
        if (!ascii) {
            m_scratch.clear();
            appendUtf8(m_scratch, s, n);
            return arena.copy(m_scratch);
        }
        char* p = arena.array<char>(n + 1);
        for (std::size_t i = 0; i < n; ++i)
            p[i] = static_cast<char>(s[i]);
        p[n] = '\0';
        return p;
    }

    void addText(const XMLCh* chars, XMLSize_t length) {
        if (m_frames.empty())
            return;
        m_frames.back().hasText = true;
        appendUtf8(m_texts[m_frames.size() - 1], chars, length);
    }

    std::unique_ptr<RootElement> m_root;
    bool m_rootStarted = false;
    std::vector<Frame> m_frames;
    std::vector<HXMLWElement*> m_pending;
    std::vector<std::string> m_texts;
    std::string m_scratch;
    std::string m_error;
};

// Answers every external entity, the DTD included, with nothing: the tree never
// depends on files other than the one being read.
class NoExternalEntities : public xercesc::EntityResolver {
public:
    xercesc::InputSource* resolveEntity(const XMLCh* const, const XMLCh* const systemId) override {
        static const XMLByte empty[1] = {0};
        return new xercesc::MemBufInputSource(empty, 0, systemId ? systemId : u"");
    }
};

void initXerces() {
    static std::once_flag once;
    std::call_once(once, [] { xercesc::XMLPlatformUtils::Initialize(); });
}

struct ReaderState {
    std::unique_ptr<xercesc::SAX2XMLReader> reader;
    TreeBuilder builder;
    NoExternalEntities resolver;
    // Bounds entity expansion, so that a hostile document cannot eat the memory.
    xercesc::SecurityManager security;
};

std::unique_ptr<xercesc::SAX2XMLReader> makeReader(ReaderState& st) {
    TreeBuilder& builder = st.builder;
    NoExternalEntities& resolver = st.resolver;
    std::unique_ptr<xercesc::SAX2XMLReader> r(xercesc::XMLReaderFactory::createXMLReader());
    r->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    r->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, false);
    r->setFeature(xercesc::XMLUni::fgXercesSchema, false);
    r->setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
    r->setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
    r->setContentHandler(&builder);
    r->setErrorHandler(&builder);
    r->setEntityResolver(&resolver);
    r->setProperty(xercesc::XMLUni::fgXercesSecurityManager, &st.security);
    return r;
}

std::shared_ptr<HXMLWElement> parse(const char* data, std::size_t size, const char* systemId) {
    t_lastError.clear();
    try {
        initXerces();
        // One parser per thread, reused from file to file. Nothing outside this
        // file runs during a parse, so a parse never begins inside another.
        thread_local ReaderState state;
        ReaderState* st = &state;
        if (!st->reader)
            st->reader = makeReader(*st);

        st->builder.reset();
        std::u16string sys;
        for (const char* p = systemId; *p; ++p)
            sys += static_cast<char16_t>(static_cast<unsigned char>(*p));
        xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(data), size, sys.c_str());
        // The text outlives the parse: no second copy of it.
        source.setCopyBufToStream(false);
        try {
            st->reader->parse(source);
        } catch (...) {
            t_lastError = st->builder.error();
            st->builder.dropRoot();
            throw;
        }
        RootElement* root = st->builder.takeRoot();
        st->builder.dropRoot();
        if (!root) {
            t_lastError = "no root element";
            return nullptr;
        }
        return std::shared_ptr<HXMLWElement>(root);
    } catch (const xercesc::SAXParseException&) {
        // The builder has kept the text with its position.
    } catch (const xercesc::XMLException& e) {
        if (t_lastError.empty())
            t_lastError = toUtf8(e.getMessage());
    } catch (const xercesc::SAXException& e) {
        if (t_lastError.empty())
            t_lastError = toUtf8(e.getMessage());
    } catch (const xercesc::OutOfMemoryException&) {
        t_lastError = "out of memory";
    } catch (const std::exception& e) {
        t_lastError = e.what();
    } catch (...) {
        if (t_lastError.empty())
            t_lastError = "unknown failure";
    }
    if (t_lastError.empty())
        t_lastError = "unknown failure";
    return nullptr;
}

}  // namespace

std::shared_ptr<HXMLWElement> HXMLWInterface::readFromFile(const std::string& path) {
    // One buffer per thread, kept from file to file: a large board file then
    // costs no fresh memory from the system at each read.
    thread_local std::string text;
    text.clear();
    try {
        boost::system::error_code ec;
        if (boost::filesystem::is_directory(path, ec)) {
            t_lastError = "'" + path + "' is a directory";
            return nullptr;
        }
        std::ifstream in(path, std::ios::binary);
        if (!in) {
            t_lastError = "cannot open '" + path + "'";
            return nullptr;
        }
        // One read of the whole file where its size is known; streams of unknown size byte by byte.
        in.seekg(0, std::ios::end);
        std::streamoff size = in.tellg();
        in.seekg(0, std::ios::beg);
        if (size > 0 && in) {
            text.resize(static_cast<std::size_t>(size));
            in.read(&text[0], size);
            text.resize(static_cast<std::size_t>(in.gcount()));
        } else {
            in.clear();
            text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        }
        if (in.bad()) {
            t_lastError = "cannot read '" + path + "'";
            return nullptr;
        }
    } catch (const std::exception& e) {
        t_lastError = e.what();
        return nullptr;
    }
    if (text.empty()) {
        t_lastError = "'" + path + "' is empty";
        return nullptr;
    }
    return parse(text.data(), text.size(), path.c_str());
}

std::shared_ptr<HXMLWElement> HXMLWInterface::readFromBuffer(const std::string& text) {
    if (text.empty()) {
        t_lastError = "empty document";
        return nullptr;
    }
    return parse(text.data(), text.size(), "buffer");
}

const std::string& HXMLWInterface::lastError() { return t_lastError; }

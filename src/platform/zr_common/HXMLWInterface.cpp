// Reads XML into a lean read-only tree in one SAX pass. Every string and every
// element but the root lies in one arena that the root owns, so a whole board
// file costs a handful of allocations and is freed at once with its root.
//
// The parser runs without network access and never reads a file other than the
// one it was given: external entities expand to nothing and no external DTD is
// loaded. Besides the parser's built-in limits, the bounds of HXMLWLimits on
// depth, entity expansions and expanded text stop a hostile document early.
#include "HXMLWInterface.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <mutex>
#include <new>

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include "HUTFile.h"

HXMLWElement::~HXMLWElement() = default;

namespace {

// Arena blocks of the standard size that trees on this thread gave back, for
// the next tree. A board read takes and frees dozens of them per file; handed
// back to the C library each time, every such free makes it sweep its caches
// of small chunks, which the model's many small allocations then miss. The
// cache is bounded, and a block freed after the thread's cache is gone goes
// straight back to the C library.
class BlockCache {
public:
    static constexpr std::size_t kBlockSize = 64 * 1024;
    static constexpr std::size_t kMaxBlocks = 64;  // 4 MiB a thread at most

    ~BlockCache() {
        t_gone = true;
        for (char* b : m_blocks)
            delete[] b;
    }

    static char* take() {
        if (!t_gone) {
            std::vector<char*>& blocks = instance().m_blocks;
            if (!blocks.empty()) {
                char* b = blocks.back();
                blocks.pop_back();
                return b;
            }
        }
        return new char[kBlockSize];
    }

    // Called from destructors: never throws.
    static void give(char* block) noexcept {
        try {
            if (!t_gone) {
                std::vector<char*>& blocks = instance().m_blocks;
                if (blocks.size() < kMaxBlocks) {
                    blocks.push_back(block);
                    return;
                }
            }
        } catch (...) {
        }
        delete[] block;
    }

private:
    static BlockCache& instance() {
        thread_local BlockCache cache;
        return cache;
    }
    static thread_local bool t_gone;
    std::vector<char*> m_blocks;
};

thread_local bool BlockCache::t_gone = false;

class Arena {
public:
    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena() {
        for (const Block& b : m_blocks) {
            if (b.size == BlockCache::kBlockSize)
                BlockCache::give(b.data);
            else
                delete[] b.data;
        }
    }

    // `align` is a power of two. The common case stays small enough to inline,
    // where the alignment is a constant.
    void* allocate(std::size_t size, std::size_t align) {
        std::size_t pad = padding(m_cur, align);
        if (pad + size > m_left) {
            newBlock(size, align);
            pad = padding(m_cur, align);
        }
        char* p = m_cur + pad;
        m_cur = p + size;
        m_left -= pad + size;
        return p;
    }

    const char* copy(const char* s, std::size_t n) {
        char* p = static_cast<char*>(allocate(n + 1, 1));
        std::memcpy(p, s, n);
        p[n] = '\0';
        return p;
    }

    template <class T>
    T* array(std::size_t n) {
        return static_cast<T*>(allocate(n * sizeof(T), alignof(T)));
    }

private:
    struct Block {
        char* data;
        std::size_t size;
    };

    static std::size_t padding(const char* at, std::size_t align) {
        return static_cast<std::size_t>(0 - reinterpret_cast<std::uintptr_t>(at)) & (align - 1);
    }

    __attribute__((noinline)) void newBlock(std::size_t size, std::size_t align) {
        const std::size_t blockSize = size + align > m_nextBlock ? size + align : m_nextBlock;
        if (m_blocks.size() == m_blocks.capacity())
            m_blocks.reserve(m_blocks.empty() ? 8 : 2 * m_blocks.size());
        char* data = blockSize == BlockCache::kBlockSize ? BlockCache::take() : new char[blockSize];
        m_blocks.push_back(Block{data, blockSize});
        m_cur = data;
        m_left = blockSize;
        // Small trees stay small; the blocks of large ones stay below the
        // allocator's mapping threshold and come from the cache.
        if (m_nextBlock < BlockCache::kBlockSize)
            m_nextBlock *= 2;
    }

    std::vector<Block> m_blocks;
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
        // Readers ask for many names that an element lacks: the first byte
        // settles most comparisons without a call.
        const char first = name[0];
        for (int i = 0; i < m_attrCount; ++i)
            if (m_attrs[i].name[0] == first && (first == '\0' || std::strcmp(m_attrs[i].name + 1, name + 1) == 0))
                return m_attrs[i].value;
        return nullptr;
    }
    int getAttributeCount() const override { return m_attrCount; }
    const char* getAttributeName(int index) const override {
        return index >= 0 && index < m_attrCount ? m_attrs[index].name : nullptr;
    }
    int getLine() const override { return m_line; }
    int getColumn() const override { return m_column; }
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
    int m_line = 0;
    int m_column = 0;
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
thread_local std::string t_lastBound;
thread_local int t_lastLine = 0;
thread_local int t_lastColumn = 0;

// Characters of the UTF-8 text from `from` to `to`: the parser's buffer holds
// UTF-8 whatever the document's encoding, and its columns count characters.
int utf8Characters(const char* from, const char* to) {
    int n = 0;
    for (const char* p = from; p < to; ++p)
        n += (static_cast<unsigned char>(*p) & 0xC0) != 0x80;
    return n;
}

// True when [from, to) holds ASCII alone and no line feed, as nearly every
// start tag does; eight bytes at a time, since it runs once per element.
bool asciiOnOneLine(const char* from, const char* to) {
    constexpr std::uint64_t kOnes = 0x0101010101010101ull, kHigh = 0x8080808080808080ull;
    std::uint64_t seen = 0;
    const char* p = from;
    for (; to - p >= 8; p += 8) {
        std::uint64_t word;
        std::memcpy(&word, p, sizeof word);
        const std::uint64_t lf = word ^ (kOnes * '\n');
        seen |= word | ((lf - kOnes) & ~lf);
    }
    for (; p < to; ++p)
        seen |= *p == '\n' ? 0x80u : static_cast<unsigned char>(*p);
    return (seen & kHigh) == 0;
}

// Where the start tag that the parser has just read begins. The parser calls
// back when it stands after the tag's '>'; a '<' cannot occur inside a tag, so
// the last one before that is the tag's own.
void startTagPosition(const xmlParserCtxt* ctxt, int& line, int& column) {
    const xmlParserInput* in = ctxt ? ctxt->input : nullptr;
    if (!in || !in->base || !in->cur || in->cur <= in->base)
        return;
    const auto* begin = reinterpret_cast<const char*>(in->base);
    const auto* end = reinterpret_cast<const char*>(in->cur);
    const auto* lt = static_cast<const char*>(memrchr(begin, '<', static_cast<std::size_t>(end - begin)));
    if (!lt)
        return;
    // The parser counts the column as it goes, also where it dropped the
    // text before this line from its buffer.
    if (asciiOnOneLine(lt, end)) {
        line = in->line;
        column = in->col - static_cast<int>(end - lt);
    } else {
        const auto newlines = std::count(lt, end, '\n');
        line = in->line - static_cast<int>(newlines);
        if (newlines == 0) {
            column = in->col - utf8Characters(lt, end);
        } else {
            const char* start = lt;
            while (start > begin && start[-1] != '\n')
                --start;
            // A line whose start the parser dropped has no column we can tell.
            if (start > begin || line == 1)
                column = utf8Characters(start, lt) + 1;
        }
    }
    if (column < 1 || line < 1)
        column = 0;
    if (line < 1)
        line = 0;
}

class TreeBuilder {
public:
    // Starts a document; the scratch buffers keep their capacity across documents.
    void reset(std::size_t inputBytes) {
        m_maxExpanded = HXMLWLimits::maxExpandedBytes(inputBytes);
        m_expanded = 0;
        m_expansions = 0;
        m_bound = nullptr;
        m_root.reset(new RootElement);
        m_rootStarted = false;
        m_frames.clear();
        m_pending.clear();
        m_error.clear();
        m_errorLine = 0;
        m_errorColumn = 0;
    }

    RootElement* takeRoot() { return m_rootStarted && m_frames.empty() ? m_root.release() : nullptr; }
    void dropRoot() { m_root.reset(); }
    const std::string& error() const { return m_error; }
    const char* bound() const { return m_bound; }
    bool stopped() const { return m_bound != nullptr; }

    // Counts one entity reference; false once the count is past its bound.
    bool countExpansion(void* ctx) {
        if (++m_expansions > HXMLWLimits::kMaxEntityExpansions)
            breakBound(ctx, HXMLWLimits::kExpansionCountBound);
        return !stopped();
    }

    void setMainContext(xmlParserCtxtPtr ctxt) { m_ctxt = ctxt; }

    void startElement(const xmlChar* localname, const xmlChar* prefix, int nbNamespaces, const xmlChar** namespaces,
                      int nbAttributes, const xmlChar** attributes, void* ctx) {
        if (stopped())
            return;
        if (static_cast<int>(m_frames.size()) >= HXMLWLimits::kMaxDepth) {
            breakBound(ctx, HXMLWLimits::kDepthBound);
            return;
        }
        for (int i = 0; i < nbAttributes; ++i)
            m_expanded += static_cast<std::size_t>(attributes[5 * i + 4] - attributes[5 * i + 3]);
        if (!withinExpansion(ctx))
            return;
        Arena& arena = m_root->arena;
        Element* e;
        if (!m_rootStarted) {
            e = m_root.get();
            m_rootStarted = true;
        } else {
            e = new (arena.array<Element>(1)) Element;
        }
        e->m_tag = qualified(arena, prefix, localname);
        startTagPosition(static_cast<const xmlParserCtxt*>(ctx), e->m_line, e->m_column);
        // Namespace declarations are plain attributes to the readers, as they
        // stand in the document; the parser hands them over apart, so they come first.
        const int n = nbNamespaces + nbAttributes;
        if (n > 0) {
            Attr* a = e->m_attrs = arena.array<Attr>(static_cast<std::size_t>(n));
            for (int i = 0; i < nbNamespaces; ++i, ++a) {
                const xmlChar* nsPrefix = namespaces[2 * i];
                const xmlChar* uri = namespaces[2 * i + 1];
                a->name = qualified(arena, nsPrefix ? BAD_CAST "xmlns" : nullptr, nsPrefix ? nsPrefix : BAD_CAST "xmlns");
                a->value = uri ? copy(arena, uri) : "";
            }
            // Five entries per attribute: local name, prefix, URI, value, value end.
            for (int i = 0; i < nbAttributes; ++i, ++a) {
                const xmlChar* const* at = attributes + 5 * i;
                a->name = qualified(arena, at[1], at[0]);
                a->value = arena.copy(reinterpret_cast<const char*>(at[3]), static_cast<std::size_t>(at[4] - at[3]));
            }
            e->m_attrCount = n;
        }
        const std::size_t depth = m_frames.size();
        if (m_texts.size() <= depth)
            m_texts.resize(depth + 1);
        m_texts[depth].clear();
        m_frames.push_back(Frame{e, m_pending.size(), false});
    }

    void endElement() {
        if (m_frames.empty() || stopped())
            return;
        Arena& arena = m_root->arena;
        Frame f = m_frames.back();
        m_frames.pop_back();
        const std::size_t count = m_pending.size() - f.firstChild;
        if (count > 0) {
            f.element->m_children = arena.array<HXMLWElement*>(count);
            std::copy(m_pending.begin() + static_cast<std::ptrdiff_t>(f.firstChild), m_pending.end(),
                      f.element->m_children);
            f.element->m_childCount = static_cast<int>(count);
            m_pending.resize(f.firstChild);
        }
        if (f.hasText) {
            const std::string& t = m_texts[m_frames.size()];
            f.element->m_text = arena.copy(t.data(), t.size());
        }
        if (!m_frames.empty())
            m_pending.push_back(f.element);
    }

    void characters(const xmlChar* chars, int length, void* ctx) {
        if (m_frames.empty() || stopped())
            return;
        m_expanded += static_cast<std::size_t>(length);
        if (!withinExpansion(ctx))
            return;
        m_frames.back().hasText = true;
        m_texts[m_frames.size() - 1].append(reinterpret_cast<const char*>(chars), static_cast<std::size_t>(length));
    }

    // Keeps the first fatal error with its position; later ones follow from it.
    void fault(const xmlError* e) {
        if (!e || e->level < XML_ERR_FATAL || !m_error.empty())
            return;
        // The parser's own guards name the bound that they keep, too.
        if (e->code == XML_ERR_ENTITY_LOOP)
            m_bound = HXMLWLimits::kExpansionSizeBound;
        else if (e->message && std::strstr(e->message, "Excessive depth"))
            m_bound = HXMLWLimits::kDepthBound;
        m_error = e->message ? e->message : "malformed document";
        while (!m_error.empty() && (m_error.back() == '\n' || m_error.back() == ' '))
            m_error.pop_back();
        m_error += " (line " + std::to_string(e->line) + ", column " + std::to_string(e->int2) + ")";
        m_errorLine = e->line;
        m_errorColumn = e->int2;
    }

    int errorLine() const { return m_errorLine; }
    int errorColumn() const { return m_errorColumn; }

private:
    bool withinExpansion(void* ctx) {
        if (m_expanded > m_maxExpanded)
            breakBound(ctx, HXMLWLimits::kExpansionSizeBound);
        return !stopped();
    }

    // Stops the parse in the context at hand (an entity's nested one, maybe)
    // and in the document's own, and keeps the bound as the parse's error.
    void breakBound(void* ctx, const char* bound) {
        if (m_bound)
            return;
        m_bound = bound;
        m_error = std::string("the document exceeds the bound on ") + bound;
        if (const xmlParserInput* in = ctx ? static_cast<xmlParserCtxtPtr>(ctx)->input : nullptr) {
            m_errorLine = in->line;
            m_errorColumn = in->col;
        }
        if (ctx)
            xmlStopParser(static_cast<xmlParserCtxtPtr>(ctx));
        if (m_ctxt && m_ctxt != ctx)
            xmlStopParser(m_ctxt);
    }

    struct Frame {
        Element* element;
        std::size_t firstChild;
        bool hasText;
    };

    static const char* copy(Arena& arena, const xmlChar* s) {
        return arena.copy(reinterpret_cast<const char*>(s), std::strlen(reinterpret_cast<const char*>(s)));
    }

    static const char* qualified(Arena& arena, const xmlChar* prefix, const xmlChar* local) {
        const char* l = reinterpret_cast<const char*>(local);
        const std::size_t ln = std::strlen(l);
        if (!prefix)
            return arena.copy(l, ln);
        const char* p = reinterpret_cast<const char*>(prefix);
        const std::size_t pn = std::strlen(p);
        char* out = arena.array<char>(pn + 1 + ln + 1);
        std::memcpy(out, p, pn);
        out[pn] = ':';
        std::memcpy(out + pn + 1, l, ln + 1);
        return out;
    }

    std::unique_ptr<RootElement> m_root;
    bool m_rootStarted = false;
    std::vector<Frame> m_frames;
    std::vector<HXMLWElement*> m_pending;
    std::vector<std::string> m_texts;
    std::string m_error;
    int m_errorLine = 0;
    int m_errorColumn = 0;
    xmlParserCtxtPtr m_ctxt = nullptr;
    std::size_t m_maxExpanded = 0;
    std::size_t m_expanded = 0;
    unsigned m_expansions = 0;
    const char* m_bound = nullptr;
};

// The builder of the parse under way on this thread. The parser's callbacks
// also run in the nested contexts it makes for entity contents, so they find
// the builder here rather than through a context.
thread_local TreeBuilder* t_builder = nullptr;

TreeBuilder* builderOf(void*) { return t_builder; }

struct BuilderScope {
    explicit BuilderScope(TreeBuilder* b) { t_builder = b; }
    ~BuilderScope() { t_builder = nullptr; }
    BuilderScope(const BuilderScope&) = delete;
    BuilderScope& operator=(const BuilderScope&) = delete;
};

void onStartElement(void* ctx, const xmlChar* localname, const xmlChar* prefix, const xmlChar*, int nbNamespaces,
                    const xmlChar** namespaces, int nbAttributes, int, const xmlChar** attributes) {
    builderOf(ctx)->startElement(localname, prefix, nbNamespaces, namespaces, nbAttributes, attributes, ctx);
}

void onEndElement(void* ctx, const xmlChar*, const xmlChar*, const xmlChar*) { builderOf(ctx)->endElement(); }

void onCharacters(void* ctx, const xmlChar* chars, int length) { builderOf(ctx)->characters(chars, length, ctx); }

// Every entity reference looks its entity up here, in content and in attribute
// values alike, so this is where references are counted; the look-ups that
// check a declaration's value expand nothing and are not counted.
xmlEntityPtr onGetEntity(void* ctx, const xmlChar* name) {
    const xmlParserInputState state = static_cast<xmlParserCtxtPtr>(ctx)->instate;
    const bool declaring = state == XML_PARSER_ENTITY_VALUE || state == XML_PARSER_ENTITY_DECL || state == XML_PARSER_DTD;
    if (!declaring && !builderOf(ctx)->countExpansion(ctx))
        return nullptr;
    return xmlSAX2GetEntity(ctx, name);
}

void onError(void* ctx, xmlErrorPtr error) { builderOf(ctx)->fault(error); }

// Some faults (of an encoding, of the parser's input) are raised without the
// context, through the thread's global handler, which prints on standard
// error. While our parse runs they come to the builder like every other one.
class ErrorRouting {
public:
    ErrorRouting() : m_handler(xmlStructuredError), m_context(xmlStructuredErrorContext) {
        xmlSetStructuredErrorFunc(nullptr, onError);
    }
    ~ErrorRouting() { xmlSetStructuredErrorFunc(m_context, m_handler); }
    ErrorRouting(const ErrorRouting&) = delete;
    ErrorRouting& operator=(const ErrorRouting&) = delete;

private:
    xmlStructuredErrorFunc m_handler;
    void* m_context;
};

// No external subset is ever read.
void onExternalSubset(void*, const xmlChar*, const xmlChar*, const xmlChar*) {}

// Every external entity, asked for by the parser or by its default handlers,
// reads as empty text.
xmlParserInputPtr emptyInput(xmlParserCtxtPtr ctxt) { return xmlNewStringInputStream(ctxt, BAD_CAST ""); }

xmlParserInputPtr onResolveEntity(void* ctx, const xmlChar*, const xmlChar*) {
    return emptyInput(static_cast<xmlParserCtxtPtr>(ctx));
}

// The entity loader is process-wide: ours answers only our own parses and
// hands every other one to the loader it replaced.
xmlExternalEntityLoader g_previousLoader = nullptr;

xmlParserInputPtr loadEntity(const char* url, const char* id, xmlParserCtxtPtr ctxt) {
    if (t_builder && ctxt)
        return emptyInput(ctxt);
    return g_previousLoader ? g_previousLoader(url, id, ctxt) : nullptr;
}

void initLibxml() {
    static std::once_flag once;
    std::call_once(once, [] {
        xmlInitParser();
        g_previousLoader = xmlGetExternalEntityLoader();
        xmlSetExternalEntityLoader(loadEntity);
    });
}

// One parser context per thread, reused from file to file. Nothing outside
// this file runs during a parse, so a parse never begins inside another.
struct ParserState {
    ParserState() {
        initLibxml();
        ctxt = xmlNewParserCtxt();
        if (!ctxt)
            throw std::bad_alloc();
        xmlSAXHandler* sax = ctxt->sax;
        xmlSAXVersion(sax, 2);
        sax->startElementNs = onStartElement;
        sax->endElementNs = onEndElement;
        sax->characters = onCharacters;
        sax->cdataBlock = onCharacters;
        // Without a grammar nothing is ignorable; keep such blanks as they stand.
        sax->ignorableWhitespace = onCharacters;
        sax->externalSubset = onExternalSubset;
        sax->resolveEntity = onResolveEntity;
        sax->getEntity = onGetEntity;
        sax->serror = onError;
        sax->error = nullptr;
        sax->warning = nullptr;
        sax->fatalError = nullptr;
        sax->comment = nullptr;
        sax->processingInstruction = nullptr;
        sax->reference = nullptr;
    }
    ~ParserState() { xmlFreeParserCtxt(ctxt); }
    ParserState(const ParserState&) = delete;
    ParserState& operator=(const ParserState&) = delete;

    xmlParserCtxtPtr ctxt = nullptr;
    TreeBuilder builder;
};

// Entities are replaced by their text; default attributes of the internal
// subset are supplied; no network. No XML_PARSE_HUGE: the limits stay on.
constexpr int kParseOptions = XML_PARSE_NOENT | XML_PARSE_DTDATTR | XML_PARSE_NONET | XML_PARSE_NOCDATA;

// The encoding that the XML declaration names, read as ASCII from every
// `step`-th byte after a byte order mark of `skip` bytes; empty without one.
std::string declaredEncoding(const char* data, std::size_t size, std::size_t skip, std::size_t step, std::size_t lead) {
    std::string decl;
    for (std::size_t i = skip + lead; i < size && decl.size() < 200; i += step) {
        decl += data[i];
        if (decl.size() >= 2 && decl.compare(decl.size() - 2, 2, "?>") == 0)
            break;
    }
    if (decl.compare(0, 5, "<?xml") != 0)
        return std::string();
    std::size_t at = decl.find("encoding");
    if (at == std::string::npos)
        return std::string();
    at = decl.find_first_of("\"'", at);
    if (at == std::string::npos)
        return std::string();
    const std::size_t end = decl.find(decl[at], at + 1);
    std::string name = decl.substr(at + 1, end == std::string::npos ? std::string::npos : end - at - 1);
    for (char& c : name)
        c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    return name;
}

bool startsWith(const std::string& s, const char* prefix) { return s.compare(0, std::strlen(prefix), prefix) == 0; }

// The parser lets a byte order mark win over a declaration that names another
// encoding; such a document is malformed, and its text may be read wrongly.
std::string byteOrderMarkConflict(const char* data, std::size_t size) {
    const auto* b = reinterpret_cast<const unsigned char*>(data);
    std::string name;
    if (size >= 3 && b[0] == 0xEF && b[1] == 0xBB && b[2] == 0xBF) {
        name = declaredEncoding(data, size, 3, 1, 0);
        if (name.empty() || name == "UTF-8" || name == "UTF8")
            return std::string();
        return "the byte order mark says UTF-8, the XML declaration says " + name;
    }
    if (size >= 2 && ((b[0] == 0xFE && b[1] == 0xFF) || (b[0] == 0xFF && b[1] == 0xFE))) {
        name = declaredEncoding(data, size, 2, 2, b[0] == 0xFE ? 1 : 0);
        if (name.empty() || startsWith(name, "UTF-16") || startsWith(name, "UTF16") || startsWith(name, "UCS-2") ||
            startsWith(name, "ISO-10646-UCS-2"))
            return std::string();
        return "the byte order mark says UTF-16, the XML declaration says " + name;
    }
    return std::string();
}

std::shared_ptr<HXMLWElement> parse(const char* data, std::size_t size, const char* url) {
    t_lastBound.clear();
    t_lastLine = t_lastColumn = 0;
    t_lastError = byteOrderMarkConflict(data, size);
    if (!t_lastError.empty()) {
        t_lastLine = t_lastColumn = 1;
        return nullptr;
    }
    if (size > static_cast<std::size_t>(INT32_MAX)) {
        t_lastError = "document too large";
        return nullptr;
    }
    try {
        thread_local ParserState state;
        TreeBuilder& builder = state.builder;
        builder.reset(size);
        builder.setMainContext(state.ctxt);
        BuilderScope scope(&builder);
        ErrorRouting routing;
        // The parse's own document holds the internal subset alone: the
        // elements go to the builder, not into it.
        xmlDocPtr doc = xmlCtxtReadMemory(state.ctxt, data, static_cast<int>(size), url, nullptr, kParseOptions);
        const bool wellFormed = doc && state.ctxt->wellFormed;
        if (doc)
            xmlFreeDoc(doc);
        state.ctxt->myDoc = nullptr;
        RootElement* root = wellFormed ? builder.takeRoot() : nullptr;
        t_lastLine = builder.errorLine();
        t_lastColumn = builder.errorColumn();
        if (builder.stopped()) {
            t_lastError = builder.error();
            t_lastBound = builder.bound();
            if (root) {
                delete root;
                root = nullptr;
            }
        } else if (!wellFormed) {
            t_lastError = builder.error();
            const xmlError* last = xmlCtxtGetLastError(state.ctxt);
            if (t_lastError.empty() && last && last->message) {
                t_lastError = last->message;
                t_lastLine = last->line;
                t_lastColumn = last->int2;
            }
        } else if (!root) {
            t_lastError = "no root element";
        }
        builder.dropRoot();
        if (root)
            return std::shared_ptr<HXMLWElement>(root);
    } catch (const std::bad_alloc&) {
        t_lastError = "out of memory";
    } catch (const std::exception& e) {
        t_lastError = e.what();
    }
    if (t_lastError.empty())
        t_lastError = "malformed document";
    return nullptr;
}

}  // namespace

std::shared_ptr<HXMLWElement> HXMLWInterface::readFromFile(const std::string& path) {
    // One buffer per thread, kept from file to file: a large board file then
    // costs no fresh memory from the system at each read.
    thread_local std::string text;
    t_lastBound.clear();
    t_lastLine = t_lastColumn = 0;
    std::string why;
    try {
        if (!HUTFileUtils::readInput(path, text, why)) {
            t_lastError = "'" + path + "' was not read: " + why;
            t_lastBound = "input file";
            return nullptr;
        }
    } catch (const std::exception& e) {
        t_lastError = e.what();
        return nullptr;
    }
    return readFromBuffer(text, path);
}

std::shared_ptr<HXMLWElement> HXMLWInterface::readFromBuffer(const std::string& text, const std::string& path) {
    t_lastBound.clear();
    t_lastLine = t_lastColumn = 0;
    if (text.empty()) {
        t_lastError = "'" + path + "' is empty";
        return nullptr;
    }
    return parse(text.data(), text.size(), path.c_str());
}

std::shared_ptr<HXMLWElement> HXMLWInterface::readFromBuffer(const std::string& text) {
    t_lastBound.clear();
    t_lastLine = t_lastColumn = 0;
    if (text.empty()) {
        t_lastError = "empty document";
        return nullptr;
    }
    return parse(text.data(), text.size(), "buffer");
}

const std::string& HXMLWInterface::lastError() { return t_lastError; }

int HXMLWInterface::lastErrorLine() { return t_lastLine; }

int HXMLWInterface::lastErrorColumn() { return t_lastColumn; }

const std::string& HXMLWInterface::lastBound() { return t_lastBound; }

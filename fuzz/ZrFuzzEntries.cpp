#include "ZrFuzzEntries.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include <unistd.h>

#include <boost/filesystem.hpp>
#include <boost/iostreams/device/back_inserter.hpp>
#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>
#include <libxml/xmlerror.h>

#include "ComMsgMgr.h"
#include "HBMBoard.h"
#include "HBOBoard.h"
#include "HBOBoardCReposMgr.h"
#include "HBOBoardUtils.h"
#include "HBOParser.h"
#include "HBOPartParser.h"
#include "HPAParamMgr.h"
#include "HXMLWInterface.h"

namespace fs = boost::filesystem;

namespace zrfuzz {

const char* const kFileMarker = "%%% ";

namespace {

bool validName(const std::string& name) {
    if (name.empty() || name.size() > 64 || name == "." || name == "..")
        return false;
    for (char c : name)
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '_' ||
              c == '-'))
            return false;
    return true;
}

void putFile(Bundle& bundle, const std::string& name, std::string text) {
    for (Bundle::File& f : bundle.files)
        if (f.name == name) {
            f.text = std::move(text);
            return;
        }
    bundle.files.push_back(Bundle::File{name, std::move(text)});
}

// The scratch directory of this process, emptied before each input and
// removed at exit. Memory-backed where there is such a file system: fuzzing
// writes files at every execution.
class Scratch {
public:
    Scratch() {
        const fs::path base = fs::exists("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
        m_root = (base / ("zr-fuzz-" + std::to_string(::getpid()) + fs::unique_path("-%%%%%%").string())).string();
        fs::create_directories(m_root);
    }
    ~Scratch() {
        boost::system::error_code ec;
        fs::remove_all(m_root, ec);
    }
    // A new empty directory `name` below the scratch root; its path.
    std::string fresh(const std::string& name) {
        const fs::path dir = fs::path(m_root) / name;
        boost::system::error_code ec;
        fs::remove_all(dir, ec);
        fs::create_directories(dir);
        return dir.string();
    }

private:
    std::string m_root;
};

Scratch& scratch() {
    static Scratch s;
    return s;
}

std::string gzip(const std::string& text) {
    std::string packed;
    boost::iostreams::filtering_ostream out;
    out.push(boost::iostreams::gzip_compressor());
    out.push(boost::iostreams::back_inserter(packed));
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.reset();
    return packed;
}

void writeFile(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary | std::ios::trunc).write(text.data(), static_cast<std::streamsize>(text.size()));
}

// Writes the bundle's files into a fresh directory `name`, packed as its
// switches say; the directory's path.
std::string writeBundle(const Bundle& bundle, const std::string& name) {
    const std::string dir = scratch().fresh(name);
    for (const Bundle::File& f : bundle.files) {
        const bool packed = f.name == "board.xml" ? bundle.has(Bundle::kPackBoard) : bundle.has(Bundle::kPackSideFiles);
        writeFile(dir + "/" + f.name, packed ? gzip(f.text) : f.text);
    }
    return dir;
}

void setParam(const char* name, bool on) { HPAParamMgr::getParamMgr()->setValue(name, on ? "true" : "false"); }

void useSwitches(const Bundle& bundle) {
    setParam("board.validateXML", bundle.has(Bundle::kValidate));
    setParam("board.enable2020Checks", bundle.has(Bundle::kStrict));
}

// The model is walked once more by a deep copy, so that whatever the reader
// left half made is touched.
void copyBoard(const HBOBoard& board) { HBOBoard copy(board, "fuzz_copy"); }

// The input as a board directory `name` with the switches set; its board.xml.
std::string boardDirectory(const std::uint8_t* data, std::size_t size, const std::string& name) {
    setUp();
    const Bundle bundle = splitBundle(data, size);
    useSwitches(bundle);
    return writeBundle(bundle, name) + "/board.xml";
}

int boardReader(const std::uint8_t* data, std::size_t size) {
    const std::string file = boardDirectory(data, size, "board");
    HBOBoard board;
    HBOParser parser;
    if (parser.parseFile(file, &board)) {
        parser.migrateV1ToV2(&board);
        copyBoard(board);
    }
    return 0;
}

// The schema 1 reader itself, whatever schema version the file claims, then
// the reshaping into the schema 2 model that the front door's callers do.
int schema1Reader(const std::uint8_t* data, std::size_t size) {
    const std::string file = boardDirectory(data, size, "schema1");
    HBOBoard board;
    board.setBoardSchemaVersion("1.1");
    // Nothing may leave the reader as an exception: an escaping one is a finding.
    if (HBOPartParser().parseFile(file, &board)) {
        HBOParser().migrateV1ToV2(&board);
        copyBoard(board);
    }
    return 0;
}

void walk(const HXMLWElement* e, std::size_t& sum) {
    sum += std::strlen(e->getTagName());
    if (const char* text = e->getText())
        sum += std::strlen(text);
    for (int i = 0; i < e->getAttributeCount(); ++i) {
        const char* name = e->getAttributeName(i);
        const char* value = e->getAttribute(name);
        if (!value)
            std::abort();  // a listed attribute must be found by its name
        sum += std::strlen(name) + std::strlen(value);
    }
    std::shared_ptr<HXMLWElementList> children;
    e->getChildren(children);
    if (static_cast<int>(children ? children->size() : 0) != e->getChildCount())
        std::abort();
    for (int i = 0; i < e->getChildCount(); ++i)
        walk(e->getChild(i), sum);
}

int xmlTree(const std::uint8_t* data, std::size_t size) {
    setUp();
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromBuffer(text);
    std::size_t sum = 0;
    if (root)
        walk(root.get(), sum);
    else if (HXMLWInterface::lastError().empty())
        std::abort();  // a failed read always says why
    return 0;
}

// Sets an environment variable for one scope and puts the old value back.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const std::string& value) : m_name(name) {
        const char* old = std::getenv(name);
        m_had = old != nullptr;
        if (old)
            m_old = old;
        ::setenv(name, value.c_str(), 1);
    }
    ~ScopedEnv() {
        if (m_had)
            ::setenv(m_name, m_old.c_str(), 1);
        else
            ::unsetenv(m_name);
    }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    const char* m_name;
    std::string m_old;
    bool m_had = false;
};

// One small board whose interfaces the preferences can reach.
const char* const kPreferenceBoard =
    "<?xml version=\"1.0\"?>\n<board schema_version=\"2.1\" vendor=\"fz\" name=\"b\">\n"
    "<compatible_board_revisions><revision id=\"0\">1.0</revision></compatible_board_revisions>\n"
    "<file_version>1.0</file_version><description>d</description>\n"
    "<components><component name=\"part0\" display_name=\"FPGA\" type=\"fpga\" part_name=\"p\">"
    "<interfaces><interface name=\"led\" type=\"korvelhw:interface:gpio_rtl:1.0\" mode=\"master\"/>"
    "<interface name=\"uart\" type=\"KorvelHW:Interface:UART_rtl:1.0\" mode=\"Slave\"/></interfaces>"
    "</component></components>\n</board>\n";

// The installation's interface preferences file, read by a catalogue whose
// only data directory holds it and one board.
int preferences(const std::uint8_t* data, std::size_t size) {
    setUp();
    const std::string dir = scratch().fresh("prefs");
    fs::create_directories(dir + "/boards/board_files/b/1.0");
    writeFile(dir + "/boards/board_files/b/1.0/board.xml", kPreferenceBoard);
    writeFile(dir + "/boards/board_interface_preferences.xml", std::string(reinterpret_cast<const char*>(data), size));
    ScopedEnv dataDirs("ZR_DATA_DIRS", dir);
    setParam("board.validateXML", false);
    HBOBoardCReposMgr::getGlobal();
    HBOBoardCReposMgr::release();
    return 0;
}

// Lines of the input as the arguments: the first two are compared both ways,
// each is split as a name, and the whole input is read as a Tcl list.
int utilities(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t nl = text.find('\n');
    const std::string a = text.substr(0, nl);
    const std::string b = nl == std::string::npos ? std::string() : text.substr(nl + 1, text.find('\n', nl + 1) - nl - 1);
    for (const std::string& s : {a, b}) {
        if (HBOBoardUtils::version_compare(s, s) != 0)
            std::abort();  // every version is equal to itself
        HBOBoardUtils::isEqualOrGreater(s, s);
        HBOBoardUtils::getBoardNameFromBoardPart(s);
        HBOBoardUtils::getBoardPartNameFromVLNV(s);
        HBOBoardUtils::getBoardKeyFromBoardPart(s);
    }
    HBOBoardUtils::version_compare(a, b);
    HBOBoardUtils::isEqualOrGreater(a, b);
    HBOBoardUtils::isEqualOrGreater(b, a);
    const std::vector<std::string> list = HBOBoardUtils::parseTclList(text);
    HBOBoardUtils::parseTclList(HBOBoardUtils::asTclSpaceSeparatedStr(list));
    return 0;
}

// Standard output goes nowhere while it lives.
class CoutSink {
public:
    CoutSink() : m_was(std::cout.rdbuf(m_sink.rdbuf())) {}
    ~CoutSink() { std::cout.rdbuf(m_was); }
    CoutSink(const CoutSink&) = delete;
    CoutSink& operator=(const CoutSink&) = delete;

private:
    std::ostringstream m_sink;
    std::streambuf* m_was;
};

// The migration tool's three file models, read from a bundle and written out.
int migrationModels(const std::uint8_t* data, std::size_t size) {
    setUp();
    const Bundle bundle = splitBundle(data, size);
    const std::string in = writeBundle(bundle, "migrate-in");
    const std::string out = scratch().fresh("migrate-out");
    // The board file model lists its components on standard output. Every
    // file can be opened here, so no exception may leave the models.
    CoutSink quiet;
    HBMBoard board;
    board.parseBoardFile(in + "/board.xml");
    board.parsePins(in + "/part0_pins.xml");
    board.parsePresets(in + "/preset.xml");
    board.writeBoardFile(out);
    board.writePinsFile(out);
    board.writePresetsFile(out);
    return 0;
}

}  // namespace

Bundle splitBundle(const std::uint8_t* data, std::size_t size) {
    Bundle bundle;
    bundle.files.push_back(Bundle::File{"board.xml", std::string()});
    if (size == 0)
        return bundle;
    bundle.switches = data[0] & 0x0f;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    const std::string marker = kFileMarker;
    std::string name = "board.xml";
    std::size_t pos = 0;
    for (;;) {
        // The next marker at the start of a line; the line feed before it
        // belongs to neither file.
        std::size_t end, next;
        if (text.compare(pos, marker.size(), marker) == 0) {
            end = next = pos;
        } else {
            end = text.find("\n" + marker, pos);
            next = end == std::string::npos ? end : end + 1;
        }
        if (validName(name))
            putFile(bundle, name, text.substr(pos, end == std::string::npos ? end : end - pos));
        if (next == std::string::npos)
            return bundle;
        const std::size_t eol = text.find('\n', next);
        const std::size_t nameAt = next + marker.size();
        name = text.substr(nameAt, eol == std::string::npos ? eol : eol - nameAt);
        if (eol == std::string::npos) {
            // A marker on the last line: an empty file.
            if (validName(name))
                putFile(bundle, name, std::string());
            return bundle;
        }
        pos = eol + 1;
    }
}

std::string joinBundle(const Bundle& bundle) {
    std::string out(1, static_cast<char>('0' + (bundle.switches & 0x0f)));
    for (const Bundle::File& f : bundle.files)
        if (f.name == "board.xml")
            out += f.text;
    for (const Bundle::File& f : bundle.files)
        if (f.name != "board.xml")
            out += "\n" + std::string(kFileMarker) + f.name + "\n" + f.text;
    return out;
}

const std::vector<Target>& targets() {
    static const std::vector<Target> all = {
        {"board_reader", boardReader}, {"schema1_reader", schema1Reader},  {"xml_tree", xmlTree},
        {"preferences", preferences},  {"utilities", utilities},          {"migration_models", migrationModels},
    };
    return all;
}

Entry findTarget(const std::string& name) {
    for (const Target& t : targets())
        if (name == t.name)
            return t.run;
    return nullptr;
}

namespace {
// The readers speak through numbered messages only: text that the XML
// library would print on its own is a finding.
[[noreturn]] void strayOutput(const char* text) {
    std::fprintf(stderr, "the XML library printed on its own: %s\n", text ? text : "");
    std::abort();
}
void strayStructured(void*, xmlErrorPtr error) { strayOutput(error ? error->message : nullptr); }
void strayGeneric(void*, const char* format, ...) { strayOutput(format); }
}  // namespace

void setUp() {
    static const bool done = [] {
        ComMsgMgr::setPrintToStderr(false);
        xmlSetStructuredErrorFunc(nullptr, strayStructured);
        xmlSetGenericErrorFunc(nullptr, strayGeneric);
#ifdef ZR_FUZZ_DATA_DIR
        ::setenv("ZR_DATA_DIRS", ZR_FUZZ_DATA_DIR, 0);
#endif
        scratch();
        return true;
    }();
    (void)done;
}

}  // namespace zrfuzz

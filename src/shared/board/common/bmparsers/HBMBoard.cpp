#include "HBMBoard.h"

#include <fstream>
#include <iostream>
#include <memory>

#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOXmlFileLoader.h"
#include "HEXAll.h"
#include "HXMLWInterface.h"
#include "xp_format.h"

namespace {

// The one join of the tool: a "/" between the two unless `dir` ends in one.
std::string inDir(const std::string& dir, const std::string& name) {
    return dir + (!dir.empty() && dir.back() == '/' ? "" : "/") + name;
}

// A file refused for its kind or size, or for a broken parse bound, is told
// as every reader tells it and reads as no document; the driver goes on.
std::shared_ptr<HXMLWElement> readDocument(const std::string& path) {
    if (!HBOXmlFileLoader::admitted(path))
        return nullptr;
    try {
        std::shared_ptr<HXMLWElement> root;
        if (!isl::iostreams::xp::is_xp_format(path))
            root = HXMLWInterface::readFromFile(path);
        else
            root = HXMLWInterface::readFromBuffer(HBOXmlFileLoader::readPackedText(path));
        if (!root && !HXMLWInterface::lastBound().empty())
            HBOXmlFileLoader::refuseBound(path, HXMLWInterface::lastBound());
        return root;
    } catch (const HEXError& e) {
        if (!HBOXmlFileLoader::isRefusal(e))
            throw;
        e.print();
        return nullptr;
    }
}

template <class Model>
bool parseInto(Model& model, const std::string& path) {
    std::shared_ptr<HXMLWElement> root = readDocument(path);
    if (!root)
        return false;
    // A model that gave up halfway keeps what it read; that still counts.
    model.parse(root.get());
    return true;
}

template <class Model>
bool writeFrom(const Model& model, const std::string& dir, const char* name) {
    const std::string file = inDir(dir, name);
    std::ofstream out(file, std::ios::out | std::ios::trunc);
    if (!out) {
        std::cout << "Cannot open" << file << "for output." << "\n";
        return false;
    }
    model.write(out);
    out.close();
    return true;
}

}  // namespace

HBMBoard::HBMBoard() = default;
HBMBoard::~HBMBoard() = default;

bool HBMBoard::XmlFilePath(const std::string& dir, std::string name, std::string& out) {
    const std::string joined = inDir(dir, name);
    const boost::filesystem::path candidate(joined);
    boost::system::error_code ec;
    const boost::filesystem::file_type type = boost::filesystem::status(candidate, ec).type();
    if (type == boost::filesystem::status_error || type == boost::filesystem::file_not_found) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-36@%s", joined);
        return false;
    }
    out = candidate.string();
    return true;
}

bool HBMBoard::parseBoardFile(std::string path) { return parseInto(m_board, path); }
bool HBMBoard::parsePins(std::string path) { return parseInto(m_pins, path); }
bool HBMBoard::parsePresets(std::string path) { return parseInto(m_presets, path); }

bool HBMBoard::writeBoardFile(std::string dir) { return writeFrom(m_board, dir, "board.xml"); }
bool HBMBoard::writePinsFile(std::string dir) { return writeFrom(m_pins, dir, "part0_pins.xml"); }
bool HBMBoard::writePresetsFile(std::string dir) { return writeFrom(m_presets, dir, "preset.xml"); }

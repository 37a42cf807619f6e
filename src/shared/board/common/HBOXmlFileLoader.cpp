#include "HBOXmlFileLoader.h"

#include <string>

#include <boost/iostreams/device/array.hpp>
#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

#include "ComMsgMgr.h"
#include "HEXAll.h"
#include "HUTFile.h"
#include "HXMLWInterface.h"
#include "xp_format.h"

namespace HBOXmlFileLoader {

namespace {
struct HandedTree {
    std::string file;
    std::shared_ptr<HXMLWElement> root;
};
thread_local HandedTree t_handed;
}  // namespace

Handover::Handover(const std::string& file, std::shared_ptr<HXMLWElement> root) {
    t_handed.file = file;
    t_handed.root = std::move(root);
}

Handover::~Handover() {
    t_handed.file.clear();
    t_handed.root.reset();
}

void refuseFile(const std::string& file, const std::string& why) {
    throw HEXError(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board",
                                                           ComMsgMgr::MSG_CRITICAL_WARNING, "@49-900@%s%s", file, why));
}

void admit(const std::string& file) {
    const std::string why = HUTFileUtils::inputRefusal(file);
    if (!why.empty())
        refuseFile(file, why);
}

bool admitted(const std::string& file) {
    try {
        admit(file);
        return true;
    } catch (const HEXError& e) {
        e.print();
        return false;
    }
}

bool isRefusal(const HEXError& e) {
    const std::string id = e.getMsg().getId();
    return id == "49-900" || id == "49-901";
}

void refuseBound(const std::string& file, const std::string& bound) {
    throw HEXError(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board",
                                                           ComMsgMgr::MSG_CRITICAL_WARNING, "@49-901@%s%s", file,
                                                           bound));
}

namespace {

// The whole unpacked text of `in`, each line ended: a small packed file may
// unpack to any size, so the bound holds for the text.
std::string readUnpacked(const std::string& file, std::istream& in) {
    std::string text;
    char chunk[64 * 1024];
    while (in.read(chunk, sizeof chunk) || in.gcount() > 0) {
        text.append(chunk, static_cast<std::size_t>(in.gcount()));
        if (text.size() > HUTFileUtils::kMaxInputBytes)
            refuseFile(file, "unpacked, it has more than the " + std::to_string(HUTFileUtils::kMaxInputBytes) +
                                 " bytes an input file may have");
    }
    if (!text.empty() && text.back() != '\n')
        text += '\n';
    return text;
}

}  // namespace

std::string readPackedText(const std::string& file) {
    admit(file);
    boost::iostreams::filtering_stream<boost::iostreams::input> in;
    isl::iostreams::xp_autodetect()(file, in);
    if (in.fail() || in.bad())
        throw HEXError(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-110@%s", file));
    return readUnpacked(file, in);
}

std::shared_ptr<HXMLWElement> loadRoot(const std::string& file) {
    std::shared_ptr<HXMLWElement> root;
    if (t_handed.root && t_handed.file == file) {
        root = std::move(t_handed.root);
        t_handed.file.clear();
    } else {
        // The file is opened once: whether it is packed shows in its first bytes.
        // One buffer per thread, kept from file to file, costs no fresh memory per read.
        thread_local std::string text;
        std::string why;
        if (!HUTFileUtils::readInput(file, text, why))
            refuseFile(file, why);
        if (!isl::iostreams::xp::is_xp_format(text.data(), text.size())) {
            root = HXMLWInterface::readFromBuffer(text, file);
        } else {
            boost::iostreams::filtering_stream<boost::iostreams::input> in;
            in.push(boost::iostreams::gzip_decompressor());
            in.push(boost::iostreams::array_source(text.data(), text.size()));
            root = HXMLWInterface::readFromBuffer(readUnpacked(file, in));
        }
        if (!root) {
            // The parser's place and text of the fault travel beside the message.
            const ComMsgPositionScope at(file, HXMLWInterface::lastErrorLine(), HXMLWInterface::lastErrorColumn());
            if (!HXMLWInterface::lastBound().empty())
                refuseBound(file, HXMLWInterface::lastBound());
            ComMsgMgrInstance msg = ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board",
                                                                            ComMsgMgr::MSG_ERROR, "@49-111@%s", file);
            msg.setDetail(HXMLWInterface::lastError());
            throw HEXError(msg);
        }
    }
    if (!root)
        throw HEXError(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-111@%s", file));
    return root;
}

}  // namespace HBOXmlFileLoader

#include "HBOXmlFileLoader.h"

#include <string>

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

std::string readPackedText(const std::string& file) {
    admit(file);
    boost::iostreams::filtering_stream<boost::iostreams::input> in;
    isl::iostreams::xp_autodetect()(file, in);
    if (in.fail() || in.bad())
        throw HEXError(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-110@%s", file));
    std::string text;
    char chunk[64 * 1024];
    while (in.read(chunk, sizeof chunk) || in.gcount() > 0) {
        text.append(chunk, static_cast<std::size_t>(in.gcount()));
        // A small packed file may unpack to any size: the bound holds for the text.
        if (text.size() > HUTFileUtils::kMaxInputBytes)
            refuseFile(file, "unpacked, it has more than the " + std::to_string(HUTFileUtils::kMaxInputBytes) +
                                 " bytes an input file may have");
    }
    if (!text.empty() && text.back() != '\n')
        text += '\n';
    return text;
}

std::shared_ptr<HXMLWElement> loadRoot(const std::string& file) {
    std::shared_ptr<HXMLWElement> root;
    if (t_handed.root && t_handed.file == file) {
        root = std::move(t_handed.root);
        t_handed.file.clear();
    } else {
        admit(file);
        if (!isl::iostreams::xp::is_xp_format(file))
            root = HXMLWInterface::readFromFile(file);
        else
            root = HXMLWInterface::readFromBuffer(readPackedText(file));
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

#include "HBOXmlFileLoader.h"

#include <string>

#include <boost/iostreams/filtering_stream.hpp>

#include "ComMsgMgr.h"
#include "HEXAll.h"
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

std::string readPackedText(const std::string& file) {
    boost::iostreams::filtering_stream<boost::iostreams::input> in;
    isl::iostreams::xp_autodetect()(file, in);
    if (in.fail() || in.bad())
        throw HEXError(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-110@%s", file));
    std::string text, line;
    while (std::getline(in, line)) {
        text += line;
        text += '\n';
    }
    return text;
}

std::shared_ptr<HXMLWElement> loadRoot(const std::string& file) {
    std::shared_ptr<HXMLWElement> root;
    if (t_handed.root && t_handed.file == file) {
        root = std::move(t_handed.root);
        t_handed.file.clear();
    } else if (!isl::iostreams::xp::is_xp_format(file)) {
        root = HXMLWInterface::readFromFile(file);
    } else {
        root = HXMLWInterface::readFromBuffer(readPackedText(file));
    }
    if (!root)
        throw HEXError(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-111@%s", file));
    return root;
}

}  // namespace HBOXmlFileLoader

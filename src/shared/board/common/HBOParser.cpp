#include "HBOParser.h"

#include <memory>

#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardParser.h"
#include "HBOBoardUtils.h"
#include "HBOPartParser.h"
#include "HBOXmlFileLoader.h"
#include "HEXAll.h"
#include "HXMLWElement.h"

HBOParser::HBOParser() = default;
HBOParser::~HBOParser() = default;

bool HBOParser::parseFile(const std::string& path, HBOBoard* board) {
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.parse", ComMsgMgr::MSG_DEBUG1,
                                   "HBOParser parsing '%s'\n", path);
    boost::system::error_code ec;
    if (!boost::filesystem::exists(path, ec)) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-36@%s", path);
        return false;
    }
    if (!board || path.empty())
        return false;
    try {
        return dispatch(path, board);
    } catch (const std::string& text) {
        ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_CRITICAL_WARNING, "@49-4@%s%s", path,
                                 text.empty() ? std::string() : ", " + text);
    } catch (const HEXError& e) {
        // A refused file says why; any other error keeps the general message.
        if (HBOXmlFileLoader::isRefusal(e)) {
            e.print();
        } else {
            // The general message takes the place and the parser's words of the error it stands for.
            ComMsgMgrInstance msg = ComMsgMgrInstance::createInstance::eval(
                1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_CRITICAL_WARNING, "@49-59@%s", path);
            msg.setPosition(e.getMsg().getPosition());
            msg.setDetail(e.getMsg().getDetail());
            ComMsgMgr::sendMessage(msg);
        }
    } catch (...) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_CRITICAL_WARNING, "@49-59@%s", path);
    }
    return false;
}

bool HBOParser::dispatch(const std::string& path, HBOBoard* board) {
    std::shared_ptr<HXMLWElement> root = HBOXmlFileLoader::loadRoot(path);
    const std::string version = HBOBoardUtils::valueOrEmpty(root->getAttribute("schema_version"));
    // The chosen reader loads the same file first: it gets this tree instead.
    HBOXmlFileLoader::Handover handover(path, std::move(root));
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.parse", ComMsgMgr::MSG_DEBUG1,
                                   "HBOParser found schema version '%s'\n", version);
    if (HBOBoardUtils::isEqualOrGreater(version, "2.0") && HBOBoardUtils::isV2SchemaEnabled()) {
        board->setBoardSchemaVersion(version);
        std::unique_ptr<HBOBoardParser> reader(new HBOBoardParser());
        bool validated = false;
        return reader->parseFile(path, board, "", "", validated, nullptr);
    }
    board->setBoardSchemaVersion(version == "1.1" ? "1.1" : "1.0");
    std::unique_ptr<HBOPartParser> reader(new HBOPartParser());
    return reader->parseFile(path, board);
}

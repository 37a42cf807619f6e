#include "HBOLegacyGrammar.h"

#include <memory>

#include <boost/filesystem.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>

#include "ComMsgMgr.h"
#include "HEXAll.h"
#include "HBOResolver.h"
#include "HBOXercesReader.h"
#include "HUTEnv.h"

using namespace xercesc;

namespace {

std::string toUtf8(const XMLCh* text) {
    if (!text)
        return std::string();
    char* s = XMLString::transcode(text);
    std::string out(s ? s : "");
    XMLString::release(&s);
    return out;
}

[[noreturn]] void raise(const char* format, const std::string& a) {
    throw HEXError(
        ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR, format, a));
}

[[noreturn]] void raise(const char* format, const std::string& a, const std::string& b) {
    throw HEXError(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                           format, a, b));
}

}  // namespace

namespace HBOLegacyGrammar {

void preParse(const std::string& path, const char* dtdName) {
    DefaultHandler handler;
    try {
        HBOXercesReader reader;
        std::string grammar;
        for (const std::string& dir : HUTEnv::getQDEDataDirList()) {
            std::string dtd = dir + "/boards/board_schemas/1.0/" + dtdName;
            boost::system::error_code ec;
            if (!boost::filesystem::exists(dtd, ec))
                continue;
            if (reader.useGrammar(dtd))
                grammar = dtd;
            break;
        }
        // Whatever the DOCTYPE names, only our grammar is read, or nothing:
        // without one, a DOCTYPE naming a file that is not there must not end the read.
        HBOResolver resolver(grammar);
        reader.setValidation(false);
        reader.setHandlers(&resolver, &handler);
        reader.parse(path);
    } catch (const SAXParseException& e) {
        const ComMsgPositionScope at(path, static_cast<int>(e.getLineNumber()), static_cast<int>(e.getColumnNumber()));
        raise("@49-115@%s%s", toUtf8(e.getMessage()), path);
    } catch (const XMLException& e) {
        raise("@49-115@%s%s", toUtf8(e.getMessage()), path);
    } catch (const std::string& text) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-44@%s", text);
    } catch (const HEXError&) {
        throw;
    } catch (...) {
        raise("@49-112@%s", path);
    }
}

}  // namespace HBOLegacyGrammar

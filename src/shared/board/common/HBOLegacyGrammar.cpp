#include "HBOLegacyGrammar.h"

#include <memory>

#include <boost/filesystem.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/common/Grammar.hpp>

#include "ComMsgMgr.h"
#include "HEXAll.h"
#include "HBOXmlFileLoader.h"
#include "HUTEnv.h"
#include "xp_format.h"

using namespace xercesc;

namespace {

void ensureXercesReady() {
    static const bool ready = [] {
        XMLPlatformUtils::Initialize();
        return true;
    }();
    (void)ready;
}

std::string toUtf8(const XMLCh* text) {
    if (!text)
        return std::string();
    char* s = XMLString::transcode(text);
    std::string out(s ? s : "");
    XMLString::release(&s);
    return out;
}

struct XStr {
    explicit XStr(const std::string& s) : text(XMLString::transcode(s.c_str())) {}
    ~XStr() { XMLString::release(&text); }
    XMLCh* text;
};

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
    ensureXercesReady();
    std::unique_ptr<SAX2XMLReader> reader(XMLReaderFactory::createXMLReader());
    DefaultHandler handler;
    try {
        bool loaded = false;
        for (const std::string& dir : HUTEnv::getQDEDataDirList()) {
            std::string dtd = dir + "/boards/board_schemas/1.0/" + dtdName;
            boost::system::error_code ec;
            if (!boost::filesystem::exists(dtd, ec))
                continue;
            XStr dtdPath(dtd);
            reader->loadGrammar(dtdPath.text, Grammar::DTDGrammarType, true);
            loaded = true;
            break;
        }
        // Without a grammar of our own, a DOCTYPE naming a file that is not
        // there must not end the read.
        if (!loaded)
            reader->setFeature(XMLUni::fgXercesLoadExternalDTD, false);
        reader->setFeature(XMLUni::fgXercesUseCachedGrammarInParse, true);
        reader->setContentHandler(&handler);
        reader->setErrorHandler(&handler);
        XStr docPath(path);
        if (isl::iostreams::xp::is_xp_format(path)) {
            // A packed file is parsed as the text it holds, as the tree reader sees it.
            const std::string text = HBOXmlFileLoader::readPackedText(path);
            MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), docPath.text);
            reader->parse(source);
        } else {
            reader->parse(docPath.text);
        }
    } catch (const SAXParseException& e) {
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

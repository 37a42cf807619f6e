// The frame of the schema 2 reader: parseFile, the board file reader, loading
// plain and packed XML, the validation step and the deferred messages. The
// section readers live in HBOBoardParser<Section>.cpp beside this file.
#include "HBOBoardParser.h"

#include <algorithm>
#include <cctype>
#include <memory>

#include <boost/filesystem.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardUtils.h"
#include "HBOResolver.h"
#include "HBOXercesReader.h"
#include "HBOSAX2Handler.h"
#include "HBOXmlFileLoader.h"
#include "HEXAll.h"
#include "HPAParamMgr.h"
#include "HSTStringUtils.h"
#include "HUTEnv.h"
#include "HXMLWInterface.h"
#include "xp_format.h"

namespace fs = boost::filesystem;

namespace {

bool pathExists(const std::string& path) {
    boost::system::error_code ec;
    return !path.empty() && fs::exists(fs::status(path, ec));
}

// Runs `step`; true when it came back normally. What it throws ends it: an
// HEXError is sent, the text of any other exception or thrown string becomes
// the reason, anything else leaves no reason.
template <class Step>
bool guarded(Step step, std::string& reason) {
    try {
        step();
        return true;
    } catch (const HEXError& e) {
        e.print();
    } catch (const std::exception& e) {
        reason = e.what();
    } catch (const std::string& text) {
        reason = text;
    } catch (...) {
    }
    return false;
}

bool boolParam(HPAParamMgr* mgr, const char* name, bool& out) {
    if (HPAParam* p = mgr ? mgr->findParam(name) : nullptr) {
        out = p->getValueAsBool();
        return true;
    }
    return false;
}

// Xerces needs one initialisation per process; the call is reference counted,
// so sharing the process with the platform's XML reader is fine.
void ensureXercesInitialised() {
    static const bool initialised = [] {
        xercesc::XMLPlatformUtils::Initialize();
        return true;
    }();
    (void)initialised;
}

std::string transcode(const XMLCh* text) {
    std::string out;
    if (!text)
        return out;
    if (char* t = xercesc::XMLString::transcode(text)) {
        out = t;
        xercesc::XMLString::release(&t);
    }
    return out;
}

// The unpacked text of a packed file, each line followed by a line feed.
}  // namespace

HBOBoardParser::HBOBoardParser() {
    HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
    bool validate = false;
    if (boolParam(mgr, "board.validateXML", validate)) {
        reportEnabled = validate;
        validateEnabled = validate;
    }
    boolParam(mgr, "board.enable2020Checks", checks2020Enabled);
}

HBOBoardParser::~HBOBoardParser() = default;

bool HBOBoardParser::parseFile(const std::string& file, HBOBoard* boardIn, const std::string& dtdDir,
                               const std::string& overrideDir, bool& xmlValidatedOut, HBOParsedVLNVs* vlnvs) {
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.parse", ComMsgMgr::MSG_DEBUG1,
                                   "HBOBoardParser parsing '%s'\n", file);
    parsedVlnvs = vlnvs;
    xmlValidated = true;
    dtdDirectory = dtdDir;
    xmlOverrideDirectory = overrideDir;
    deferredMessages.clear();
    readFrom.clear();
    readInterfaceNames.clear();
    portOwners.clear();

    if (!pathExists(file)) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-54@%s", file);
        dtdDirectory.clear();
        xmlOverrideDirectory.clear();
        return false;
    }

    board = boardIn;
    bool result = false;
    std::string reason;
    ComMsgPositionScope::takeUnwound();
    const bool cameBack = guarded([&] { result = readBoardFile(file, reason); }, reason);
    // A read that an exception ended is placed where the exception left the reader.
    const ComMsgPosition endedAt = cameBack ? ComMsgPosition() : ComMsgPositionScope::takeUnwound();

    xmlValidatedOut = xmlValidated;
    dtdDirectory.clear();
    xmlOverrideDirectory.clear();
    if (cameBack) {
        for (const DeferredMessage& m : deferredMessages)
            result = result && m.ok;
        flushDeferredMessages();
    }

    if (!result) {
        const ComMsgPositionScope at(endedAt.file, endedAt.line, endedAt.column);
        ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_CRITICAL_WARNING, "@49-56@%s%s",
                                 file, reason.empty() ? std::string() : ", " + reason);
    }
    board = nullptr;
    readFrom.clear();
    return result;
}

bool HBOBoardParser::readSideFile(const std::string& name, const char* missingFormat, const char* failedFormat,
                                  const std::function<bool(const std::string&)>& read) {
    std::string path = name;
    const std::string parent = boost::filesystem::path(name).parent_path().string();
    if (parent.empty() || parent == ".")
        path = boardDirectory() + HBOBoardUtils::getDirSeparator() + name;
    if (!pathExists(path)) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, missingFormat, path);
        return false;
    }
    bool ok = false;
    std::string reason;
    guarded([&] { ok = read(path); }, reason);
    // A side file that failed to read (or to validate) ends the board's read.
    if (!ok)
        throw HEXError(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board",
                                                               ComMsgMgr::MSG_CRITICAL_WARNING, failedFormat, path,
                                                               reason));
    return true;
}

bool HBOBoardParser::readBoardFile(const std::string& file, std::string& reason) {
    if (!board)
        return false;
    if (file.empty())
        return true;
    if (validateEnabled && !validateXml(file, "board"))
        return false;

    std::shared_ptr<HXMLWElement> rootPtr = loadXmlFile(file);
    HXMLWElement* root = rootPtr.get();

    if (HBOBoardUtils::isEqualOrGreater(getAttr(root, "schema_version"), "2.2"))
        checks2020Enabled = true;
    if (checks2020Enabled)
        ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.parse", ComMsgMgr::MSG_DEBUG1,
                                       "HBOBoardParser: 2020.1 DRC checks enabled for '%s'\n", file);

    board->setBoardFile(file);
    std::string changeLog = directoryOf(file) + HBOBoardUtils::getDirSeparator() + "changelog.txt";
    if (pathExists(changeLog))
        board->setChangeLogFilename(changeLog);

    if (!readHeader(root, reason) || !readParameters(root, reason) || !readJumpers(root, reason) ||
        !readPowerRails(root, reason) || !readBoardDataProperties(root, reason) || !readComponents(root, reason) ||
        !readJtagChains(root, reason) || !readIpAssociatedRules(root, reason) || !readParamTable(root, reason) ||
        !readConnections(root, reason))
        return false;

    board->updateEnablement();
    if (!checkClockInterfaces() || !checkFpgaInterfaces())
        return false;
    if (!readConnectedBoards(root, reason) || !checkRevisionsAndModes())
        return false;
    return true;
}

std::shared_ptr<HXMLWElement> HBOBoardParser::loadXmlFile(const std::string& file) {
    return HBOXmlFileLoader::loadRoot(file);
}

bool HBOBoardParser::validateXml(const std::string& file, const std::string& grammar) {
    ComMsgMgr::sendScopedMsg::eval(2, __FILE__, __LINE__, "board", "board.parse", ComMsgMgr::MSG_DEBUG1,
                                   "HBOBoardParser performing XML validation on '%s' using '%s'\n", file, grammar);
    ensureXercesInitialised();
    const std::string sep = HBOBoardUtils::getDirSeparator();
    bool result = true;
    try {
        std::string document = file;
        bool lineShift = false;
        if (!xmlOverrideDirectory.empty()) {
            std::string overrideFile = xmlOverrideDirectory + sep + grammar + ".xml";
            if (pathExists(overrideFile)) {
                document = overrideFile;
                lineShift = true;
            }
        }

        // The handler and the resolver outlive the reader that points at them.
        HBOSAX2Handler handler(file, lineShift);
        std::unique_ptr<HBOResolver> resolver;
        HBOXercesReader reader;

        std::string dtdPath;
        bool found = false;
        if (!dtdDirectory.empty()) {
            std::string candidate = dtdDirectory + sep + grammar + ".dtd";
            if (pathExists(candidate)) {
                dtdPath = candidate;
                found = reader.useGrammar(candidate);
            }
        }
        if (!found) {
            for (const std::string& dir : HUTEnv::getQDEDataDirList()) {
                dtdPath = dir + sep + "boards" + sep + "board_schemas" + sep + "current" + sep + grammar + ".dtd";
                if (pathExists(dtdPath) && reader.useGrammar(dtdPath))
                    break;
            }
        }

        reader.setValidation(true);
        if (!dtdPath.empty()) {
            ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_INFO, "@49-113@%s%s", file,
                                     dtdPath);
        } else {
            ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_INFO, "@49-114@%s", file);
        }
        resolver.reset(new HBOResolver(dtdPath));
        reader.setHandlers(resolver.get(), &handler);
        // A packed document is checked in its unpacked form, so that packed
        // and plain files validate alike and report the same lines.
        reader.parse(document);

        if (dtdPath.empty() || !resolver->wasAsked()) {
            ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-117@%s", file);
            xmlValidated = false;
            result = true;
        } else {
            result = handler.sendMessages() == 0;
        }
    } catch (const std::string& text) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-44@%s", text);
    } catch (const HEXError&) {
        throw;
    } catch (const xercesc::XMLException& e) {
        throw HEXError(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-115@%s%s", transcode(e.getMessage()), file));
    } catch (const xercesc::SAXException& e) {
        throw HEXError(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-115@%s%s", transcode(e.getMessage()), file));
    } catch (...) {
        throw HEXError(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-112@%s", file));
    }
    return result;
}

void HBOBoardParser::flushDeferredMessages() {
    // Without board.validateXML the faults still fail the board (their ok
    // flags have counted) but only the summary is shown.
    if (!reportEnabled)
        return;
    for (const DeferredMessage& m : deferredMessages)
        ComMsgMgr::sendMessage(m.msg);
}

void HBOBoardParser::addDeferredMessage(const ComMsgMgrInstance& msg, bool ok) {
    deferredMessages.emplace_back(msg, ok);
}

const HXMLWElement* HBOBoardParser::elementOf(const void* object) const {
    auto it = readFrom.find(object);
    return it == readFrom.end() ? nullptr : it->second;
}

void HBOBoardParser::deferCheck(const std::string& text, bool ok) {
    addDeferredMessage(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board",
                                                               ComMsgMgr::MSG_WARNING, "@49-69@%s%s", boardFile(),
                                                               text),
                       ok);
}

const std::string& HBOBoardParser::boardFile() const {
    static const std::string none;
    return board ? board->getBoardFile() : none;
}

std::string HBOBoardParser::boardDirectory() const {
    return directoryOf(boardFile());
}

// ---- Element helpers ----

bool HBOBoardParser::isNamed(const HXMLWElement* e, const char* name) {
    const char* tag = e ? e->getTagName() : nullptr;
    return tag && HSTStringUtils::iequals(tag, name);
}

bool HBOBoardParser::hasAttr(const HXMLWElement* e, const char* name) {
    return e && e->getAttribute(name) != nullptr;
}

std::string HBOBoardParser::getAttr(const HXMLWElement* e, const char* name) {
    const char* value = e ? e->getAttribute(name) : nullptr;
    return value ? value : "";
}

std::string HBOBoardParser::getText(const HXMLWElement* e) {
    const char* text = e ? e->getText() : nullptr;
    return text ? text : "";
}

std::string HBOBoardParser::directoryOf(const std::string& file) {
    // A bare file name lies in the working directory, not at the root.
    std::string dir = fs::path(file).parent_path().string();
    return dir.empty() ? "." : dir;
}

std::string HBOBoardParser::toLower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string HBOBoardParser::toUpper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

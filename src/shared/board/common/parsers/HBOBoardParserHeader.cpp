// The root of board.xml: the board's identity, revisions, images and
// description, and the two small sections parameters and jumpers.
#include <map>
#include <string>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardParser.h"
#include "HBOBoardUtils.h"
#include "HBOImage.h"
#include "HBOJumper.h"
#include "HBOParameter.h"
#include "HEXAll.h"
#include "HSTStringUtils.h"
#include "HUTConvert.h"

namespace {
const char* const kNullRoot = "Root XML element is NULL";
}

int HBOBoardParser::parseNonNegativeInt(const std::string& text, const std::string& label,
                                        const std::string& boardFile) {
    if (text.empty() || text.find_first_not_of(" 0123456789") != std::string::npos)
        throw HEXError(ComMsgMgrInstance::createInstance::eval(
            2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-69@%s%s", boardFile,
            label + " value \"" + text + "\" is not valid, must be a non-negative integer."));
    // Blanks alone, or a value beyond int, raise the standard exceptions,
    // which end the parse like any other std::exception.
    return std::stoi(text, nullptr, 10);
}

HBOParameter* HBOBoardParser::makeParameter(const HXMLWElement* e) {
    return new HBOParameter(getAttr(e, "name"), getAttr(e, "value"), getAttr(e, "value_type"),
                            getAttr(e, "value_min"), getAttr(e, "value_max"), getAttr(e, "readonly"));
}

HBOImage* HBOBoardParser::makeImage(const HXMLWElement* e) const {
    HBOImage* image = new HBOImage();
    image->setName(boardDirectory() + HBOBoardUtils::getDirSeparator() + getAttr(e, "name"));
    image->setDisplayName(getAttr(e, "display_name"));
    image->setSubType(getAttr(e, "sub_type"));
    std::string resolution = getAttr(e, "resolution");
    image->setResolution(resolution.empty() ? "high" : resolution);
    for (HXMLWElement* child : getChildElements(e))
        if (isNamed(child, "description"))
            image->setDescription(getText(child));
    return image;
}

bool HBOBoardParser::readHeader(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = kNullRoot;
        return false;
    }
    HBOChildElements children = getChildElements(root);
    if (children.empty())
        return false;
    // The root's attributes name the board and its preset file.
    const HBOElementScope atRoot(boardFile(), root);

    const std::string vendor = getAttr(root, "vendor");
    const std::string name = getAttr(root, "name");
    const std::string displayName = getAttr(root, "display_name");
    const std::string url = getAttr(root, "url");
    // Exact on purpose: "TRUE" does not make an integrated board.
    const bool integrated = getAttr(root, "is_integrated") == "true";
    const std::string presetFile = getAttr(root, "preset_file");
    bool supportsCed = true;
    const std::string ced = getAttr(root, "supports_ced");
    if (!ced.empty() && !HUTConvert::stringToBoolean(ced, supportsCed))
        supportsCed = false;

    // The interface reader needs the presets, so they come before any section.
    if (!presetFile.empty())
        readPresetFile(presetFile);

    std::string version;
    std::string description;
    std::string boardImage;
    for (HXMLWElement* child : children) {
        if (isNamed(child, "compatible_board_revisions")) {
            const HBOElementScope atRevisions(boardFile(), child);
            HBOChildElements revisions = getChildElements(child);
            if (revisions.empty()) {
                addDeferredMessage(ComMsgMgrInstance::createInstance::eval(
                    1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-97@%s", boardFile()));
                continue;
            }
            std::map<int, std::string> byId;
            for (HXMLWElement* revision : revisions) {
                const HBOElementScope atRevision(boardFile(), revision);
                byId[parseNonNegativeInt(getAttr(revision, "id"), "revision id", boardFile())] = getText(revision);
            }
            board->setCompatibleBoardRevisions(byId);
        } else if (isNamed(child, "images")) {
            for (HXMLWElement* imageElem : getChildElements(child)) {
                HBOImage* image = makeImage(imageElem);
                board->addImage(image);
                board->adoptImage(image);
                if (HSTStringUtils::iequals(image->getSubType(), "board") &&
                    HSTStringUtils::iequals(image->getResolution(), "high"))
                    boardImage = image->getName();
            }
        } else if (isNamed(child, "file_version")) {
            version = getText(child);
        } else if (isNamed(child, "description")) {
            description = getText(child);
        }
    }

    if (vendor.empty() || name.empty() || version.empty())
        addDeferredMessage(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_ERROR, "@49-108@%s", boardFile()));

    board->setName(vendor, name, version);
    board->setDescription(description);
    board->setDisplayName(displayName);
    board->setBoardImage(boardImage);
    board->setPresetFile(presetFile);
    board->setSpecUrl(url);
    board->setLongDesc(description);
    board->setSupportsCED(supportsCed);
    board->setIntegratedBoard(integrated);
    return true;
}

bool HBOBoardParser::readParameters(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = kNullRoot;
        return false;
    }
    for (HXMLWElement* section : getChildElements(root))
        if (isNamed(section, "parameters"))
            for (HXMLWElement* param : getChildElements(section))
                board->addParameter(makeParameter(param));
    return true;
}

bool HBOBoardParser::readJumpers(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = kNullRoot;
        return false;
    }
    for (HXMLWElement* section : getChildElements(root)) {
        if (!isNamed(section, "jumpers"))
            continue;
        for (HXMLWElement* jumperElem : getChildElements(section)) {
            // The object is made where its description stands: a jumper
            // without one makes none, a jumper with two makes two.
            for (HXMLWElement* child : getChildElements(jumperElem)) {
                if (!isNamed(child, "description"))
                    continue;
                HBOJumper* jumper = new HBOJumper();
                jumper->setOwner(board);
                jumper->setName(getAttr(jumperElem, "name"));
                jumper->setDefaultValue(HSTStringUtils::iequals(getAttr(jumperElem, "default_value"), "true"));
                jumper->setDescription(getText(child));
                board->addJumper(jumper);
                board->adoptJumper(jumper);
            }
        }
    }
    return true;
}

// The preset file (preset.xml): the IP settings that the design tool applies
// when a board interface is connected, keyed by preset procedure name.
#include <set>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardParser.h"
#include "HBOBoardUtils.h"
#include "HBOIpPreset.h"
#include "HBOParsedVLNVs.h"
#include "HEXAll.h"
#include "HSTStringUtils.h"

bool HBOBoardParser::readPresetFile(const std::string& presetFile) {
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.parse", ComMsgMgr::MSG_DEBUG2,
                                   "HBOBoardParser parsing preset file'%s'\n", presetFile);
    return readSideFile(presetFile, "@49-62@%s", "@49-63@%s%s",
                        [&](const std::string& path) { return readPresetXml(path); });
}

bool HBOBoardParser::readPresetXml(const std::string& file) {
    if (!board)
        return false;
    if (file.empty())
        return true;
    if (validateEnabled && !validateXml(file, "preset"))
        return false;

    std::shared_ptr<HXMLWElement> root = loadXmlFile(file);
    for (HXMLWElement* ipPreset : getChildElements(root.get())) {
        if (!isNamed(ipPreset, "ip_preset"))
            continue;
        const std::string procName = getAttr(ipPreset, "preset_proc_name");
        std::vector<HBOIpPreset*> presets;
        for (HXMLWElement* ip : getChildElements(ipPreset)) {
            HBOIpPreset* preset = new HBOIpPreset();
            preset->setPresetProcName(procName);
            if (readIp(preset, ip)) {
                presets.push_back(preset);
            }
            else
                delete preset;
        }
        if (procName.empty()) {
            // No key can reach these presets; the board would never hold them.
            for (HBOIpPreset* preset : presets)
                delete preset;
            continue;
        }
        // A later ip_preset of the same key replaces the list; the board frees
        // the replaced presets with the rest.
        board->setIpPreset(procName, presets);
        for (HBOIpPreset* preset : presets)
            board->adoptPreset(preset);
    }
    return true;
}

void HBOBoardParser::readIpIdentity(HBOIpPreset* preset, HXMLWElement* ip) {
    const std::string vendor = getAttr(ip, "vendor");
    const std::string library = getAttr(ip, "library");
    const std::string name = getAttr(ip, "name");
    std::string version = getAttr(ip, "version");
    std::string ipInterface = getAttr(ip, "ip_interface");
    // Recorded as written, before the defaults come in.
    if (parsedVlnvs)
        parsedVlnvs->addIpName(vendor + ":" + library + ":" + name + ":" + version);
    if (version.empty())
        version = "*";
    if (ipInterface.empty())
        ipInterface = "*";
    preset->setVendor(vendor);
    preset->setLibrary(library);
    preset->setName(name);
    preset->setVersion(version);
    preset->setIpInterface(ipInterface);
    preset->setOwner(board);
    preset->setPresetName(preset->getPresetProcName() + ":" + vendor + ":" + library + ":" + name + ":" + version +
                          ":" + ipInterface);
}

bool HBOBoardParser::readIp(HBOIpPreset* preset, HXMLWElement* ip) {
    if (!isNamed(ip, "ip"))
        return false;
    // The owner is set before the parameters so that a table file named
    // without a directory resolves beside the board file.
    readIpIdentity(preset, ip);
    for (HXMLWElement* child : getChildElements(ip)) {
        if (isNamed(child, "user_parameters"))
            readUserParameters(preset, child);
        else if (isNamed(child, "model_parameters"))
            readModelParameters(preset, child);
    }
    return true;
}

void HBOBoardParser::readUserParameters(HBOIpPreset* preset, HXMLWElement* params) {
    const std::string sep = HBOBoardUtils::getDirSeparator();
    for (HXMLWElement* p : getChildElements(params)) {
        const std::string name = getAttr(p, "name");
        if (isNamed(p, "user_hier_parameter")) {
            std::string value;
            buildHierValue(p, 0, value);
            if (!value.empty() && value[0] == ' ')
                value.erase(0, 1);
            preset->setParam(name, value);
            continue;
        }
        const std::string value = getAttr(p, "value");
        const std::string valueType = getAttr(p, "value_type");
        if (HSTStringUtils::iequals(valueType, "file")) {
            preset->setParam(name, boardDirectory() + sep + value);
            preset->setValueType("file");
        } else if (HSTStringUtils::iequals(valueType, "hier")) {
            std::string hier;
            buildHierValue(p, 0, hier);
            if (!hier.empty() && hier[0] == ' ')
                hier.erase(0, 1);
            preset->setParam(name, hier);
        } else {
            preset->setParam(name, value);
            if (!valueType.empty())
                preset->setValueType(valueType);
        }
    }
}

void HBOBoardParser::readModelParameters(HBOIpPreset* preset, HXMLWElement* params) {
    const std::string sep = HBOBoardUtils::getDirSeparator();
    for (HXMLWElement* p : getChildElements(params)) {
        const std::string name = getAttr(p, "name");
        const std::string value = getAttr(p, "value");
        const std::string valueType = getAttr(p, "value_type");
        if (HSTStringUtils::iequals(valueType, "file")) {
            preset->setParam(name, boardDirectory() + sep + value);
            preset->setValueType("file");
        } else {
            preset->setParam(name, value);
            preset->setValueType(valueType);
        }
    }
}

void HBOBoardParser::buildHierValue(const HXMLWElement* e, int depth, std::string& out) {
    if (depth == 0)
        out += ' ';
    out += getAttr(e, "name");
    out += ' ';
    const bool hierForm = isNamed(e, "user_hier_parameter");
    if (getAttr(e, "value_type") == "hier" || hierForm) {
        std::vector<HXMLWElement*> parts;
        for (HXMLWElement* child : getChildElements(e)) {
            // Under user_hier_parameter only the two parameter forms count,
            // by their exact names.
            const char* tag = child->getTagName();
            const std::string childTag = tag ? tag : "";
            if (!hierForm || childTag == "user_parameter" || childTag == "user_hier_parameter")
                parts.push_back(child);
        }
        if (parts.size() > 1)
            out += '{';
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (i > 0)
                out += ' ';
            out += '{';
            buildHierValue(parts[i], depth + 1, out);
            out += '}';
        }
        if (parts.size() > 1)
            out += '}';
    } else {
        out += getAttr(e, "value");
    }
}

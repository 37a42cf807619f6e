#include "HBOCase.h"
#include "HBOPartParser.h"

#include <cstdlib>
#include <memory>
#include <vector>

#include <boost/algorithm/string.hpp>
#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBoardUtils.h"
#include "HBOElementScope.h"
#include "HBOBusIf.h"
#include "HBOIpPreset.h"
#include "HBOLegacyGrammar.h"
#include "HBOModelPort.h"
#include "HBOPinProps.h"
#include "HBOPortMap.h"
#include "HBOXmlFileLoader.h"
#include "HEXAll.h"
#include "HXMLWElement.h"

namespace fs = boost::filesystem;

namespace {

// Element names of schema 1 files are matched without regard to case.
bool isNamed(const HXMLWElement* e, const char* name) {
    return e && HBOCase::iequals(HBOBoardUtils::valueOrEmpty(e->getTagName()), name);
}

std::string attr(const HXMLWElement* e, const char* name) { return HBOBoardUtils::valueOrEmpty(e->getAttribute(name)); }

bool hasAttr(const HXMLWElement* e, const char* name) { return e->getAttribute(name) != nullptr; }

std::vector<HXMLWElement*> children(const HXMLWElement* e) {
    std::shared_ptr<HXMLWElementList> list;
    e->getChildren(list);
    return list ? *list : std::vector<HXMLWElement*>();
}

bool pathExists(const std::string& path) {
    boost::system::error_code ec;
    return fs::exists(path, ec);
}

std::string directoryOf(const std::string& file) { return fs::path(file).parent_path().string(); }

[[noreturn]] void raise(const char* format, const std::string& a) {
    throw HEXError(
        ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR, format, a));
}

}  // namespace

HBOPartParser::HBOPartParser() = default;
HBOPartParser::~HBOPartParser() = default;

bool HBOPartParser::parseFile(const std::string& path, HBOBoard* board) {
    if (!pathExists(path)) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-36@%s", path);
        return false;
    }
    m_board = board;
    m_part = new HBOBoardComponent();
    bool result = false;
    bool returned = false;
    std::string detail;
    ComMsgMgrInstance cause;
    try {
        result = read(path);
        returned = true;
    } catch (const std::string& text) {
        detail = text;
    } catch (const HEXError& e) {
        // A refused file says why; other errors with an id of their own stay
        // here, and only their place and words go on beside the general message.
        if (HBOXmlFileLoader::isRefusal(e))
            e.print();
        else
            cause = e.getMsg();
    } catch (...) {
        // An error raised with an id of its own goes no further than here:
        // the caller sees the general failure with empty detail.
    }
    if (returned && m_board) {
        m_board->addBoardComponent(m_part);
        m_board->setActivePart(m_part);
        m_part->setBoard(m_board);
    } else if (!returned || !m_board) {
        // Nobody took the component: it would otherwise be lost.
        delete m_part;
    }
    if (!result) {
        ComMsgMgrInstance msg = ComMsgMgrInstance::createInstance::eval(
            2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_CRITICAL_WARNING, "@49-4@%s%s", path,
            detail.empty() ? std::string() : ", " + detail);
        if (cause.getPosition().known()) {
            msg.setPosition(cause.getPosition());
            msg.setDetail(cause.getDetail().empty() ? cause.getText() : cause.getDetail());
        }
        ComMsgMgr::sendMessage(msg);
    }
    m_part = nullptr;
    m_board = nullptr;
    return result;
}

bool HBOPartParser::read(const std::string& path) {
    if (!m_part)
        return false;
    if (path.empty())
        return true;
    HBOLegacyGrammar::preParse(path, "board_part.dtd");
    std::shared_ptr<HXMLWElement> root = HBOXmlFileLoader::loadRoot(path);
    // The root's attributes name the board and its preset file.
    const HBOElementScope atRoot(path, root.get());

    m_board->setBoardFile(path);
    m_part->setBoardFile(path);
    std::string changeLog = directoryOf(path) + HBOBoardUtils::getDirSeparator() + "changelog.txt";
    if (pathExists(changeLog)) {
        m_board->setChangeLogFilename(changeLog);
        m_part->setBoardChangeLogFilename(changeLog);
    }

    const std::string vendor = attr(root.get(), "vendor");
    const std::string boardName = attr(root.get(), "board_name");
    const std::string boardPart = attr(root.get(), "board_part");
    const std::string revision = attr(root.get(), "board_revision");
    m_board->setCompatibleBoardRevisions(std::map<int, std::string>{{0, revision}});

    const std::string version = attr(root.get(), "version");
    const std::string presetFile = attr(root.get(), "preset_file");
    m_board->setPresetFile(presetFile);
    if (!presetFile.empty())
        readPresetFile(presetFile);

    if (root->getChildCount() == 0)
        return false;
    if (vendor.empty() || boardName.empty() || revision.empty())
        raise("@49-108@%s", path);

    m_part->setName(vendor, boardName, boardPart, version);
    m_board->setName(vendor, boardName, version);

    std::string partString;
    if (!readPartAndBoardInfo(root.get(), partString))
        throw HEXError(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-109@%s%s", path, partString));
    if (!readPorts(root.get()) || !readInterfaces(root.get()))
        return false;
    m_part->setVLNV(vendor, m_part->getFamily(), boardName, version);
    return true;
}

bool HBOPartParser::readPartAndBoardInfo(const HXMLWElement* root, std::string& partString) {
    for (const HXMLWElement* child : children(root)) {
        if (isNamed(child, "part_info")) {
            partString = attr(child, "part_name");
            if (partString.empty())
                return false;
            m_part->setPartString(partString);
            m_part->setJtagPosition(attr(child, "jtag_position"));
        } else if (isNamed(child, "board_info")) {
            const std::string displayName = attr(child, "display_name");
            const std::string url = attr(child, "url");
            const std::string description = attr(child, "description");
            m_part->setDisplayName(displayName);
            m_board->setDisplayName(displayName);
            m_part->setSpecUrl(url);
            m_board->setSpecUrl(url);
            m_part->setLongDesc(description);
            m_board->setLongDesc(description);
            m_board->setDescription(description);
            m_part->setImageFile(attr(child, "image_file"));
        }
    }
    return true;
}

bool HBOPartParser::readPorts(const HXMLWElement* root) {
    static const std::string bankPrefix = "iobank.";
    for (const HXMLWElement* ports : children(root)) {
        if (!isNamed(ports, "ports"))
            continue;
        for (const HXMLWElement* portElem : children(ports)) {
            if (!isNamed(portElem, "port"))
                continue;
            HBOModelPort* port = new HBOModelPort();
            const std::string name = attr(portElem, "name");
            port->setName(name);
            port->setDirection(attr(portElem, "dir"));
            const bool isVector = hasAttr(portElem, "left") || hasAttr(portElem, "right");
            int left = 0, right = 0;
            if (isVector) {
                left = std::atoi(attr(portElem, "left").c_str());
                right = std::atoi(attr(portElem, "right").c_str());
                port->setIsVector(true);
                port->setRange(left, right);
            } else {
                port->setIsVector(false);
            }
            port->populatePinProps();
            m_part->setModelPort(name, port);
            m_part->adoptModelPort(port);

            std::vector<HBOPinProps*> records;
            port->getPortPropsSeq(records);
            for (const HXMLWElement* pins : children(portElem)) {
                if (!isNamed(pins, "pins"))
                    continue;
                for (const HXMLWElement* pin : children(pins)) {
                    if (!isNamed(pin, "pin"))
                        continue;
                    std::string pinName = name;
                    int index = 0;
                    long position = 0;
                    if (isVector) {
                        const std::string indexText = attr(pin, "index");
                        pinName = name + "[" + indexText + "]";
                        index = std::atoi(indexText.c_str());
                        position = left > right ? index - right : index - left;
                        if (position < 0)
                            continue;
                    }
                    if (position >= static_cast<long>(records.size()))
                        continue;
                    HBOPinProps* record = records[position];
                    record->setProp(index, port, pinName, attr(pin, "loc"), attr(pin, "diff_term"), attr(pin, "drive"),
                                    attr(pin, "iostandard"), attr(pin, "slew"), attr(pin, "output_impedance"),
                                    attr(pin, "ibuf_low_pwr"), attr(pin, "odt"), attr(pin, "equalization"),
                                    attr(pin, "pre_emphasis"), attr(pin, "dqs_bias"));
                    for (int i = 0; i < pin->getAttributeCount(); ++i) {
                        const std::string attrName = HBOBoardUtils::valueOrEmpty(pin->getAttributeName(i));
                        if (attrName.compare(0, bankPrefix.size(), bankPrefix) == 0)
                            record->setIOBankProperty(attrName.substr(bankPrefix.size()),
                                                      attr(pin, attrName.c_str()));
                    }
                }
            }
        }
    }
    return true;
}

bool HBOPartParser::readInterfaces(const HXMLWElement* root) {
    for (const HXMLWElement* ifs : children(root)) {
        if (!isNamed(ifs, "interfaces"))
            continue;
        for (const HXMLWElement* ifElem : children(ifs)) {
            if (!isNamed(ifElem, "interface"))
                continue;
            const HBOElementScope atInterface(m_board->getBoardFile(), ifElem);
            HBOBusIf* busIf = new HBOBusIf();
            const std::string name = attr(ifElem, "name");
            busIf->setName(name);
            busIf->setDisplayName(name);
            busIf->setInterfaceMode(attr(ifElem, "mode"));
            busIf->setPresetProcName(attr(ifElem, "preset_proc_name"));
            busIf->setOwnerComponent(m_part);
            busIf->setParentBoard(m_board);

            std::vector<std::string> fields;
            const std::string type = attr(ifElem, "type");
            boost::algorithm::split(fields, type, boost::algorithm::is_any_of(":"));
            if (fields.size() != 4) {
                ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-37@%s", name);
                delete busIf;
                return false;
            }
            busIf->setAbstractTypeVendor(fields[0]);
            busIf->setAbstractTypeLibrary(fields[1]);
            busIf->setAbstractTypeName(fields[2]);
            busIf->setAbstractTypeVersion(fields[3]);

            for (const HXMLWElement* child : children(ifElem)) {
                if (isNamed(child, "port_maps")) {
                    for (const HXMLWElement* map : children(child)) {
                        if (!isNamed(map, "port_map")) {
                            const HBOElementScope atMap(m_board->getBoardFile(), map);
                            ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING,
                                                     "@49-39@%s%s", map->getTagName(), name);
                            delete busIf;
                            return false;
                        }
                        HBOPortMap* portMap = new HBOPortMap();
                        portMap->setPhysicalPort(attr(map, "physical_port"));
                        portMap->setLogicalPort(attr(map, "logical_port"));
                        busIf->populatePortMap(portMap);
                    }
                } else if (isNamed(child, "parameters")) {
                    for (const HXMLWElement* param : children(child)) {
                        if (!isNamed(param, "parameter")) {
                            const HBOElementScope atParam(m_board->getBoardFile(), param);
                            ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING,
                                                     "@49-38@%s%s", param->getTagName(), name);
                            delete busIf;
                            return false;
                        }
                        busIf->setParam(attr(param, "name"), attr(param, "value"));
                    }
                } else if (isNamed(child, "preset_file")) {
                    const std::string file =
                        directoryOf(m_board->getBoardFile()) + HBOBoardUtils::getDirSeparator() + attr(child, "name");
                    if (pathExists(file))
                        busIf->setPresetFile(file);
                }
            }
            // An interface without a name is refused and stays ours to free.
            if (!m_part->setBusIf(name, busIf))
                delete busIf;
        }
    }
    return true;
}

bool HBOPartParser::readPresetFile(const std::string& name) {
    std::string path = name;
    const fs::path parent = fs::path(name).parent_path();
    if (parent.empty() || parent == ".")
        path = directoryOf(m_board->getBoardFile()) + HBOBoardUtils::getDirSeparator() + name;
    if (!pathExists(path)) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-62@%s", path);
        return false;
    }
    std::string text;
    ComMsgMgrInstance cause;
    bool ok = false;
    try {
        HBOLegacyGrammar::preParse(path, "preset.dtd");
        std::shared_ptr<HXMLWElement> root = HBOXmlFileLoader::loadRoot(path);
        ok = readPresetRoot(root.get());
    } catch (const std::string& thrown) {
        text = thrown;
    } catch (const HEXError& e) {
        // A preset file that cannot be read never fails the board.
        text = e.getMsg().getText();
        cause = e.getMsg();
    }
    if (!ok) {
        ComMsgMgrInstance msg = ComMsgMgrInstance::createInstance::eval(
            2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_CRITICAL_WARNING, "@49-63@%s%s", path, ", " + text);
        // A fault inside the preset file is shown where it lies there.
        if (cause.getPosition().known()) {
            msg.setPosition(cause.getPosition());
            msg.setDetail(cause.getDetail());
        }
        ComMsgMgr::sendMessage(msg);
    }
    return ok;
}

bool HBOPartParser::readPresetRoot(const HXMLWElement* root) {
    if (!root)
        throw std::string("Root XML element is NULL");
    attr(root, "schema");  // read and not used further
    for (const HXMLWElement* procElem : children(root)) {
        if (!isNamed(procElem, "ip_preset"))
            continue;
        const std::string procName = attr(procElem, "preset_proc_name");
        std::vector<HBOIpPreset*> records;
        for (const HXMLWElement* child : children(procElem)) {
            HBOIpPreset* preset = new HBOIpPreset();
            preset->setPresetProcName(procName);
            // Another element than "ip" adds nothing, yet its record is kept.
            if (isNamed(child, "ip")) {
                std::string version = attr(child, "version");
                if (version.empty())
                    version = "*";
                preset->setVendor(attr(child, "vendor"));
                preset->setLibrary(attr(child, "library"));
                preset->setName(attr(child, "name"));
                preset->setVersion(version);
                preset->setOwner(m_board);
                preset->setPresetName(procName + ":" + attr(child, "vendor") + ":" + attr(child, "library") + ":" +
                                      attr(child, "name") + ":" + version);
                for (const HXMLWElement* group : children(child)) {
                    if (!isNamed(group, "user_parameters") && !isNamed(group, "model_parameters"))
                        continue;
                    for (const HXMLWElement* param : children(group))
                        preset->setParam(attr(param, "name"), attr(param, "value"));
                }
            }
            records.push_back(preset);
        }
        m_board->setIpPreset(procName, records);
        for (HBOIpPreset* preset : records)
            m_board->adoptPreset(preset);
    }
    return true;
}

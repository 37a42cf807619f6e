// The pin file of a component (part0_pins.xml): pins with their locations and
// I/O properties, and the design constraints of the device's banks.
#include <algorithm>
#include <cstring>
#include <map>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>

#include <boost/algorithm/string/predicate.hpp>
#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardParser.h"
#include "HBOBoardUtils.h"
#include "HBOPinProps.h"
#include "HEXAll.h"
#include "HUTConvert.h"

namespace {

const char* const kIoBankPrefix = "iobank.";

}  // namespace

bool HBOBoardParser::readPinFile(const std::string& pinMapFile, PinList& pins, DesignConstrList& constrs) {
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.parse", ComMsgMgr::MSG_DEBUG2,
                                   "HBOBoardParser parsing pin file'%s'\n", pinMapFile);
    return readSideFile(pinMapFile, "@49-55@%s", "@49-57@%s%s",
                        [&](const std::string& path) { return readPinXml(path, pins, constrs); });
}

bool HBOBoardParser::readPinXml(const std::string& file, PinList& pins, DesignConstrList& constrs) {
    if (!board)
        return false;
    if (file.empty())
        return true;
    if (validateEnabled && !validateXml(file, "part0_pins"))
        return false;

    std::shared_ptr<HXMLWElement> root = loadXmlFile(file);
    HBOChildElements children = getChildElements(root.get());
    if (children.empty())
        return true;
    const HBOElementScope atRoot(file, root.get());

    const std::string partName = getAttr(root.get(), "part_name");
    const std::string boardPart = board->getPartString();
    if (!partName.empty() && !boardPart.empty() && partName != boardPart && checks2020Enabled && reportEnabled)
        addDeferredMessage(ComMsgMgrInstance::createInstance::eval(3, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_WARNING, "@49-147@%s%s%s",
                                                                   partName, file, boardPart));

    for (HXMLWElement* child : children) {
        if (isNamed(child, "design_constrs"))
            readDesignConstrs(child, file, constrs);
        else if (isNamed(child, "pins"))
            readPins(child, file, pins);
    }
    keepLastPinOfEachName(pins);
    return true;
}

void HBOBoardParser::readPins(HXMLWElement* pinsElem, const std::string& file, PinList& pins) {
    const HBOChildElements children = getChildElements(pinsElem);
    // Earlier pin of each index, for the clash text. Indices are mostly dense from
    // 0, so those get a direct table and only the rest a map.
    std::vector<const HBOPinProps*> denseByIndex(children.size(), nullptr);
    std::map<int, const HBOPinProps*> sparseByIndex;
    // Keys are the pins' own locations; the nodes come from one pool, not one allocation each.
    std::pmr::monotonic_buffer_resource pool(children.size() * 48 + 256);
    std::pmr::unordered_map<std::string_view, int> indexByLoc(&pool);
    indexByLoc.reserve(children.size());
    const std::vector<std::string>& propNames = HBOPinProps::getPortPropNames();
    const std::size_t bankPrefix = std::char_traits<char>::length(kIoBankPrefix);
    pins.reserve(pins.size() + children.size());
    for (HXMLWElement* e : children) {
        const HBOElementScope atPin(file, e);
        // A pin that fails the checks below is still made: the faults are
        // reported, the data is kept.
        HBOPinProps* pin = new HBOPinProps();
        pins.push_back(pin);
        pin->setName(getAttr(e, "name"));
        const std::string& name = pin->getName();
        const char* indexText = e->getAttribute("index");
        const int index = parseIntAttribute(indexText, "pin index");
        if (!indexText) {
            addDeferredMessage(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board",
                                                                       ComMsgMgr::MSG_WARNING, "@49-98@%s%s",
                                                                       file, name));
        } else {
            const HBOPinProps*& seen = static_cast<std::size_t>(index) < denseByIndex.size()
                                           ? denseByIndex[static_cast<std::size_t>(index)]
                                           : sparseByIndex[index];
            if (seen && checks2020Enabled)
                deferCheck("The pin index '" + std::to_string(index) + "' is used for both '" + seen->getName() +
                           "' and for '" + name + "'. Pin index must be unique.");
            else
                seen = pin;
        }

        pin->setPinIndex(index);
        pin->setPinLoc(getAttr(e, "loc"));
        const std::string& loc = pin->getPinLoc();
        if (loc.empty())
            deferCheck("Location constraints are not provided for '" + name + "'.");
        auto seenLoc = indexByLoc.find(loc);
        if (seenLoc != indexByLoc.end() && checks2020Enabled)
            deferCheck("The pin index '" + std::to_string(index) + "' and '" + std::to_string(seenLoc->second) +
                       "' both have the same  loc value '" + loc + "'. Pin locations must be unique.");
        else if (seenLoc != indexByLoc.end())
            seenLoc->second = index;
        else
            indexByLoc.emplace(std::string_view(loc), index);

        // One walk over the pin's attributes: the property names, exact, and the
        // bank ones, in the order the element has them.
        for (int i = 0, n = e->getAttributeCount(); i < n; ++i) {
            const char* attr = e->getAttributeName(i);
            if (!attr)
                continue;
            const int place = portPropPlace(attr);
            if (place >= 0) {
                const std::string& known = propNames[static_cast<std::size_t>(place)];
                if (ignoredPortProps.empty() || !ignoredPortProps.count(known))
                    pin->setPortProp(known, getAttr(e, attr));
            } else if (std::strncmp(attr, kIoBankPrefix, bankPrefix) == 0) {
                pin->setIOBankProperty(attr + bankPrefix, getAttr(e, attr));
            }
        }
    }
}

int HBOBoardParser::portPropPlace(const char* attr) {
    // A handful of known names, told apart mostly by their first byte: no hashing.
    const std::vector<std::string>& names = HBOPinProps::getPortPropNames();
    for (std::size_t p = 0; p < names.size(); ++p)
        if (names[p][0] == attr[0] && names[p] == attr)
            return static_cast<int>(p);
    return -1;
}

void HBOBoardParser::keepLastPinOfEachName(PinList& pins) {
    // Stable, so that of the pins of one name the one read last ends its run.
    std::stable_sort(pins.begin(), pins.end(),
                     [](const HBOPinProps* a, const HBOPinProps* b) { return a->getName() < b->getName(); });
    std::size_t kept = 0;
    for (std::size_t i = 0; i < pins.size(); ++i) {
        if (i + 1 < pins.size() && pins[i + 1]->getName() == pins[i]->getName()) {
            delete pins[i];
            continue;
        }
        pins[kept++] = pins[i];
    }
    pins.resize(kept);
}

void HBOBoardParser::readDesignConstrs(HXMLWElement* constrsElem, const std::string& file,
                                       DesignConstrList& constrs) {
    for (HXMLWElement* e : getChildElements(constrsElem)) {
        const HBOElementScope at(file, e);
        if (isNamed(e, "dci_cascade")) {
            HBOBoardComponent::DciCascadeConstr dci;
            dci.masterBank = parseNonNegativeInt(getAttr(e, "master_bank_id"), "dci_cascade master attribute",
                                                 boardFile());
            const std::string slaves = getAttr(e, "slave_bank_ids");
            if (slaves.empty()) {
                deferCheck("No \"slaves_ids\" attribute specified for dci_cascade.");
                continue;
            }
            bool good = true;
            std::string::size_type start = 0;
            while (good) {
                const std::string::size_type comma = slaves.find(',', start);
                const std::string item = slaves.substr(start, comma == std::string::npos ? comma : comma - start);
                try {
                    dci.slaveBanks.push_back(std::stoi(item, nullptr, 10));
                } catch (const std::exception&) {
                    good = false;
                }
                if (comma == std::string::npos)
                    break;
                start = comma + 1;
            }
            if (!good) {
                deferCheck("Incorrect format for \"slave_ids\" attribute (\"" + slaves +
                           "\") in dci_cascade. The \"slave_ids\" attribute must be a comma-separated list of "
                           "integer bank IDs.");
                continue;
            }
            constrs.push_back(dci);
        } else if (isNamed(e, "internal_vref")) {
            HBOBoardComponent::InternalVrefConstr vref;
            vref.bank = parseNonNegativeInt(getAttr(e, "bank_id"), "internal_vref bank attribute", boardFile());
            const std::string voltage = getAttr(e, "voltage");
            double value = 0.0;
            if (!hasAttr(e, "voltage") || !HUTConvert::stringToFloat(voltage, value)) {
                deferCheck("Incorrect format for \"voltage\" attribute (\"" + voltage +
                           "\") in internal_vref. Must be a floating point number.");
                continue;
            }
            vref.voltage = static_cast<float>(value);
            constrs.push_back(vref);
        }
    }
}

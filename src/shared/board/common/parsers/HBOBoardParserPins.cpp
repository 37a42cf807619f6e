// The pin file of a component (part0_pins.xml): pins with their locations and
// I/O properties, and the design constraints of the device's banks.
#include <map>
#include <string>
#include <unordered_set>

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

bool HBOBoardParser::readPinFile(const std::string& pinMapFile, PinMap& pins, DesignConstrList& constrs) {
    ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.parse", ComMsgMgr::MSG_DEBUG2,
                                   "HBOBoardParser parsing pin file'%s'\n", pinMapFile);
    return readSideFile(pinMapFile, "@49-55@%s", "@49-57@%s%s",
                        [&](const std::string& path) { return readPinXml(path, pins, constrs); });
}

bool HBOBoardParser::readPinXml(const std::string& file, PinMap& pins, DesignConstrList& constrs) {
    if (!board)
        return false;
    if (file.empty())
        return true;
    if (validateEnabled && !validateXml(file, "part0_pins"))
        return false;

    std::shared_ptr<HXMLWElement> root = loadXmlFile(file);
    std::vector<HXMLWElement*> children = getChildElements(root.get());
    if (children.empty())
        return true;

    const std::string partName = getAttr(root.get(), "part_name");
    const std::string boardPart = board->getPartString();
    if (!partName.empty() && !boardPart.empty() && partName != boardPart && checks2020Enabled && reportEnabled)
        addDeferredMessage(ComMsgMgrInstance::createInstance::eval(3, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_WARNING, "@49-147@%s%s%s",
                                                                   partName, file, boardPart));

    for (HXMLWElement* child : children) {
        if (isNamed(child, "design_constrs"))
            readDesignConstrs(child, constrs);
        else if (isNamed(child, "pins"))
            readPins(child, file, pins);
    }
    return true;
}

void HBOBoardParser::readPins(HXMLWElement* pinsElem, const std::string& file, PinMap& pins) {
    std::map<int, std::string> nameByIndex;
    std::map<std::string, int> indexByLoc;
    for (HXMLWElement* e : getChildElements(pinsElem)) {
        const std::string name = getAttr(e, "name");
        const char* indexText = e->getAttribute("index");
        const int index = parseIntAttribute(indexText, "pin index");
        if (!indexText) {
            addDeferredMessage(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board",
                                                                       ComMsgMgr::MSG_WARNING, "@49-98@%s%s",
                                                                       file, name));
        } else {
            auto seen = nameByIndex.find(index);
            if (seen != nameByIndex.end() && checks2020Enabled)
                deferCheck("The pin index '" + std::to_string(index) + "' is used for both '" + seen->second +
                           "' and for '" + name + "'. Pin index must be unique.");
            else
                nameByIndex[index] = name;
        }

        const std::string loc = getAttr(e, "loc");
        if (loc.empty())
            deferCheck("Location constraints are not provided for '" + name + "'.");
        auto seenLoc = indexByLoc.find(loc);
        if (seenLoc != indexByLoc.end() && checks2020Enabled)
            deferCheck("The pin index '" + std::to_string(index) + "' and '" + std::to_string(seenLoc->second) +
                       "' both have the same  loc value '" + loc + "'. Pin locations must be unique.");
        else
            indexByLoc[loc] = index;

        // A pin that failed the checks above is still made: the faults are
        // reported, the data is kept.
        HBOPinProps* pin = new HBOPinProps();
        pin->setName(name);
        pin->setPinIndex(index);
        pin->setPinLoc(loc);
        // One walk over the pin's attributes: the property names, exact, and the bank ones.
        static const std::unordered_set<std::string> propNames(HBOPinProps::getPortPropNames().begin(),
                                                                HBOPinProps::getPortPropNames().end());
        for (int i = 0, n = e->getAttributeCount(); i < n; ++i) {
            const char* attr = e->getAttributeName(i);
            if (!attr)
                continue;
            const std::string attrName(attr);
            if (propNames.count(attrName)) {
                if (!ignoredPortProps.count(attrName))
                    pin->setPortProp(attrName, getAttr(e, attr));
            } else if (boost::algorithm::starts_with(attrName, kIoBankPrefix)) {
                pin->setIOBankProperty(attrName.substr(std::char_traits<char>::length(kIoBankPrefix)),
                                       getAttr(e, attr));
            }
        }

        auto old = pins.find(name);
        if (old != pins.end()) {
            delete old->second;
            old->second = pin;
        } else {
            pins[name] = pin;
        }
    }
}

void HBOBoardParser::readDesignConstrs(HXMLWElement* constrsElem, DesignConstrList& constrs) {
    for (HXMLWElement* e : getChildElements(constrsElem)) {
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

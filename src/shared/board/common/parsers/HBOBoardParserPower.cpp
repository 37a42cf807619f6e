// The power_rails and data_properties sections of board.xml. The rail rules
// are the file's own consistency check: every breach is a deferred error and
// the read goes on.
#include <algorithm>
#include <cctype>
#include <memory>
#include <exception>
#include <map>
#include <sstream>
#include <string>
#include <unordered_set>
#include <vector>

#include <boost/any.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardDataProps.h"
#include "HBOBoardParser.h"
#include "HBOPowerRail.h"
#include "HPAParamMgr.h"
#include "HSTStringUtils.h"

namespace {

bool stubDataEnabled() {
    HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
    return mgr && mgr->getValueAsBool("board.dataProps.stubData");
}

// Stand-in rails for trying the power tools without real board data.
std::vector<HBOPowerRail> stubRails() {
    return {
        HBOPowerRail("BOARD_VCC_IO_BRAM", {"VCCINT_IO", "VCCBRAM"}, {}, true),
        HBOPowerRail("BOARD_TOP", {"VCCINT"}, {"BOARD_VCC_IO_BRAM"}, true),
        HBOPowerRail("BOARD_12V_PEX", {"MGTYAVTT", "VCCAUX_HBM"}, {}, false),
        HBOPowerRail("BOARD_CHILD_RAIL", {"VCCO_18V"}, {}, true),
        HBOPowerRail("BOARD_PARENT_RAIL", {}, {"BOARD_CHILD_RAIL"}, true),
    };
}

HBOBoardDataProps::PropMap stubDataProps() {
    typedef HBOBoardDataProps::PropMap PropMap;
    typedef HBOBoardDataProps::PropValByStr Str;
    PropMap current;
    current["BOARD_VCC_IO_BRAM"] = Str("8.0");
    current["BOARD_PARENT_RAIL"] = Str("0.014");
    current["BOARD_TOP"] = Str("5.0");
    current["VCCAUX"] = Str("1.19");
    current["VCCAUX_IO"] = Str("0.056");
    current["VCC_IO_HBM"] = Str("3.84");
    current["VCC_HBM"] = Str("4.16");
    current["VCCAUX_HBM"] = Str("0.2");
    current["MGTYVCCAUX"] = Str("0.144");
    current["MGTYAVCC"] = Str("1.4");
    current["MGTYAVTT"] = Str("3.6");
    current["VCCADC"] = Str("0.02");
    PropMap voltage;
    voltage["BOARD_VCC_IO_BRAM"] = Str(".85");
    voltage["BOARD_12V_PEX"] = Str("12.0");
    voltage["BOARD_PARENT_RAIL"] = Str("1.8");
    PropMap conditions;
    conditions["SUPPLY_CURRENT_BUDGET"] = current;
    conditions["VOLTAGE"] = voltage;
    conditions["THETAJA"] = Str("0.75");
    conditions["AMBIENT_TEMP"] = Str("55");
    conditions["DESIGN_POWER_BUDGET"] = Str("60");
    PropMap data;
    data[HBOBoardDataProps::OP_COND_KEY] = conditions;
    return data;
}

std::string listRails(const std::vector<HBOPowerRail>& rails) {
    std::ostringstream out;
    out << "<power_rails>\n";
    for (const HBOPowerRail& rail : rails) {
        out << "  <power_rail name=\"" << rail.getName() << "\"";
        if (rail.isDirect())
            out << " is_direct=true";
        if (rail.isPhasedRail())
            out << " num_phases=" << rail.getNumPhases();
        out << "\">\n";
        for (const std::string& member : rail.getMemberNames()) {
            out << "    <" << (rail.isSupply(member) ? "supply" : "rail") << " name=\"" << member << "\"";
            const int phases = rail.getMemberPhases(member);
            if (phases > 0)
                out << " phased_power_source=" << phases;
            out << "\"/>\n";
        }
        out << "  </power_rail>\n";
    }
    out << "</power_rails>\n";
    return out.str();
}

void listProps(const HBOBoardDataProps::PropMap& map, int depth, std::ostringstream& out) {
    for (const auto& kv : map) {
        out << std::string(2 * depth, ' ') << kv.first;
        if (const auto* text = boost::any_cast<HBOBoardDataProps::PropValByStr>(&kv.second)) {
            out << " = " << *text << "\n";
        } else if (const auto* group = boost::any_cast<HBOBoardDataProps::PropMap>(&kv.second)) {
            out << "\n";
            listProps(*group, depth + 1, out);
        } else {
            out << "\n";
        }
    }
}

bool contains(const std::vector<std::string>& list, const std::string& name) {
    return std::find(list.begin(), list.end(), name) != list.end();
}

std::string upperAttr(const HXMLWElement* e, const char* name) {
    const char* value = e->getAttribute(name);
    std::string text = value ? value : "";
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

// Groups nest to any depth; a later key replaces an earlier one.
void readDataPropertyGroup(const HXMLWElement* group, HBOBoardDataProps::PropMap& out) {
    std::shared_ptr<HXMLWElementList> children;
    group->getChildren(children);
    if (!children)
        return;
    for (const HXMLWElement* child : *children) {
        const char* tag = child ? child->getTagName() : nullptr;
        if (!tag)
            continue;
        if (HSTStringUtils::iequals(tag, "data_property_group")) {
            HBOBoardDataProps::PropMap nested;
            readDataPropertyGroup(child, nested);
            out[upperAttr(child, "name")] = nested;
        } else if (HSTStringUtils::iequals(tag, "data_property")) {
            const char* value = child->getAttribute("value");
            out[upperAttr(child, "name")] = HBOBoardDataProps::PropValByStr(value ? value : "");
        }
    }
}

}  // namespace

bool HBOBoardParser::readPowerRails(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = "Root XML element is NULL";
        return false;
    }
    std::vector<HBOPowerRail> rails;
    std::vector<std::string> railNames;
    std::map<std::string, int> freePhases;
    std::unordered_set<std::string> usedMembers;
    std::unordered_set<std::string> usedSupplies;
    // The element of each rail, for the phase faults found after the section.
    std::vector<const HXMLWElement*> railElems;

    auto fault = [this](const char* format, const std::string& a, const std::string& b) {
        addDeferredMessage(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_ERROR, format, a, b));
    };
    auto fault1 = [this](const char* format, const std::string& a) {
        addDeferredMessage(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_ERROR, format, a));
    };

    for (HXMLWElement* section : getChildElements(root)) {
        if (!isNamed(section, "power_rails"))
            continue;
        for (HXMLWElement* railElem : getChildElements(section)) {
            if (!isNamed(railElem, "power_rail"))
                continue;
            const HBOElementScope atRail(boardFile(), railElem);
            try {
                const std::string name = toUpper(getAttr(railElem, "name"));
                if (contains(railNames, name))
                    fault1("@49-119@%s", name);
                // A rail has to be defined before anything uses it.
                if (usedMembers.count(name))
                    fault1("@49-122@%s", name);

                const bool isDirect = toLower(getAttr(railElem, "is_direct")) == "true";
                int numPhases = 0;
                const std::string phasesText = getAttr(railElem, "num_phases");
                if (!phasesText.empty()) {
                    numPhases = std::stoi(phasesText, nullptr, 10);
                    freePhases[name] = numPhases;
                }

                std::vector<std::string> members;
                std::vector<std::string> supplies;
                std::vector<std::string> subRails;
                std::map<std::string, int> memberPhases;
                for (HXMLWElement* child : getChildElements(railElem)) {
                    const bool isSupply = isNamed(child, "supply");
                    const bool isRail = isNamed(child, "rail");
                    if (!isSupply && !isRail)
                        continue;
                    const HBOElementScope atMember(boardFile(), child);
                    const std::string member = toUpper(getAttr(child, "name"));
                    const std::string phasedText = getAttr(child, "phased_power_source");
                    const bool phased = isRail && !phasedText.empty();

                    if (phased) {
                        const int phases = std::stoi(phasedText, nullptr, 10);
                        auto source = freePhases.find(member);
                        if (source == freePhases.end()) {
                            fault("@49-136@%s%s", member, name);
                        } else if (phases < 1 || phases > source->second) {
                            fault("@49-134@%s%s", member, name);
                        } else {
                            source->second -= phases;
                        }
                        memberPhases[member] = phases;
                    } else if (memberPhases.count(member)) {
                        fault("@49-135@%s%s", member, name);
                    }

                    if (member == name)
                        fault1("@49-121@%s", name);
                    if (isRail && !contains(railNames, member))
                        fault("@49-123@%s%s", member, name);
                    if (isSupply && contains(railNames, member))
                        fault("@49-125@%s%s", member, name);

                    if (contains(members, member))
                        fault("@49-118@%s%s", member, name);
                    if (isSupply && usedSupplies.count(member))
                        fault("@49-124@%s%s", member, name);
                    if (isRail && !phased && usedMembers.count(member))
                        fault("@49-120@%s%s", member, name);

                    members.push_back(member);
                    (isSupply ? supplies : subRails).push_back(member);
                    usedMembers.insert(member);
                    if (isSupply)
                        usedSupplies.insert(member);
                }
                rails.emplace_back(name, supplies, subRails, isDirect, numPhases, memberPhases);
                railNames.push_back(name);
                railElems.push_back(railElem);
            } catch (const std::exception& e) {
                // A number that is no number ends this rail, not the section.
                ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-44@%s",
                                         std::string(e.what()));
            }
        }
    }

    // Every phase of a phased rail must be taken by the rails it feeds.
    for (std::size_t r = 0; r < rails.size(); ++r) {
        const HBOPowerRail& source = rails[r];
        const HBOElementScope atSource(boardFile(), railElems[r]);
        const int numPhases = source.getNumPhases();
        if (numPhases <= 0)
            continue;
        int taken = 0;
        std::string takers;
        bool any = false;
        for (const HBOPowerRail& rail : rails) {
            auto it = rail.getMemberPhases().find(source.getName());
            if (it == rail.getMemberPhases().end())
                continue;
            any = true;
            taken += it->second;
            takers += (takers.empty() ? "" : ", ") + rail.getName();
        }
        if (!any)
            addDeferredMessage(ComMsgMgrInstance::createInstance::eval(3, __FILE__, __LINE__, "board",
                                                                       ComMsgMgr::MSG_ERROR, "@49-141@%s%d%d",
                                                                       source.getName(), numPhases, numPhases));
        else if (taken != numPhases)
            addDeferredMessage(ComMsgMgrInstance::createInstance::eval(3, __FILE__, __LINE__, "board",
                                                                       ComMsgMgr::MSG_ERROR, "@49-142@%d%s%s",
                                                                       numPhases, source.getName(), takers));
    }

    // Stub rails stand in for the file's, whose faults were still reported above.
    if (stubDataEnabled())
        rails = stubRails();
    board->setPowerRails(rails);
    if (ComMsgMgr::hasScope("board.dataProps"))
        ComMsgMgr::sendScopedMsg::eval(2, __FILE__, __LINE__, "board", "board.dataProps", ComMsgMgr::MSG_DEBUG2,
                                       "HBOBoardParser just read the following rails for board %s:\n%s\n",
                                       board->getName(), listRails(rails));
    return true;
}

bool HBOBoardParser::readBoardDataProperties(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = "HBOBoardParser::readBoardDataProperties: Root XML element is NULL";
        return false;
    }
    HBOBoardDataProps::PropMap data;
    for (HXMLWElement* section : getChildElements(root))
        if (isNamed(section, "data_properties"))
            readDataPropertyGroup(section, data);
    if (stubDataEnabled())
        data = stubDataProps();
    board->setBoardDataProps(HBOBoardDataProps(data));
    if (ComMsgMgr::hasScope("board.dataProps")) {
        std::ostringstream listing;
        listProps(data, 0, listing);
        ComMsgMgr::sendScopedMsg::eval(2, __FILE__, __LINE__, "board", "board.dataProps", ComMsgMgr::MSG_DEBUG2,
                                       "HBOBoardParser just read the following data for board %s:\n%s\n",
                                       board->getName(), listing.str());
    }
    return true;
}

// Pins of a board component: the name map, the direct index table, and the fill from an
// XML constraints file.
#include "HBOBoardComponent.h"

#include <cstdlib>
#include <sstream>

#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOModelPort.h"
#include "HBOPinProps.h"
#include "HBOXmlFileLoader.h"
#include "HXMLWInterface.h"

bool HBOBoardComponent::addPin(HBOPinProps* pin) {
    if (!pin)
        return false;
    const int index = pin->getPinIndex();
    const std::string& name = pin->getName();
    // One look-up serves the clash test and the insertion. Readers add pins in
    // name order, so a name past the last one settles it with one comparison.
    const auto place =
        !m_pins.empty() && m_pins.rbegin()->first < name ? m_pins.end() : m_pins.lower_bound(name);
    const bool named = place != m_pins.end() && place->first == name;
    HBOPinProps* byName = named ? place->second : nullptr;

    // The pin of the same index matters only to the clash text; past the table
    // its look-up walks every pin, so it is made only for the channel that shows it.
    HBOPinProps* byIndex = ComMsgMgr::hasScope("board.pins") ? getPinByIndex(index) : byName;
    if (byIndex != byName) {
        // A clash is no failure: the newer pin wins. The text is only built for the
        // debug channel that asks for it.
        std::ostringstream text;
        text << "Adding pin of index: " << index << " name: \"" << name << "\" to component: \"" << m_name
             << "\".\n";
        if (byIndex)
            text << "  A pin with the same index but a different name (\"" << byIndex->getName()
                 << "\") already exists.\n";
        if (byName)
            text << "  A pin with the same name but a different index (" << byName->getPinIndex()
                 << ") already exists.";
        ComMsgMgr::sendScopedMsg::eval(1, __FILE__, __LINE__, "board", "board.pins", ComMsgMgr::MSG_DEBUG2, "%s",
                                       text.str());
    }

    if (byName && byName != pin) {
        // No table slot may outlive the pin it names, even one whose index was changed
        // after it was added.
        for (HBOPinProps*& slot : m_pinTable)
            if (slot == byName)
                slot = nullptr;
        delete byName;
    }
    if (named)
        place->second = pin;
    else
        m_pins.emplace_hint(place, name, pin);
    if (static_cast<unsigned int>(index) < static_cast<unsigned int>(PIN_TABLE_SIZE)) {
        if (m_pinTable.empty())
            m_pinTable.assign(PIN_TABLE_SIZE, nullptr);
        m_pinTable[index] = pin;
    }
    return true;
}

HBOPinProps* HBOBoardComponent::findPin(const std::string& name) const {
    auto it = m_pins.find(name);
    return it == m_pins.end() ? nullptr : it->second;
}

int HBOBoardComponent::findPinIndex(const std::string& name) const {
    const HBOPinProps* pin = findPin(name);
    return pin ? pin->getPinIndex() : -1;
}

HBOPinProps* HBOBoardComponent::getPinByIndex(int index) const {
    if (index >= 0 && index < PIN_TABLE_SIZE)
        return m_pinTable.empty() ? nullptr : m_pinTable[index];
    for (const auto& kv : m_pins)
        if (kv.second && kv.second->getPinIndex() == index)
            return kv.second;
    return nullptr;
}

void HBOBoardComponent::getPinsVec(std::vector<HBOPinProps*>& out) const {
    for (const auto& kv : m_pins)
        if (kv.second)
            out.push_back(kv.second);
}

int HBOBoardComponent::populateConstraintsData(const std::string& /*path*/) {
    if (m_constraintsDataPopulated)
        return 0;
    // The file is the component's own; the argument is kept for the callers' sake only.
    const std::string file = m_constraintsFile;
    boost::system::error_code ec;
    if (file.empty() || !boost::filesystem::exists(file, ec) || !HBOXmlFileLoader::admitted(file))
        return 0;
    try {
        std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromFile(file);
        if (!root)
            return 0;
        std::shared_ptr<HXMLWElementList> children;
        root->getChildren(children);
        if (!children || children->empty()) {
            m_constraintsDataPopulated = true;
            return 0;
        }
        for (const HXMLWElement* child : *children) {
            if (!child)
                continue;
            const std::string tag = child->getTagName() ? child->getTagName() : "";
            if (tag != "PIN") {
                ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR, "@49-43@%s", tag);
                continue;
            }
            // Only these attributes are honoured; the further properties of a pin stay empty.
            std::map<std::string, std::string> attrs = {{"NAME", ""},      {"INDEX", ""},      {"LOC", ""},
                                                        {"DIFF_TERM", ""}, {"DRIVE", ""},      {"IOSTANDARD", ""},
                                                        {"SLEW", ""}};
            for (int a = 0; a < child->getAttributeCount(); ++a) {
                const char* attrName = child->getAttributeName(a);
                if (!attrName || !attrs.count(attrName))
                    continue;
                const char* value = child->getAttribute(attrName);
                attrs[attrName] = value ? value : "";
            }
            HBOModelPort* port = getModelPortByName(attrs["NAME"]);
            if (!port)
                continue;
            std::vector<HBOPinProps*> pins;
            if (!port->getPortPropsSeq(pins))
                continue;
            std::string pinName = port->getName();
            int n = 0;
            int position = 0;
            if (port->isPortOfTypeVec()) {
                n = std::atoi(attrs["INDEX"].c_str());
                pinName += "[" + attrs["INDEX"] + "]";
                int left = -1;
                int right = -1;
                port->getPortVecLeft(left);
                port->getPortVecRight(right);
                position = left > right ? n - right : n - left;
                if (position < 0)
                    continue;
            }
            if (static_cast<size_t>(position) < pins.size() && pins[position])
                pins[position]->setProp(n, port, pinName, attrs["LOC"], attrs["DIFF_TERM"], attrs["DRIVE"],
                                        attrs["IOSTANDARD"], attrs["SLEW"], "", "", "", "", "", "");
        }
        m_constraintsDataPopulated = true;
    } catch (const std::string& text) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-44@%s", text);
    }
    return 0;
}

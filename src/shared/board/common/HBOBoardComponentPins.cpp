// Pins of a board component: the name map, the direct index table, and the fill from an
// XML constraints file.
#include "HBOBoardComponent.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOModelPort.h"
#include "HBOPinProps.h"
#include "HBOXmlFileLoader.h"
#include "HXMLWInterface.h"

namespace {
// Past this many pins a pin that does not come in name order turns the sorted
// vector into the map, so that no order of adding can make it quadratic.
const std::size_t kMaxOrderedInsert = 128;

bool nameBefore(const HBOPinProps* pin, const std::string& name) {
    return pin->getName() < name;
}
}  // namespace

HBOBoardComponent::PinMap& HBOBoardComponent::pinMap() const {
    if (!m_pins.peek()) {
        PinMap& map = m_pins.get();
        for (HBOPinProps* pin : m_pinList) {
            map.emplace_hint(map.end(), pin->getName(), pin);
            pin->m_listed.on = false;
        }
        std::vector<HBOPinProps*>().swap(m_pinList);
    }
    return m_pins.get();
}

const HBOBoardComponent::PinMap& HBOBoardComponent::getPins() const { return pinMap(); }

const std::string& HBOBoardComponent::nameOf(const HBOPinProps* pin) { return pin->getName(); }

std::size_t HBOBoardComponent::getPinCount() const {
    const PinMap* map = m_pins.peek();
    return map ? map->size() : m_pinList.size();
}

void HBOBoardComponent::reservePins(std::size_t count) {
    if (!m_pins.peek())
        m_pinList.reserve(m_pinList.size() + count);
    // Indices mostly run from 0 or 1 up to the count.
    m_pinTable.reserve(std::min(count + 1, static_cast<std::size_t>(PIN_TABLE_SIZE)));
}

bool HBOBoardComponent::addPin(HBOPinProps* pin) {
    if (!pin)
        return false;
    const int index = pin->getPinIndex();
    const std::string& name = pin->getName();
    // Only a pin this component owns can be listed under its own name: its renames
    // reach the component. Any other goes into the map.
    if (pin->getOwner() != this)
        pinMap();
    // One look-up serves the clash test and the insertion. Readers add pins in
    // name order, so a name past the last one settles it with one comparison.
    PinMap* map = m_pins.peek() ? &m_pins.get() : nullptr;
    PinMap::iterator mapPlace;
    std::size_t listPlace = 0;
    HBOPinProps** slot = nullptr;
    if (map) {
        mapPlace = !map->empty() && map->rbegin()->first < name ? map->end() : map->lower_bound(name);
        if (mapPlace != map->end() && mapPlace->first == name)
            slot = &mapPlace->second;
    } else {
        listPlace = !m_pinList.empty() && m_pinList.back()->getName() < name
                        ? m_pinList.size()
                        : std::lower_bound(m_pinList.begin(), m_pinList.end(), name, nameBefore) - m_pinList.begin();
        if (listPlace < m_pinList.size() && m_pinList[listPlace]->getName() == name)
            slot = &m_pinList[listPlace];
    }
    HBOPinProps* byName = slot ? *slot : nullptr;

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
        for (HBOPinProps*& entry : m_pinTable)
            if (entry == byName)
                entry = nullptr;
        delete byName;
    }
    if (map) {
        if (slot)
            *slot = pin;
        else
            map->emplace_hint(mapPlace, name, pin);
    } else if (slot || listPlace == m_pinList.size() || m_pinList.size() < kMaxOrderedInsert) {
        pin->m_listed.on = true;
        if (slot)
            *slot = pin;
        else
            m_pinList.insert(m_pinList.begin() + static_cast<std::ptrdiff_t>(listPlace), pin);
    } else {
        pinMap().emplace(name, pin);
    }
    if (static_cast<unsigned int>(index) < static_cast<unsigned int>(PIN_TABLE_SIZE)) {
        // The table reaches as far as the largest index so far: a connector of a few
        // dozen pins does not carry the slots of a large device.
        if (static_cast<std::size_t>(index) >= m_pinTable.size())
            m_pinTable.resize(static_cast<std::size_t>(index) + 1, nullptr);
        m_pinTable[index] = pin;
    }
    return true;
}

HBOPinProps* HBOBoardComponent::findPin(const std::string& name) const {
    if (const PinMap* map = m_pins.peek()) {
        auto it = map->find(name);
        return it == map->end() ? nullptr : it->second;
    }
    auto it = std::lower_bound(m_pinList.begin(), m_pinList.end(), name, nameBefore);
    return it != m_pinList.end() && (*it)->getName() == name ? *it : nullptr;
}

int HBOBoardComponent::findPinIndex(const std::string& name) const {
    const HBOPinProps* pin = findPin(name);
    return pin ? pin->getPinIndex() : -1;
}

HBOPinProps* HBOBoardComponent::getPinByIndex(int index) const {
    if (index >= 0 && index < PIN_TABLE_SIZE)
        return static_cast<std::size_t>(index) < m_pinTable.size() ? m_pinTable[index] : nullptr;
    HBOPinProps* found = nullptr;
    forEachPin([&found, index](const std::string&, HBOPinProps* pin) {
        if (!found && pin && pin->getPinIndex() == index)
            found = pin;
    });
    return found;
}

void HBOBoardComponent::getPinsVec(std::vector<HBOPinProps*>& out) const {
    forEachPin([&out](const std::string&, HBOPinProps* pin) {
        if (pin)
            out.push_back(pin);
    });
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

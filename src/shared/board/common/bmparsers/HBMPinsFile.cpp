#include "HBMPinsFile.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <ostream>

#include "HBMElementText.h"
#include "HBMPin.h"
#include "HBOPinProps.h"
#include "HXMLWElement.h"

using HBMElementText::attr;
using HBMElementText::hasTag;

HBMPinsFile::HBMPinsFile() = default;

HBMPinsFile::~HBMPinsFile() {
    // A pin added twice is still freed once.
    HSTVector<HBMPin*> owned = getPins();
    std::sort(owned.begin(), owned.end());
    owned.erase(std::unique(owned.begin(), owned.end()), owned.end());
    for (HBMPin* pin : owned)
        delete pin;
}

HBMPin* HBMPinsFile::createPin(std::string name, std::string index, std::string loc) {
    return new HBMPin(name, index, loc, HBMPin::Props());
}

HBMPin* HBMPinsFile::getPin(const std::string& name) const {
    for (HBMPin* pin : pins())
        if (pin && pin->getName() == name)
            return pin;
    return nullptr;
}

void HBMPinsFile::deletePin(HBMPin* pin) { HBMPinsData::deletePin(pin); }

bool HBMPinsFile::parse(HXMLWElement* root) {
    if (!root)
        return false;
    setPartName(attr(root, "part_name"));
    // Per read, not per model: a second read adds to the list unchecked.
    std::map<std::string, std::string> nameByIndex;
    std::map<std::string, std::string> seenLocs;
    for (int c = 0, nc = root->getChildCount(); c < nc; ++c) {
        const HXMLWElement* list = root->getChild(c);
        if (!list || !hasTag(list, "pins"))
            continue;
        for (int p = 0, np = list->getChildCount(); p < np; ++p) {
            const HXMLWElement* e = list->getChild(p);
            if (!e)
                continue;
            const char* index = e->getAttribute("index");
            if (!index || !nameByIndex.emplace(index, attr(e, "name")).second)
                return false;
            const std::string loc = attr(e, "loc");
            if (loc.empty() || !seenLocs.emplace(loc, std::string()).second)
                return false;
            HBMPin* pin = new HBMPin(attr(e, "name"), index, loc, HBMPin::Props());
            for (const std::string& prop : HBOPinProps::getPortPropNames()) {
                const std::string value = attr(e, prop.c_str());
                if (!value.empty())
                    pin->setProp(prop, value);
            }
            addPin(pin);
        }
    }
    return true;
}

void HBMPinsFile::write(std::ofstream& out) const {
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n\n";
    out << "<part_info part_name=\"" << getPartName() << "\">\n";
    for (std::size_t i = 0; i < pins().size(); ++i)
        writePin(out, static_cast<int>(i));
    out << "</part_info>\n";
}

void HBMPinsFile::writePin(std::ostream& out, int position) const {
    const HBMPin* pin = getPinByIndex(position);
    if (!pin)
        return;
    out << "<pin index=\"" << pin->getIndex() << "\" name=\"" << pin->getName() << "\" loc=\"" << pin->getLOC()
        << "\"";
    // No "=" between a property's name and its quoted value: the written form
    // is fixed as it stands.
    for (const auto& prop : pin->getAllProps())
        out << " " << prop.first << "\"" << prop.second << "\"";
    out << "/>\n";
}

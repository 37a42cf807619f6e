#include "HBMBoardFile.h"

#include <fstream>
#include <iostream>

#include "HBMElementText.h"
#include "HXMLWElement.h"

using HBMElementText::attr;
using HBMElementText::hasTag;

HBMBoardFile::HBMBoardFile() = default;
HBMBoardFile::~HBMBoardFile() = default;

bool HBMBoardFile::parse(HXMLWElement* root) {
    std::string error;
    if (!readComponents(root, error))
        return false;
    return root->getChildCount() > 0;
}

bool HBMBoardFile::readComponents(HXMLWElement* root, std::string& error) {
    if (!root) {
        error = "Root XML element is NULL";
        return false;
    }
    if (root->getChildCount() == 0)
        return false;
    for (int c = 0, nc = root->getChildCount(); c < nc; ++c) {
        const HXMLWElement* list = root->getChild(c);
        if (!list || !hasTag(list, "components"))
            continue;
        for (int i = 0, ni = list->getChildCount(); i < ni; ++i) {
            const HXMLWElement* component = list->getChild(i);
            if (component)
                std::cout << "Component: " << attr(component, "name") << "\n";
        }
    }
    return true;
}

void HBMBoardFile::write(std::ofstream& /*out*/) const {}

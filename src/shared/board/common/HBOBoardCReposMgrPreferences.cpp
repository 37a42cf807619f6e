// The installation's interface preferences: where each kind of interface is
// grouped and which IP it defaults to, for interfaces without their own.
#include "HBOBoardCReposMgr.h"

#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardUtils.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOCase.h"
#include "HUTEnv.h"
#include "HBOXmlFileLoader.h"
#include "HXMLWInterface.h"

namespace {

std::string attribute(const HXMLWElement* element, const char* name) {
    const char* value = element->getAttribute(name);
    return value ? value : "";
}

}  // namespace

bool HBOBoardCReposMgr::readInterfacePreferences() {
    try {
        const std::string sep = HBOBoardUtils::getDirSeparator();
        std::string path;
        for (const std::string& dir : HUTEnv::getQDEDataDirList()) {
            const std::string candidate = dir + sep + "boards" + sep + "board_interface_preferences.xml";
            boost::system::error_code ec;
            if (boost::filesystem::exists(candidate, ec)) {
                path = candidate;
                break;
            }
        }
        if (path.empty() || !HBOXmlFileLoader::admitted(path))
            return false;
        std::shared_ptr<HXMLWElement> root = HXMLWInterface::readFromFile(path);
        if (!root)
            return false;
        for (int i = 0; i < root->getChildCount(); ++i) {
            const HXMLWElement* child = root->getChild(i);
            if (!child || !HBOCase::iequals(child->getTagName(), "INTF_VLNV"))
                continue;
            HBOBusIfPreference* preference = new HBOBusIfPreference();
            preference->setMajorGroup(attribute(child, "major_group"));
            preference->setMinorGroup(attribute(child, "minor_group"));
            preference->setDefaultIpVlnv(attribute(child, "default_ip_vlnv"));
            const std::string key = HBOCase::lower(attribute(child, "value") + "#" + attribute(child, "mode"));
            HBOBusIfPreference*& slot = m_preference_map[key];
            // A later entry of the same key wins. No board has been read yet, so
            // none can refer to the record it replaces.
            delete slot;
            slot = preference;
        }
        return true;
    } catch (const std::string& text) {
        ComMsgMgr::sendMsg::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-44@%s", text);
        return false;
    }
}

bool HBOBoardCReposMgr::populatePreferenceData(HBOBoard* board) {
    if (!board)
        return false;
    if (m_preference_map.empty())
        return true;
    std::vector<HBOBusIf*> interfaces;
    board->getBusIfSeq(interfaces);
    std::string vendor, library, name, version, mode;
    for (HBOBusIf* busIf : interfaces) {
        if (!busIf || !busIf->getAbstractType(vendor, library, name, version) || !busIf->getInterfaceMode(mode))
            continue;
        auto found = m_preference_map.find(HBOCase::lower(vendor + ":" + library + ":" + name + "#" + mode));
        if (found != m_preference_map.end() && found->second && busIf->getPreferences().empty())
            busIf->setPreference(found->second);
    }
    return true;
}

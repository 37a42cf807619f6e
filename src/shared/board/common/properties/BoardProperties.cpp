// Properties of a board, its parameters as "PARAM." names and its data
// properties as dotted names.
#include <iostream>

#include "HBOBoard.h"
#include "HBOCPropertyInit.h"
#include "HBOParameter.h"
#include "HBOPropertyRegistry.h"
#include "HPAParamMgr.h"

using namespace HBOPropertyRegistry;

namespace HBOCPropertyInit {
namespace board {

namespace {

bool tclPropsEnabled() { return HPAParamMgr::getParamMgr()->getValueAsBool("board.dataProps.enableTclProps"); }

void fillFlatStrMap(const HBOBoardDataProps::PropMap& level, const std::string& prefix,
                    HSTVector<HCPProperty::Types::PNameAndProp>& out) {
    for (const auto& entry : level) {
        if (const HBOBoardDataProps::PropMap* group = boost::any_cast<HBOBoardDataProps::PropMap>(&entry.second))
            fillFlatStrMap(*group, prefix + entry.first + ".", out);
        else if (const auto* value = boost::any_cast<HBOBoardDataProps::PropValByStr>(&entry.second))
            out.emplace_back(prefix + entry.first, HATAttr(*value));
        else
            std::cout << "BAD ANY_CAST in board_part::fillFlatStrMap_--expected PropValByStr but got"
                      << entry.second.type().name() << "!\n";
    }
}

bool readDataProp(Tcl_Interp* interp, const HBOBoard& b, const std::string& name, HATAttrAny& out) {
    const HBOBoardDataProps& props = b.getBoardDataProps();
    boost::optional<std::string> text = props.getStrDataProp(name);
    if (text && !text->empty())
        return publishStringResult(interp, *text, out);
    if (boost::optional<HBOBoardDataProps::StrMap> group = props.getMapDataProp(name)) {
        std::string joined;
        for (const auto& kv : *group) {
            if (!joined.empty())
                joined += ' ';
            joined += kv.first + " " + kv.second;
        }
        return publishStringResult(interp, joined, out);
    }
    return text ? publishStringResult(interp, *text, out) : false;
}

bool readDynamic(Tcl_Interp* interp, const tclany& value, const std::string& name, HATAttrAny& out) {
    const HBOBoard* b = HCPProperty::Types::nativeOf<HBOBoard*>(value);
    if (!b)
        return false;
    std::string key, found;
    if (hasPrefix(name, "PARAM.", key) && b->getParamValue(key, found))
        return publishStringResult(interp, found, out);
    // A parameter that isn't there may still be a data property of that name.
    return tclPropsEnabled() && readDataProp(interp, *b, name, out);
}

void listDynamic(const tclany& value, HSTVector<HCPProperty::Types::PNameAndProp>& out) {
    const HBOBoard* b = HCPProperty::Types::nativeOf<HBOBoard*>(value);
    if (!b)
        return;
    for (const HBOParameter* p : b->getParameters())
        if (p)
            out.emplace_back("PARAM." + p->getName(), HATAttr(p->getValue()));
    if (tclPropsEnabled())
        fillFlatStrMap(b->getBoardDataProps().getAllData(), "", out);
}

}  // namespace

void init() {
    HCPProperty::ObjectInfo info = objectInfo<HBOBoard>();
    addClass(info, "board");
    addString<HBOBoard>(info, "name", [](const HBOBoard& b) { return b.getName(); });
    addString<HBOBoard>(info, "board_name", [](const HBOBoard& b) { return b.getBoardName(); });
    addString<HBOBoard>(info, "display_name", [](const HBOBoard& b) { return b.getDisplayName(); });
    addString<HBOBoard>(info, "file_version", [](const HBOBoard& b) { return b.getVersion(); });
    addList<HBOBoard>(info, "Compatible_board_revisions", [](const HBOBoard& b) {
        std::vector<std::string> revisions;
        b.getCompatibleBoardRevisionsAsVec(revisions);
        return toList(revisions);
    });
    addString<HBOBoard>(info, "vendor_name", [](const HBOBoard& b) { return b.getVendor(); });
    addString<HBOBoard>(info, "spec_url", [](const HBOBoard& b) { return b.getSpecUrl(); });
    addString<HBOBoard>(info, "FILE_NAME", [](const HBOBoard& b) { return b.getBoardFile(); });
    addString<HBOBoard>(info, "REPOSITORY", [](const HBOBoard& b) { return b.getRepository(); });
    addList<HBOBoard>(info, "jtag_chains", [](const HBOBoard& b) { return toList(b.getJtagChains()); });
    addString<HBOBoard>(info, "description", [](const HBOBoard& b) { return b.getDescription(); });
    addSupportsCed<HBOBoard>(info, [](const HBOBoard& b) { return &b; });
    addDefault(info, readDynamic, listDynamic, false);
}

}  // namespace board
}  // namespace HBOCPropertyInit

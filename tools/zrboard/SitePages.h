// The pages of the board site: the index, one page per board and the board
// diagram. Each returns the page's text; SiteWriter puts it in place.
#ifndef ZRBOARD_SITEPAGES_H
#define ZRBOARD_SITEPAGES_H

#include <map>
#include <string>
#include <vector>

#include "ComMsgMgr.h"

class HBOBoard;
class HBOBoardComponent;
class HBOImage;

namespace zrboard {
namespace site {

class SiteCatalog;

// Where things landed in the output directory.
struct SiteLinks {
    // Board page file names inside boards/, e.g. "korvelhw_tarnwick_1.2.html".
    std::map<const HBOBoard*, std::string> pages;
    // Copied images, relative to the board pages.
    std::map<const HBOImage*, std::string> images;

    std::string pageOf(const HBOBoard* board) const {
        auto it = pages.find(board);
        return it == pages.end() ? std::string() : it->second;
    }
};

// Severity, id and text of each message, as a table.
std::string messageTable(const std::vector<ComMsgMgrInstance>& messages);

// Anchor of a component on its board page.
std::string componentAnchor(const HBOBoardComponent& component);

std::string indexPage(const SiteCatalog& catalog, const SiteLinks& links, const std::string& title);
std::string boardPage(const SiteCatalog& catalog, const SiteLinks& links, const HBOBoard& board,
                      const std::string& title);
// An inline SVG drawing of the board: FPGA in the middle, the rest around it.
std::string boardDiagram(const HBOBoard& board);

}  // namespace site
}  // namespace zrboard

#endif

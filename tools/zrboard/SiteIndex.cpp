// The index page: one row per board, searchable and sortable by the script.
#include <sstream>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "SiteCatalog.h"
#include "SiteHtml.h"
#include "SitePages.h"

namespace zrboard {
namespace site {

namespace {

std::size_t interfaceCount(const HBOBoard& board) {
    std::size_t n = 0;
    for (const auto& kv : board.getBoardComponents())
        if (kv.second)
            n += kv.second->getBusIfMap().size();
    return n;
}

std::size_t connectorCount(const HBOBoard& board) {
    std::vector<HBOBoardComponent*> connectors;
    board.getConnectorsList(connectors);
    return connectors.size();
}

void cell(std::ostream& out, const std::string& text) { out << "<td>" << escape(text) << "</td>"; }

void numberCell(std::ostream& out, std::size_t n) {
    out << "<td class=\"num\" data-value=\"" << n << "\">" << n << "</td>";
}

}  // namespace

std::string indexPage(const SiteCatalog& catalog, const SiteLinks& links, const std::string& title) {
    std::ostringstream out;
    out << pageStart(title, "") << "<h1>" << escape(title) << "</h1>\n"
        << "<p>" << catalog.boards().size() << " boards.</p>\n"
        // Hidden until the script runs: without it the box would do nothing.
        << "<form id=\"searchform\" role=\"search\" hidden onsubmit=\"return false\">"
        << "<label for=\"search\">Search </label>"
        << "<input id=\"search\" type=\"search\" placeholder=\"name, vendor, part...\" autocomplete=\"off\">"
        << "<span id=\"count\" aria-live=\"polite\"></span></form>\n"
        << "<table id=\"boards\">\n<thead><tr><th>Display name</th><th>Catalogue name</th><th>Vendor</th>"
        << "<th>FPGA part</th><th>File version</th><th>Board revision</th>"
        << "<th data-type=\"number\">Interfaces</th><th data-type=\"number\">Connectors</th><th>Source</th>"
        << "</tr></thead>\n<tbody>\n";
    for (const HBOBoard* board : catalog.boards()) {
        const HBOBoardComponent* part = board->getActivePart();
        const std::string display = board->getDisplayName().empty() ? board->getName() : board->getDisplayName();
        out << "<tr><td><a href=\"boards/" << relativeUrl(links.pageOf(board)) << "\">" << escape(display)
            << "</a></td>";
        cell(out, board->getName());
        cell(out, board->getVendor());
        cell(out, part ? part->getPartName() : "");
        cell(out, board->getVersion());
        cell(out, board->getBoardRevision());
        numberCell(out, interfaceCount(*board));
        numberCell(out, connectorCount(*board));
        cell(out, board->isUserDefined() ? "user" : "installed");
        out << "</tr>\n";
    }
    out << "</tbody>\n</table>\n";

    if (!catalog.notices().empty()) {
        out << "<h2>Repository messages</h2>\n";
        out << messageTable(catalog.notices());
    }
    if (!catalog.failedBoards().empty()) {
        out << "<h2>Board files that did not read</h2>\n";
        for (const FailedBoard& f : catalog.failedBoards()) {
            out << "<h3>" << escape(f.path) << "</h3>\n";
            out << (f.messages.empty() ? "<p>No messages.</p>\n" : messageTable(f.messages));
        }
    }
    out << pageEnd("");
    return out.str();
}

}  // namespace site
}  // namespace zrboard

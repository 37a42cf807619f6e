// One board's page: everything a reader of the board files would look up,
// in the order one chooses a board by.
#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <vector>

#include <boost/filesystem.hpp>

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardComponent.h"
#include "HBOBoardUtils.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOImage.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBOModelPort.h"
#include "HBOParameter.h"
#include "HBOPinProps.h"
#include "HBOPortMap.h"
#include "HBOPowerRail.h"
#include "ShowModel.h"
#include "SiteCatalog.h"
#include "SiteHtml.h"
#include "SitePages.h"

namespace zrboard {
namespace site {

namespace {

using Fields = std::vector<std::pair<std::string, std::string>>;

// A definition list; empty values are left out, as the outline of `show` does.
void writeFields(std::ostream& out, const Fields& fields) {
    bool any = false;
    for (const auto& f : fields)
        any = any || !f.second.empty();
    if (!any)
        return;
    out << "<dl class=\"fields\">\n";
    for (const auto& f : fields)
        if (!f.second.empty())
            out << "<dt>" << escape(f.first) << "</dt><dd>" << escape(f.second) << "</dd>\n";
    out << "</dl>\n";
}

void writeRow(std::ostream& out, const std::vector<std::string>& cells, const char* tag = "td") {
    out << "<tr>";
    for (const std::string& c : cells)
        out << "<" << tag << ">" << escape(c) << "</" << tag << ">";
    out << "</tr>\n";
}

std::string boardLink(const SiteLinks& links, const HBOBoard* board, const std::string& anchor) {
    if (!board)
        return "";
    const std::string label = board->getDisplayName().empty() ? board->getName() : board->getDisplayName();
    const std::string page = links.pageOf(board);
    // A board left out by --latest has no page of its own; its name still says which.
    if (page.empty())
        return escape(label + " (" + board->getName() + ")");
    return "<a href=\"" + relativeUrl(page) + "#" + escape(anchor) + "\">" + escape(label) + "</a> (" +
           escape(board->getName()) + ")";
}

// "{jp7 true jp9 false}" and "jp7 true" both give the pairs.
std::vector<std::pair<std::string, std::string>> dependencyPairs(const std::string& text) {
    std::vector<std::string> items = HBOBoardUtils::parseTclList(text);
    if (items.size() == 1 && items.front() != text)
        items = HBOBoardUtils::parseTclList(items.front());
    std::vector<std::pair<std::string, std::string>> pairs;
    for (std::size_t i = 0; i + 1 < items.size(); i += 2)
        pairs.emplace_back(items[i], items[i + 1]);
    return pairs;
}

void writeIdentity(std::ostream& out, const HBOBoard& board) {
    const HBOBoardComponent* part = board.getActivePart();
    std::vector<std::string> revisions;
    for (const auto& kv : board.getCompatibleBoardRevisions())
        revisions.push_back(kv.second);
    std::string kind = board.isIntegratedBoard() ? "integrated board"
                       : board.findFpgaComponent() ? "reference board"
                                                   : "daughter board";
    writeFields(out, {{"Catalogue name", board.getName()},
                      {"Vendor", board.getVendor()},
                      {"Board name", board.getBoardName()},
                      {"File version", board.getVersion()},
                      {"Board revision", board.getBoardRevision()},
                      {"Compatible revisions", HBOBoardUtils::join(revisions, ", ")},
                      {"Kind", kind},
                      {"FPGA part", part ? part->getPartName() : ""},
                      {"Schema version", board.getBoardSchemaVersion()},
                      {"Migrated from schema", board.getMigratedFromSchema()},
                      {"File revision", board.getFileRevision()},
                      {"Source", board.isUserDefined() ? "user repository" : "installed"},
                      {"Repository", board.getRepository()}});
    const boost::filesystem::path file(board.getBoardFile());
    out << "<p>Board directory: <a href=\"" << escape(fileUrl(file.parent_path().generic_string() + "/")) << "\">"
        << escape(file.parent_path().generic_string()) << "</a></p>\n";
    if (!board.getSpecUrl().empty()) {
        out << "<p>Vendor page: ";
        if (isWebAddress(board.getSpecUrl()))
            out << "<a href=\"" << escape(board.getSpecUrl()) << "\">" << escape(board.getSpecUrl()) << "</a>";
        else
            out << escape(board.getSpecUrl());
        out << "</p>\n";
    }
}

void writeImages(std::ostream& out, const SiteLinks& links, const std::vector<HBOImage*>& images) {
    for (const HBOImage* image : images) {
        if (!image)
            continue;
        auto it = links.images.find(image);
        const std::string caption = image->getDisplayName().empty() ? image->getName() : image->getDisplayName();
        if (it == links.images.end()) {
            out << "<p>Image " << escape(image->getName()) << " is missing from the board directory.</p>\n";
            continue;
        }
        out << "<figure><img src=\"" << relativeUrl(it->second) << "\" alt=\"" << escape(caption)
            << "\"><figcaption>" << escape(caption)
            << (image->getDescription().empty() ? "" : ": " + escape(image->getDescription()))
            << "</figcaption></figure>\n";
    }
}

void writePresets(std::ostream& out, const HBOBoard& board, const std::string& proc) {
    if (proc.empty())
        return;
    const std::vector<HBOIpPreset*> presets = board.findPresetProc(proc);
    if (presets.empty())
        return;
    out << "<details><summary>Preset " << escape(proc) << " (" << presets.size() << " IP"
        << (presets.size() == 1 ? "" : "s") << ")</summary>\n<ul>\n";
    for (const HBOIpPreset* p : presets) {
        if (!p)
            continue;
        out << "<li>" << escape(p->getVendor() + ":" + p->getLibrary() + ":" + p->getName() + ":" + p->getVersion());
        if (!p->getParamList().empty()) {
            out << "<ul>";
            for (const auto& kv : p->getParamList())
                out << "<li>" << escape(kv.first + " = " + kv.second) << "</li>";
            out << "</ul>";
        }
        out << "</li>\n";
    }
    out << "</ul></details>\n";
}

// The FPGA pins behind each port of an interface, with site and I/O standard.
void writeInterfacePins(std::ostream& out, const HBOBusIf& busIf) {
    const HBOBoardComponent* owner = busIf.getOwnerComponent();
    std::ostringstream rows;
    for (const HBOPortMap* map : busIf.getPortMapSeq()) {
        if (!map)
            continue;
        const HBOModelPort* port = show::portOf(busIf, map->getPhysicalPort());
        if (!port)
            continue;
        auto pinRow = [&](const std::string& index, const HBOPinProps* pin, const std::string& name) {
            writeRow(rows, {map->getLogicalPort(), map->getPhysicalPort() + show::portRange(*port), index, name,
                            pin ? pin->getPinLoc() : "", pin ? show::portProp(*pin, "iostandard") : ""});
        };
        const auto pinMap = show::pinPortMapByIndex(*port);
        for (const auto& kv : pinMap)
            pinRow(kv.first, owner ? owner->findPin(kv.second) : nullptr, kv.second);
        // A port of an older schema lists its pins itself.
        if (pinMap.empty())
            for (const HBOPinProps* pin : port->getPinPropsSeq())
                if (pin)
                    pinRow("", pin, pin->getName());
    }
    if (rows.str().empty())
        return;
    out << "<table class=\"pins\">\n<thead>";
    writeRow(out, {"Logical port", "Port", "Index", "Pin", "Site", "I/O standard"}, "th");
    out << "</thead>\n<tbody>\n" << rows.str() << "</tbody>\n</table>\n";
}

std::string flagList(const std::map<std::string, bool>& flags) {
    std::vector<std::string> items;
    for (const auto& kv : flags)
        items.push_back(kv.first + " = " + (kv.second ? "true" : "false"));
    return HBOBoardUtils::join(items, ", ");
}

// `shownPresets`: presets shown with the component's modes already.
void writeInterface(std::ostream& out, const HBOBoard& board, const HBOBusIf& busIf,
                    const std::set<std::string>& shownPresets) {
    const bool off = busIf.getIsEnabled() == "false";
    out << "<h5" << (off ? " class=\"disabled\"" : "") << ">Interface " << escape(busIf.getName())
        << (off ? "<span class=\"badge\">disabled</span>" : "") << "</h5>\n";
    std::vector<std::string> prefs;
    for (const HBOBusIfPreference* pref : busIf.getPreferences())
        if (pref)
            prefs.push_back(show::preferredIpVlnv(*pref));
    writeFields(out, {{"Type", show::interfaceType(busIf)},
                      {"Mode", busIf.getInterfaceMode()},
                      {"Display name", busIf.getDisplayName()},
                      {"Description", busIf.getDescription()},
                      {"Preferred IPs", HBOBoardUtils::join(prefs, ", ")},
                      {"Needs jumpers", flagList(busIf.getJumpers())},
                      {"Needs board parameters", flagList(busIf.getParams())}});
    if (!shownPresets.count(busIf.getPresetProcName()))
        writePresets(out, board, busIf.getPresetProcName());
    writeInterfacePins(out, busIf);
}

// Returns the preset procedures it showed.
std::set<std::string> writeModes(std::ostream& out, const HBOBoard& board, const HBOBoardComponent& c) {
    std::set<std::string> done;
    if (c.getComponentModes().empty())
        return done;
    out << "<table class=\"modes\">\n<thead>";
    writeRow(out, {"Mode", "Display name", "Interfaces", "Preset", "Depends on", "Enabled"}, "th");
    out << "</thead>\n<tbody>\n";
    std::vector<std::string> procs;
    for (const HBOComponentMode* mode : c.getComponentModes()) {
        if (!mode)
            continue;
        std::vector<std::string> intfs;
        for (const auto& kv : mode->getInterfaces())
            intfs.push_back(kv.second.first + (kv.second.second ? " (optional)" : ""));
        writeRow(out, {mode->getName(), mode->getDisplayName(), HBOBoardUtils::join(intfs, ", "),
                       mode->getPresetProcName(), mode->getEnablementDependency(), mode->getIsEnabled()});
        procs.push_back(mode->getPresetProcName());
    }
    out << "</tbody>\n</table>\n";
    for (const std::string& proc : procs)
        if (done.insert(proc).second)
            writePresets(out, board, proc);
    return done;
}

// Interfaces name the device they reach with of_component, and usually sit
// on the FPGA or the connector; they are shown with that device, where one
// looks for them.
std::map<std::string, std::vector<const HBOBusIf*>> interfacesByDevice(const HBOBoard& board) {
    std::map<std::string, std::vector<const HBOBusIf*>> out;
    for (const auto& kv : board.getBoardComponents()) {
        if (!kv.second)
            continue;
        for (const auto& bi : kv.second->getBusIfMap()) {
            if (!bi.second)
                continue;
            const std::string& of = bi.second->getOfComponent();
            const HBOBoardComponent* device = of.empty() ? nullptr : board.findBoardComponent(of);
            out[(device ? device : kv.second)->getComponentName()].push_back(bi.second);
        }
    }
    return out;
}

void writeComponent(std::ostream& out, const SiteLinks& links, const HBOBoard& board, const HBOBoardComponent& c,
                    const std::vector<const HBOBusIf*>& interfaces) {
    const bool off = c.getIsEnabled() == "false";
    out << "<section id=\"" << escape(componentAnchor(c)) << "\"" << (off ? " class=\"disabled\"" : "") << ">\n<h4>"
        << escape(c.getComponentName()) << (c.getDisplayName().empty() ? "" : " &ndash; " + escape(c.getDisplayName()))
        << (off ? "<span class=\"badge\">disabled</span>" : "") << "</h4>\n";
    writeFields(out, {{"Part", c.getPartName()},
                      {"Sub type", c.getSubType()},
                      {"Vendor", c.getVendor()},
                      {"Description", c.getDescription()},
                      {"Connected to", c.getConnectedToLogicStr()},
                      {"Pins", c.getPinCount() == 0 ? "" : std::to_string(c.getPinCount())}});
    writeImages(out, links, c.getImages());
    const std::set<std::string> presets = writeModes(out, board, c);
    for (const HBOBusIf* i : interfaces)
        writeInterface(out, board, *i, presets);
    out << "</section>\n";
}

void writeComponents(std::ostream& out, const SiteLinks& links, const HBOBoard& board) {
    std::map<std::string, std::vector<const HBOBoardComponent*>> byType;
    for (const auto& kv : board.getBoardComponents())
        if (kv.second)
            byType[kv.second->getType()].push_back(kv.second);
    const auto interfaces = interfacesByDevice(board);
    static const std::vector<const HBOBusIf*> none;
    out << "<h2 id=\"components\">Components</h2>\n";
    for (const auto& kv : byType) {
        out << "<h3>" << escape(kv.first.empty() ? "(no type)" : kv.first) << "</h3>\n";
        for (const HBOBoardComponent* c : kv.second)
        {
            auto it = interfaces.find(c->getComponentName());
            writeComponent(out, links, board, *c, it == interfaces.end() ? none : it->second);
        }
    }
}

// Full and partial fits of a connector, each linked to the other board's connector.
void writeFitLists(std::ostream& out, const SiteLinks& links, const ConnectorFit& fit) {
    for (const auto& group : {std::make_pair("Fits fully", &fit.full), std::make_pair("Fits partly", &fit.partial)}) {
        out << "<p>" << group.first << ":" << (group.second->empty() ? " none" : "") << "</p>\n";
        if (group.second->empty())
            continue;
        out << "<ul>\n";
        for (const HBOBoardComponent* other : *group.second)
            out << "<li>" << boardLink(links, other->getBoard(), componentAnchor(*other)) << ", connector "
                << escape(other->getComponentName()) << "</li>\n";
        out << "</ul>\n";
    }
}

void writeCompatibility(std::ostream& out, const SiteCatalog& catalog, const SiteLinks& links, const HBOBoard& board) {
    const std::vector<ConnectorFit> daughters = catalog.fitsOf(board);
    const std::vector<ConnectorFit> hosts = catalog.hostsOf(board);
    if (daughters.empty() && hosts.empty())
        return;
    out << "<h2 id=\"compatibility\">Connector compatibility</h2>\n";
    if (!hosts.empty())
        out << "<p>The reference boards whose connectors this board fits.</p>\n";
    for (const std::vector<ConnectorFit>* fits : {&daughters, &hosts}) {
        for (const ConnectorFit& fit : *fits) {
            out << "<h3>Connector <a href=\"#" << escape(componentAnchor(*fit.own)) << "\">"
                << escape(fit.own->getComponentName()) << "</a>"
                << (fit.own->getSubType().empty() ? "" : " (" + escape(fit.own->getSubType()) + ")") << "</h3>\n";
            writeFitLists(out, links, fit);
        }
    }
}

void writeConnections(std::ostream& out, const HBOBoard& board) {
    if (board.getBuses().empty())
        return;
    out << "<h2 id=\"connections\">Connections</h2>\n<table>\n<thead>";
    writeRow(out, {"Connection", "From", "To", "Nets", "Depends on", "Enabled"}, "th");
    out << "</thead>\n<tbody>\n";
    for (const HBOBoardBus* bus : board.getBuses())
        if (bus)
            writeRow(out, {bus->getName(), bus->getComp1(), bus->getComp2(),
                           std::to_string(bus->getBoardBusNets().size()), bus->getEnablementDependency(),
                           bus->getIsEnabled()});
    out << "</tbody>\n</table>\n";
}

// What a jumper switches: interfaces, modes and connections that depend on it.
std::vector<std::string> enabledBy(const HBOBoard& board, const std::string& jumper) {
    std::vector<std::string> out;
    for (const auto& kv : board.getBoardComponents()) {
        if (!kv.second)
            continue;
        for (const auto& bi : kv.second->getBusIfMap()) {
            if (!bi.second)
                continue;
            auto it = bi.second->getJumpers().find(jumper);
            if (it != bi.second->getJumpers().end())
                out.push_back("interface " + bi.second->getName() + (it->second ? " when true" : " when false"));
        }
        for (const HBOComponentMode* mode : kv.second->getComponentModes())
            if (mode)
                for (const auto& dep : dependencyPairs(mode->getEnablementDependency()))
                    if (dep.first == jumper)
                        out.push_back("mode " + kv.second->getComponentName() + "." + mode->getName() + " when " +
                                      dep.second);
    }
    for (const HBOBoardBus* bus : board.getBuses())
        if (bus)
            for (const auto& dep : dependencyPairs(bus->getEnablementDependency()))
                if (dep.first == jumper)
                    out.push_back("connection " + bus->getName() + " when " + dep.second);
    return out;
}

void writeJumpers(std::ostream& out, const HBOBoard& board) {
    if (board.getJumpers().empty())
        return;
    out << "<h2 id=\"jumpers\">Jumpers</h2>\n<table>\n<thead>";
    writeRow(out, {"Jumper", "Default", "Description", "Enables"}, "th");
    out << "</thead>\n<tbody>\n";
    for (const HBOJumper* j : board.getJumpers())
        if (j)
            writeRow(out, {j->getName(), j->getDefaultValue() ? "on" : "off", j->getDescription(),
                           HBOBoardUtils::join(enabledBy(board, j->getName()), "; ")});
    out << "</tbody>\n</table>\n";
}

void writeParameters(std::ostream& out, const HBOBoard& board) {
    if (board.getParameters().empty())
        return;
    out << "<h2 id=\"parameters\">Parameters</h2>\n<table>\n<thead>";
    writeRow(out, {"Parameter", "Value", "Type", "Range", "Read only"}, "th");
    out << "</thead>\n<tbody>\n";
    for (const HBOParameter* p : board.getParameters())
        if (p)
            writeRow(out, {p->getName(), p->getValue(), p->getValueType(),
                           p->getValueMin().empty() && p->getValueMax().empty()
                               ? ""
                               : p->getValueMin() + ".." + p->getValueMax(),
                           p->getReadOnly()});
    out << "</tbody>\n</table>\n";
}

void writePowerRails(std::ostream& out, const HBOBoard& board) {
    if (board.getPowerRails().empty())
        return;
    out << "<h2 id=\"power\">Power rails</h2>\n<table>\n<thead>";
    writeRow(out, {"Rail", "Kind", "Supplies", "Rails"}, "th");
    out << "</thead>\n<tbody>\n";
    for (const HBOPowerRail& rail : board.getPowerRails()) {
        std::vector<std::string> rails;
        for (const std::string& r : rail.getRailNames()) {
            const int phases = rail.getMemberPhases(r);
            rails.push_back(phases > 0 ? r + " (" + std::to_string(phases) + " phases)" : r);
        }
        const std::string kind = rail.isPhasedRail() ? std::to_string(rail.getNumPhases()) + " phases"
                                 : rail.isDirect()   ? "direct"
                                                     : "";
        writeRow(out, {rail.getName(), kind, HBOBoardUtils::join(rail.getSupplyNames(), ", "),
                       HBOBoardUtils::join(rails, ", ")});
    }
    out << "</tbody>\n</table>\n";
}

void writeDataProps(std::ostream& out, const HBOBoardDataProps::PropMap& props) {
    out << "<dl class=\"fields\">\n";
    for (const auto& kv : props) {
        const show::DataPropValue v = show::dataPropValue(kv.second);
        out << "<dt>" << escape(kv.first) << "</dt><dd>";
        if (v.isGroup)
            writeDataProps(out, *v.group);
        else
            out << escape(v.known ? v.text : "(a value of type " + v.text + ")");
        out << "</dd>\n";
    }
    out << "</dl>\n";
}

}  // namespace

std::string componentAnchor(const HBOBoardComponent& component) { return "c-" + component.getComponentName(); }

std::string messageTable(const std::vector<ComMsgMgrInstance>& messages) {
    std::ostringstream out;
    out << "<table class=\"messages\">\n<thead>";
    writeRow(out, {"Severity", "Id", "Message"}, "th");
    out << "</thead>\n<tbody>\n";
    for (const ComMsgMgrInstance& m : messages) {
        const std::string severity = ComMsgMgr::severityName(m.getMask());
        std::string cls = severity;
        std::replace(cls.begin(), cls.end(), ' ', '_');
        out << "<tr class=\"sev-" << escape(cls) << "\"><td>" << escape(severity) << "</td><td>"
            << escape(m.getId()) << "</td><td>" << escape(m.getText()) << "</td></tr>\n";
    }
    out << "</tbody>\n</table>\n";
    return out.str();
}

std::string boardPage(const SiteCatalog& catalog, const SiteLinks& links, const HBOBoard& board,
                      const std::string& title) {
    std::ostringstream out;
    const std::string display = board.getDisplayName().empty() ? board.getName() : board.getDisplayName();
    out << pageStart(display + " - " + title, "../") << "<nav><a href=\"../index.html\">All boards</a> | "
        << escape(title) << "</nav>\n<h1>" << escape(display) << "</h1>\n";
    writeIdentity(out, board);

    const std::string desc = board.getLongDesc().empty() ? board.getDescription() : board.getLongDesc();
    if (!desc.empty())
        out << "<h2 id=\"description\">Description</h2>\n<p>" << escape(desc) << "</p>\n";
    if (!board.getImages().empty()) {
        out << "<h2 id=\"images\">Images</h2>\n";
        writeImages(out, links, board.getImages());
    }
    out << "<h2 id=\"diagram\">Diagram</h2>\n" << boardDiagram(board);
    writeCompatibility(out, catalog, links, board);
    writeComponents(out, links, board);
    writeConnections(out, board);
    writeJumpers(out, board);
    writeParameters(out, board);
    writePowerRails(out, board);
    const HBOBoardDataProps::PropMap& data = board.getBoardDataProps().getAllData();
    if (!data.empty()) {
        out << "<h2 id=\"data\">Data properties</h2>\n";
        writeDataProps(out, data);
    }
    out << "<h2 id=\"messages\">Check messages</h2>\n";
    const std::vector<ComMsgMgrInstance>& messages = catalog.messagesOf(board);
    out << (messages.empty() ? "<p>The board read without messages.</p>\n" : messageTable(messages));
    out << pageEnd("../");
    return out.str();
}

}  // namespace site
}  // namespace zrboard

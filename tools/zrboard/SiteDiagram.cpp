// The board drawn as SVG: the FPGA in the middle, every other component on a
// ring around it, one line per pair of connected components with its nets.
#include <cmath>
#include <map>
#include <sstream>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardComponent.h"
#include "SiteHtml.h"
#include "SitePages.h"

namespace zrboard {
namespace site {

namespace {

const double kBoxWidth = 160, kBoxHeight = 44, kMargin = 20;

struct Node {
    const HBOBoardComponent* component;
    double x = 0, y = 0;  // centre
};

struct Edge {
    std::size_t a, b;
    std::size_t nets = 0;
    bool enabled = false;
};

bool isOff(const HBOBoardComponent& c) { return c.getIsEnabled() == "false"; }

// Long names are cut on the drawing; the full name stays in the tooltip.
std::string shortened(const std::string& text, std::size_t max = 22) {
    if (text.size() <= max)
        return text;
    std::size_t cut = max - 1;
    // Never cut inside a multi-byte character.
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80)
        --cut;
    return text.substr(0, cut) + "\xE2\x80\xA6";
}

std::string num(double v) {
    std::ostringstream out;
    out << std::lround(v);
    return out.str();
}

std::string kindLabel(const HBOBoardComponent& c, bool centre) {
    std::string label = c.isConnector() ? "connector" : c.getType();
    if (!c.getSubType().empty() && c.getSubType() != label)
        label += " " + c.getSubType();
    if (centre && !c.getPartName().empty())
        label = c.getPartName();
    return label + (isOff(c) ? " (disabled)" : "");
}

}  // namespace

std::string boardDiagram(const HBOBoard& board) {
    std::vector<Node> nodes;
    const HBOBoardComponent* centre = board.findFpgaComponent();
    std::vector<const HBOBoardComponent*> others;
    for (const auto& kv : board.getBoardComponents()) {
        if (!kv.second)
            continue;
        // A daughter board has no FPGA: its first connector takes the middle.
        if (!centre && kv.second->isConnector())
            centre = kv.second;
        if (kv.second != centre)
            others.push_back(kv.second);
    }
    if (!centre && !others.empty()) {
        centre = others.front();
        others.erase(others.begin());
    }
    if (!centre)
        return "<p>The board has no components to draw.</p>\n";

    // The ring grows with the number of components so that boxes don't overlap.
    const double n = static_cast<double>(others.size());
    const double ry = std::max(130.0, n * (kBoxHeight + 16) / (2 * M_PI) * 0.9);
    const double rx = std::max(260.0, n * (kBoxWidth + 20) / (2 * M_PI) * 0.9);
    const double width = 2 * (rx + kBoxWidth / 2 + kMargin), height = 2 * (ry + kBoxHeight + kMargin);
    const double cx = width / 2, cy = height / 2;

    std::map<std::string, std::size_t> index;
    nodes.push_back({centre, cx, cy});
    index[centre->getComponentName()] = 0;
    for (std::size_t i = 0; i < others.size(); ++i) {
        const double angle = -M_PI / 2 + 2 * M_PI * static_cast<double>(i) / std::max(1.0, n);
        nodes.push_back({others[i], cx + rx * std::cos(angle), cy + ry * std::sin(angle)});
        index[others[i]->getComponentName()] = i + 1;
    }

    std::map<std::pair<std::size_t, std::size_t>, Edge> edges;
    for (const HBOBoardBus* bus : board.getBuses()) {
        if (!bus)
            continue;
        auto a = index.find(bus->getComp1()), b = index.find(bus->getComp2());
        if (a == index.end() || b == index.end() || a->second == b->second)
            continue;
        const auto key = std::minmax(a->second, b->second);
        Edge& e = edges.emplace(key, Edge{key.first, key.second}).first->second;
        e.nets += bus->getBoardBusNets().size();
        e.enabled = e.enabled || bus->getIsEnabled() != "false";
    }

    std::ostringstream out;
    out << "<svg class=\"diagram\" xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" width=\"" << num(width)
        << "\" height=\"" << num(height) << "\" viewBox=\"0 0 " << num(width) << " " << num(height)
        << "\">\n<title>" << escape("Components of " + board.getName()) << "</title>\n";
    for (const auto& kv : edges) {
        const Edge& e = kv.second;
        const Node &a = nodes[e.a], &b = nodes[e.b];
        const bool off = !e.enabled || isOff(*a.component) || isOff(*b.component);
        out << "<line" << (off ? " class=\"off\"" : "") << " x1=\"" << num(a.x) << "\" y1=\"" << num(a.y)
            << "\" x2=\"" << num(b.x) << "\" y2=\"" << num(b.y) << "\"/>\n";
        // Labels sit a third of the way out, clear of the crowded middle.
        const double lx = a.x + (b.x - a.x) * (e.a == 0 ? 0.62 : 0.5), ly = a.y + (b.y - a.y) * (e.a == 0 ? 0.62 : 0.5);
        out << "<text class=\"nets\" x=\"" << num(lx) << "\" y=\"" << num(ly - 3) << "\" text-anchor=\"middle\">"
            << e.nets << (e.nets == 1 ? " net" : " nets") << "</text>\n";
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const HBOBoardComponent& c = *nodes[i].component;
        std::string cls = i == 0 && board.findFpgaComponent() == &c ? "fpga" : c.isConnector() ? "connector" : "box";
        if (isOff(c))
            cls = "off";
        const double x = nodes[i].x - kBoxWidth / 2, y = nodes[i].y - kBoxHeight / 2;
        out << "<a href=\"#" << escape(componentAnchor(c)) << "\"><title>"
            << escape(c.getComponentName() + (c.getDisplayName().empty() ? "" : " (" + c.getDisplayName() + ")") +
                      ": " + kindLabel(c, false))
            << "</title>\n<rect class=\"" << cls << "\" x=\"" << num(x) << "\" y=\"" << num(y) << "\" width=\""
            << num(kBoxWidth) << "\" height=\"" << num(kBoxHeight) << "\" rx=\"6\"/>\n"
            << "<text" << (isOff(c) ? " class=\"off\"" : "") << " x=\"" << num(nodes[i].x) << "\" y=\""
            << num(nodes[i].y - 4) << "\" text-anchor=\"middle\">" << escape(shortened(c.getComponentName()))
            << "</text>\n<text" << (isOff(c) ? " class=\"off\"" : "") << " x=\"" << num(nodes[i].x) << "\" y=\""
            << num(nodes[i].y + 12) << "\" text-anchor=\"middle\">" << escape(shortened(kindLabel(c, i == 0), 26))
            << "</text></a>\n";
    }
    out << "</svg>\n";
    return out.str();
}

}  // namespace site
}  // namespace zrboard

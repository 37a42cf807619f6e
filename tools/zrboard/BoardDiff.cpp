#include "BoardDiff.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include <boost/filesystem/path.hpp>
#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardCompMuxPosition.h"
#include "HBOBoardComponent.h"
#include "HBOBoardComponentDriver.h"
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

namespace zrboard {

namespace {

using Path = std::vector<BoardDifference::Step>;
using StringMap = std::map<std::string, std::string>;

using HBOBoardUtils::join;
using show::formatFloat;

const char* boolText(bool b) { return b ? "true" : "false"; }

Path below(const Path& parent, const std::string& kind, const std::string& name) {
    Path p = parent;
    p.push_back({kind, name});
    return p;
}

template <class T>
std::vector<const T*> present(const std::vector<T*>& items) {
    std::vector<const T*> out;
    for (const T* item : items)
        if (item)
            out.push_back(item);
    return out;
}

template <class Map>
std::vector<const typename std::remove_pointer<typename Map::mapped_type>::type*> presentValues(const Map& map) {
    std::vector<const typename std::remove_pointer<typename Map::mapped_type>::type*> out;
    for (const auto& kv : map)
        if (kv.second)
            out.push_back(kv.second);
    return out;
}

// The board's directory, so that file names inside it can be compared
// without it.
std::string boardDir(const HBOBoard& board) {
    return boost::filesystem::path(board.getBoardFile()).parent_path().string();
}

std::string relativeTo(const std::string& dir, const std::string& path) {
    if (dir.empty())
        return path;
    if (path == dir)
        return ".";
    if (path.size() > dir.size() && path.compare(0, dir.size(), dir) == 0 && path[dir.size()] == '/')
        return path.substr(dir.size() + 1);
    return path;
}

StringMap relativeValues(const std::string& dir, StringMap map) {
    for (auto& kv : map)
        kv.second = relativeTo(dir, kv.second);
    return map;
}

std::string flagText(const std::map<std::string, bool>& flags, const std::string& name) {
    auto it = flags.find(name);
    return it == flags.end() ? std::string() : boolText(it->second);
}

std::string vlnvOf(const HBOIpPreset& p) {
    return p.getVendor() + ":" + p.getLibrary() + ":" + p.getName() + ":" + p.getVersion();
}

struct ConstraintText : boost::static_visitor<std::string> {
    std::string operator()(const HBOBoardComponent::DciCascadeConstr& c) const {
        std::vector<std::string> slaves;
        for (int b : c.slaveBanks)
            slaves.push_back(std::to_string(b));
        return "dci_cascade master " + std::to_string(c.masterBank) + " slaves " + join(slaves, " ");
    }
    std::string operator()(const HBOBoardComponent::InternalVrefConstr& c) const {
        return "internal_vref " + std::to_string(c.bank) + " " + formatFloat(c.voltage);
    }
};

// The pins whose I/O standard the reader copied from the FPGA pin they are
// wired to; the FPGA pin's own change is the one to report.
std::set<const HBOPinProps*> ioStandardsFromFpga(const HBOBoard& board) {
    std::set<const HBOPinProps*> derived;
    for (const HBOBoardBus* bus : board.getBuses()) {
        if (!bus)
            continue;
        const HBOBoardComponent* c1 = board.findBoardComponent(bus->getComp1());
        const HBOBoardComponent* c2 = board.findBoardComponent(bus->getComp2());
        if (!c1 || !c2)
            continue;
        for (const HBOBoardBusNet* net : bus->getBoardBusNets()) {
            const HBOPinProps* pin1 = net ? c1->getPinByIndex(net->getC1PinIndex()) : nullptr;
            const HBOPinProps* pin2 = net ? c2->getPinByIndex(net->getC2PinIndex()) : nullptr;
            if (!pin1 || !pin2)
                continue;
            if (c1->getType() == "fpga" && !show::portProp(*pin1, "iostandard").empty())
                derived.insert(pin2);
            else if (c2->getType() == "fpga" && !show::portProp(*pin2, "iostandard").empty())
                derived.insert(pin1);
        }
    }
    return derived;
}

class Differ {
public:
    Differ(const HBOBoard& a, const HBOBoard& b, std::vector<BoardDifference>& out)
        : m_a(a),
          m_b(b),
          m_dirA(boardDir(a)),
          m_dirB(boardDir(b)),
          m_derivedA(ioStandardsFromFpga(a)),
          m_derivedB(ioStandardsFromFpga(b)),
          m_out(out) {}

    void run();

private:
    void changed(const Path& p, const std::string& field, const std::string& before, const std::string& after) {
        if (before != after)
            m_out.push_back({m_section, p, BoardDifference::kChanged, field, before, after});
    }
    void changedPath(const Path& p, const std::string& field, const std::string& before, const std::string& after) {
        changed(p, field, relativeTo(m_dirA, before), relativeTo(m_dirB, after));
    }
    // Every key of either map as a field of its own; a missing key reads as empty.
    void changedMap(const Path& p, const std::string& prefix, const StringMap& a, const StringMap& b) {
        for (const auto& kv : a) {
            auto it = b.find(kv.first);
            changed(p, prefix + kv.first, kv.second, it == b.end() ? std::string() : it->second);
        }
        for (const auto& kv : b)
            if (!a.count(kv.first))
                changed(p, prefix + kv.first, std::string(), kv.second);
    }

    // Objects only in A are removed, only in B added, in both compared. A
    // name that occurs more than once is told apart by its occurrence ("x #2").
    template <class T>
    void match(const Path& parent, const std::string& kind, const std::vector<const T*>& a,
               const std::vector<const T*>& b, const std::function<std::string(const T&)>& key,
               const std::function<std::string(const T&)>& summary,
               const std::function<void(const Path&, const T&, const T&)>& compare) {
        const std::vector<std::string> namesA = occurrences(a, key), namesB = occurrences(b, key);
        std::map<std::string, std::size_t> indexB;
        for (std::size_t i = 0; i < namesB.size(); ++i)
            indexB.emplace(namesB[i], i);
        const std::set<std::string> inA(namesA.begin(), namesA.end());
        for (std::size_t i = 0; i < a.size(); ++i) {
            const Path p = below(parent, kind, namesA[i]);
            auto it = indexB.find(namesA[i]);
            if (it == indexB.end())
                m_out.push_back({m_section, p, BoardDifference::kRemoved, "", summary(*a[i]), ""});
            else
                compare(p, *a[i], *b[it->second]);
        }
        for (std::size_t i = 0; i < b.size(); ++i)
            if (!inA.count(namesB[i]))
                m_out.push_back(
                    {m_section, below(parent, kind, namesB[i]), BoardDifference::kAdded, "", "", summary(*b[i])});
    }
    template <class T>
    static std::vector<std::string> occurrences(const std::vector<const T*>& items,
                                                const std::function<std::string(const T&)>& key) {
        std::vector<std::string> names;
        std::map<std::string, int> seen;
        for (const T* item : items) {
            const std::string k = key(*item);
            const int n = ++seen[k];
            names.push_back(n == 1 ? k : k + " #" + std::to_string(n));
        }
        return names;
    }

    void identity();
    void parameters(const Path& p, const std::vector<HBOParameter*>& a, const std::vector<HBOParameter*>& b);
    void images(const Path& p, const std::vector<HBOImage*>& a, const std::vector<HBOImage*>& b);
    void preferredIps(const Path& p, const std::vector<HBOBusIfPreference*>& a,
                      const std::vector<HBOBusIfPreference*>& b);
    void component(const Path& p, const HBOBoardComponent& a, const HBOBoardComponent& b);
    void drivers(const Path& p, const HBOBoardComponent& a, const HBOBoardComponent& b);
    void mode(const Path& p, const HBOComponentMode& a, const HBOComponentMode& b);
    void interface(const Path& p, const HBOBusIf& a, const HBOBusIf& b);
    void port(const Path& p, const HBOBusIf& busA, const HBOPortMap& a, const HBOBusIf& busB, const HBOPortMap& b);
    void pin(const Path& p, const HBOPinProps& a, const HBOPinProps& b);
    void connection(const Path& p, const HBOBoardBus& a, const HBOBoardBus& b);
    void presets(const HBOBoard::IpPresetMap& a, const HBOBoard::IpPresetMap& b);
    void powerRails();
    void dataProps(const Path& p, const HBOBoardDataProps::PropMap& a, const HBOBoardDataProps::PropMap& b);

    // The reader hands the board's description down to every component as
    // its long description, and as its description when it has none, and
    // copies it into the board's long description: only a text of the
    // object's own is its field.
    static std::string ownText(const std::string& text, const HBOBoard& board) {
        return text == board.getDescription() || text == board.getLongDesc() ? std::string() : text;
    }
    std::string netEnd(const HBOBoard& board, const std::string& component, int index) const {
        const std::string pin = show::pinNameAt(board, component, index);
        return std::to_string(index) + (pin.empty() ? "" : " (" + pin + ")");
    }

    const HBOBoard& m_a;
    const HBOBoard& m_b;
    const std::string m_dirA;
    const std::string m_dirB;
    const std::set<const HBOPinProps*> m_derivedA;
    const std::set<const HBOPinProps*> m_derivedB;
    std::vector<BoardDifference>& m_out;
    std::string m_section;
};

bool isActivePart(const HBOBoard& board, const HBOBoardComponent& c) { return board.getActivePart() == &c; }

std::string activePartText(const HBOBoard& board) {
    const HBOBoardComponent* active = board.getActivePart();
    return active ? active->getPartName() : std::string();
}

std::string revisionsKey(const std::pair<const int, std::string>& kv) { return std::to_string(kv.first); }

void Differ::identity() {
    m_section = "identity";
    const Path p;
    changed(p, "vendor", m_a.getVendor(), m_b.getVendor());
    changed(p, "board_name", m_a.getBoardName(), m_b.getBoardName());
    changed(p, "version", m_a.getVersion(), m_b.getVersion());
    changed(p, "display_name", m_a.getDisplayName(), m_b.getDisplayName());
    changed(p, "schema_version", m_a.getBoardSchemaVersion(), m_b.getBoardSchemaVersion());
    changed(p, "migrated_from_schema", m_a.getMigratedFromSchema(), m_b.getMigratedFromSchema());
    changed(p, "file_revision", m_a.getFileRevision(), m_b.getFileRevision());
    changed(p, "part", activePartText(m_a), activePartText(m_b));
    changed(p, "description", m_a.getDescription(), m_b.getDescription());
    changed(p, "long_description", m_a.getLongDesc() == m_a.getDescription() ? "" : m_a.getLongDesc(),
            m_b.getLongDesc() == m_b.getDescription() ? "" : m_b.getLongDesc());
    changed(p, "url", m_a.getSpecUrl(), m_b.getSpecUrl());
    changedPath(p, "preset_file", m_a.getPresetFile(), m_b.getPresetFile());
    changedPath(p, "board_image", m_a.getBoardImage(), m_b.getBoardImage());
    changed(p, "supports_ced", boolText(m_a.getSupportsCED()), boolText(m_b.getSupportsCED()));
    changed(p, "jtag_chains", join(m_a.getJtagChains(), " "), join(m_b.getJtagChains(), " "));

    using Rev = std::pair<const int, std::string>;
    std::vector<const Rev*> revA, revB;
    for (const Rev& kv : m_a.getCompatibleBoardRevisions())
        revA.push_back(&kv);
    for (const Rev& kv : m_b.getCompatibleBoardRevisions())
        revB.push_back(&kv);
    match<Rev>(
        p, "revision", revA, revB, revisionsKey, [](const Rev& r) { return r.second; },
        [this](const Path& q, const Rev& a, const Rev& b) { changed(q, "name", a.second, b.second); });
}

void Differ::parameters(const Path& p, const std::vector<HBOParameter*>& a, const std::vector<HBOParameter*>& b) {
    match<HBOParameter>(
        p, "parameter", present(a), present(b), [](const HBOParameter& x) { return x.getName(); },
        [](const HBOParameter& x) { return x.getValue(); },
        [this](const Path& q, const HBOParameter& x, const HBOParameter& y) {
            changed(q, "value", x.getValue(), y.getValue());
            changed(q, "value_type", x.getValueType(), y.getValueType());
            changed(q, "value_min", x.getValueMin(), y.getValueMin());
            changed(q, "value_max", x.getValueMax(), y.getValueMax());
            changed(q, "read_only", x.getReadOnly(), y.getReadOnly());
        });
}

void Differ::images(const Path& p, const std::vector<HBOImage*>& a, const std::vector<HBOImage*>& b) {
    match<HBOImage>(
        p, "image", present(a), present(b),
        [this](const HBOImage& x) { return relativeTo(m_dirA, relativeTo(m_dirB, x.getName())); },
        [](const HBOImage& x) { return x.getDisplayName(); },
        [this](const Path& q, const HBOImage& x, const HBOImage& y) {
            changed(q, "display_name", x.getDisplayName(), y.getDisplayName());
            changed(q, "description", x.getDescription(), y.getDescription());
            changed(q, "resolution", x.getResolution(), y.getResolution());
            changed(q, "sub_type", x.getSubType(), y.getSubType());
        });
}

void Differ::preferredIps(const Path& p, const std::vector<HBOBusIfPreference*>& a,
                          const std::vector<HBOBusIfPreference*>& b) {
    match<HBOBusIfPreference>(
        p, "preferred IP", present(a), present(b), show::preferredIpVlnv,
        [](const HBOBusIfPreference& x) { return "order " + std::to_string(x.getOrder()); },
        [this](const Path& q, const HBOBusIfPreference& x, const HBOBusIfPreference& y) {
            changed(q, "order", std::to_string(x.getOrder()), std::to_string(y.getOrder()));
            changed(q, "preset_proc", x.getPresetProc(), y.getPresetProc());
            changedPath(q, "preset_file", x.getPresetFile(), y.getPresetFile());
            changed(q, "major_group", x.getMajorGroup(), y.getMajorGroup());
            changed(q, "minor_group", x.getMinorGroup(), y.getMinorGroup());
        });
}

std::string componentSummary(const HBOBoardComponent& c) {
    std::string text = c.getType();
    if (!c.getSubType().empty())
        text += " " + c.getSubType();
    if (!c.getPartName().empty())
        text += ", part " + c.getPartName();
    return text;
}

std::string iicText(const HBOBoardComponent& c) {
    std::vector<std::string> items;
    for (const auto& kv : c.getIICPositions()) {
        if (!kv.second)
            continue;
        const std::string addresses = show::iicAddresses(*kv.second);
        items.push_back(std::to_string(kv.second->getPosition()) + " " + kv.second->getComponent() +
                        (addresses.empty() ? "" : " " + addresses));
    }
    return join(items, ", ");
}

std::string constraintsText(const HBOBoardComponent& c) {
    std::vector<std::string> items;
    for (const auto& constr : c.getDesignConstrs())
        items.push_back(boost::apply_visitor(ConstraintText(), constr));
    return join(items, ", ");
}

std::string additionalParts(const HBOBoardComponent& c) {
    std::vector<std::string> parts;
    c.getAdditionalSupportedPartNames(parts, false);
    return join(parts, " ");
}

std::string jtagText(const HBOBoardComponent& c) {
    std::vector<std::string> items;
    for (const auto& kv : c.getJtagPositions())
        items.push_back(kv.first + " " + kv.second);
    return join(items, ", ");
}

void Differ::component(const Path& p, const HBOBoardComponent& a, const HBOBoardComponent& b) {
    changed(p, "type", a.getType(), b.getType());
    changed(p, "sub_type", a.getSubType(), b.getSubType());
    // The active part is the board's part, compared with the board's identity.
    if (!isActivePart(m_a, a) || !isActivePart(m_b, b))
        changed(p, "part", a.getPartName(), b.getPartName());
    changed(p, "vendor", a.getVendor(), b.getVendor());
    changed(p, "display_name", a.getDisplayName(), b.getDisplayName());
    changed(p, "description", ownText(a.getDescription(), m_a), ownText(b.getDescription(), m_b));
    changed(p, "long_description", ownText(a.getLongDesc(), m_a), ownText(b.getLongDesc(), m_b));
    changed(p, "major_group", a.getMajorGroup(), b.getMajorGroup());
    changed(p, "connected_to", a.getConnectedToLogicStr(), b.getConnectedToLogicStr());
    changed(p, "pin_file", a.getPinMapFile(), b.getPinMapFile());
    changed(p, "url", a.getSpecUrl(), b.getSpecUrl());
    changedPath(p, "image_file", a.getImageFile(), b.getImageFile());
    changed(p, "additional_parts", additionalParts(a), additionalParts(b));
    changed(p, "jtag_positions", jtagText(a), jtagText(b));
    changed(p, "iic_positions", iicText(a), iicText(b));
    changed(p, "design_constraints", constraintsText(a), constraintsText(b));
    parameters(p, a.getParameters(), b.getParameters());
    images(p, a.getImages(), b.getImages());
    drivers(p, a, b);

    match<HBOComponentMode>(
        p, "mode", present(a.getComponentModes()), present(b.getComponentModes()),
        [](const HBOComponentMode& m) { return m.getName(); },
        [](const HBOComponentMode& m) { return m.getDisplayName(); },
        [this](const Path& q, const HBOComponentMode& x, const HBOComponentMode& y) { mode(q, x, y); });

    match<HBOBusIf>(
        p, "interface", presentValues(a.getBusIfMap()), presentValues(b.getBusIfMap()),
        [](const HBOBusIf& i) { return i.getName(); }, show::interfaceType,
        [this](const Path& q, const HBOBusIf& x, const HBOBusIf& y) { interface(q, x, y); });

    const std::vector<const HBOPinProps*> pinsA = show::pinsByIndex(a), pinsB = show::pinsByIndex(b);
    match<HBOPinProps>(
        p, "pin", pinsA, pinsB, [](const HBOPinProps& x) { return x.getName(); },
        [](const HBOPinProps& x) {
            std::string text = "index " + std::to_string(x.getPinIndex());
            if (x.hasPinLoc())
                text += ", site " + x.getPinLoc();
            const std::string iostd = show::portProp(x, "iostandard");
            return iostd.empty() ? text : text + ", iostandard " + iostd;
        },
        [this](const Path& q, const HBOPinProps& x, const HBOPinProps& y) { pin(q, x, y); });
}

void Differ::drivers(const Path& p, const HBOBoardComponent& a, const HBOBoardComponent& b) {
    match<HBOBoardComponentDriver>(
        p, "driver", present(a.getDrivers()), present(b.getDrivers()),
        [](const HBOBoardComponentDriver& d) { return d.getName(); },
        [](const HBOBoardComponentDriver& d) { return d.getVersion(); },
        [this](const Path& q, const HBOBoardComponentDriver& x, const HBOBoardComponentDriver& y) {
            changed(q, "version", x.getVersion(), y.getVersion());
            changed(q, "vendor", x.getVendor(), y.getVendor());
            changed(q, "description", x.getDescription(), y.getDescription());
            changed(q, "pre_compiled", x.getPreCompiled(), y.getPreCompiled());
            changed(q, "os", join(x.getOs(), " "), join(y.getOs(), " "));
            changed(q, "platforms", join(x.getPlatform(), " "), join(y.getPlatform(), " "));
            changed(q, "processor_architectures", join(x.getProcessorArchitecture(), " "),
                    join(y.getProcessorArchitecture(), " "));
            changedPath(q, "path", x.getDriverPath(), y.getDriverPath());
            changedMap(q, "file ", x.getFiles(), y.getFiles());
        });
}

void Differ::mode(const Path& p, const HBOComponentMode& a, const HBOComponentMode& b) {
    changed(p, "display_name", a.getDisplayName(), b.getDisplayName());
    changed(p, "description", a.getDescription(), b.getDescription());
    changed(p, "preset_proc", a.getPresetProcName(), b.getPresetProcName());
    changed(p, "enablement_dependency", a.getEnablementDependency(), b.getEnablementDependency());
    // The mode's interfaces are keyed by their order; a vendor thinks of them by name.
    using Entry = HBOComponentMode::InterfaceMap::value_type;
    std::vector<const Entry*> intfA, intfB;
    for (const Entry& e : a.getInterfaces())
        intfA.push_back(&e);
    for (const Entry& e : b.getInterfaces())
        intfB.push_back(&e);
    match<Entry>(
        p, "interface", intfA, intfB, [](const Entry& e) { return e.second.first; },
        [](const Entry& e) { return "order " + std::to_string(e.first) + (e.second.second ? ", optional" : ""); },
        [this](const Path& q, const Entry& x, const Entry& y) {
            changed(q, "order", std::to_string(x.first), std::to_string(y.first));
            changed(q, "optional", boolText(x.second.second), boolText(y.second.second));
        });
    preferredIps(p, a.getPreferredIps(), b.getPreferredIps());
}

void Differ::interface(const Path& p, const HBOBusIf& a, const HBOBusIf& b) {
    changed(p, "type", show::interfaceType(a), show::interfaceType(b));
    changed(p, "mode", a.getInterfaceMode(), b.getInterfaceMode());
    changed(p, "display_name", a.getDisplayName(), b.getDisplayName());
    changed(p, "description", a.getDescription(), b.getDescription());
    changed(p, "of_component", a.getOfComponent(), b.getOfComponent());
    changed(p, "preset_proc", a.getPresetProcName(), b.getPresetProcName());
    changedPath(p, "preset_file", a.getPresetFile(), b.getPresetFile());
    // The reader keeps a schema 2 interface's parameters as objects and as
    // pairs; older boards have only the pairs.
    if (!a.getParameters().empty() || !b.getParameters().empty())
        parameters(p, a.getParameters(), b.getParameters());
    else
        changedMap(p, "parameter ", a.getParamList(), b.getParamList());
    // Enablement dependencies: the jumpers and board parameters the interface needs.
    std::set<std::string> names;
    for (const auto& kv : a.getJumpers())
        names.insert(kv.first);
    for (const auto& kv : b.getJumpers())
        names.insert(kv.first);
    for (const std::string& n : names)
        changed(p, "needs jumper " + n, flagText(a.getJumpers(), n), flagText(b.getJumpers(), n));
    names.clear();
    for (const auto& kv : a.getParams())
        names.insert(kv.first);
    for (const auto& kv : b.getParams())
        names.insert(kv.first);
    for (const std::string& n : names)
        changed(p, "needs parameter " + n, flagText(a.getParams(), n), flagText(b.getParams(), n));
    preferredIps(p, a.getPreferences(), b.getPreferences());
    match<HBOPortMap>(
        p, "port", present(a.getPortMapSeq()), present(b.getPortMapSeq()),
        [](const HBOPortMap& m) { return m.getLogicalPort(); },
        [](const HBOPortMap& m) { return "-> " + m.getPhysicalPort(); },
        [&](const Path& q, const HBOPortMap& x, const HBOPortMap& y) { port(q, a, x, b, y); });
}

StringMap pinMapOf(const HBOModelPort* port) { return port ? port->getPinPortMap() : StringMap(); }

// A schema 1 port names its pins itself instead of mapping indices.
std::string pinListOf(const HBOModelPort* port) {
    std::vector<std::string> pins;
    if (port)
        for (const HBOPinProps* pin : port->getPinPropsSeq())
            if (pin)
                pins.push_back(pin->getName());
    return join(pins, " ");
}

void Differ::port(const Path& p, const HBOBusIf& busA, const HBOPortMap& a, const HBOBusIf& busB, const HBOPortMap& b) {
    changed(p, "physical_port", a.getPhysicalPort(), b.getPhysicalPort());
    const HBOModelPort* portA = show::portOf(busA, a.getPhysicalPort());
    const HBOModelPort* portB = show::portOf(busB, b.getPhysicalPort());
    changed(p, "direction", portA ? portA->getPortDir() : "", portB ? portB->getPortDir() : "");
    changed(p, "range", portA ? show::portRange(*portA) : "", portB ? show::portRange(*portB) : "");
    const StringMap mapA = pinMapOf(portA), mapB = pinMapOf(portB);
    // In index order, "2" before "10", as the pins of a port are read.
    std::vector<std::pair<std::string, std::string>> ordered;
    if (portA)
        ordered = show::pinPortMapByIndex(*portA);
    if (portB)
        for (const auto& kv : show::pinPortMapByIndex(*portB))
            if (!mapA.count(kv.first))
                ordered.push_back(kv);
    for (const auto& kv : ordered) {
        auto ia = mapA.find(kv.first), ib = mapB.find(kv.first);
        changed(p, "pin " + kv.first, ia == mapA.end() ? "" : ia->second, ib == mapB.end() ? "" : ib->second);
    }
    if (mapA.empty() && mapB.empty())
        changed(p, "pins", pinListOf(portA), pinListOf(portB));
}

void Differ::pin(const Path& p, const HBOPinProps& a, const HBOPinProps& b) {
    changed(p, "index", std::to_string(a.getPinIndex()), std::to_string(b.getPinIndex()));
    changed(p, "site", a.getPinLoc(), b.getPinLoc());
    if (!m_derivedA.count(&a) && !m_derivedB.count(&b))
        changed(p, "iostandard", show::portProp(a, "iostandard"), show::portProp(b, "iostandard"));
    const auto propsA = show::otherPortProps(a), propsB = show::otherPortProps(b);
    changedMap(p, "", StringMap(propsA.begin(), propsA.end()), StringMap(propsB.begin(), propsB.end()));
    changed(p, "internal_vref", a.getPinInternalVref(), b.getPinInternalVref());
    changed(p, "gt_loc", a.getGtLoc(), b.getGtLoc());
    changedMap(p, "iobank ", a.getIOBankPropertyList(), b.getIOBankPropertyList());
}

std::string rangeText(int start, int stop) { return std::to_string(start) + ".." + std::to_string(stop); }

void Differ::connection(const Path& p, const HBOBoardBus& a, const HBOBoardBus& b) {
    changed(p, "connection_name", a.getConnectionName(), b.getConnectionName());
    changed(p, "component1", a.getComp1(), b.getComp1());
    changed(p, "component2", a.getComp2(), b.getComp2());
    changed(p, "c1_range", rangeText(a.getStartIndexComp1(), a.getStopIndexComp1()),
            rangeText(b.getStartIndexComp1(), b.getStopIndexComp1()));
    changed(p, "c2_range", rangeText(a.getStartIndexComp2(), a.getStopIndexComp2()),
            rangeText(b.getStartIndexComp2(), b.getStopIndexComp2()));
    changed(p, "delay", formatFloat(a.getDelay()), formatFloat(b.getDelay()));
    changed(p, "min_delay", formatFloat(a.getMinDelay()), formatFloat(b.getMinDelay()));
    changed(p, "max_delay", formatFloat(a.getMaxDelay()), formatFloat(b.getMaxDelay()));
    changed(p, "enablement_dependency", a.getEnablementDependency(), b.getEnablementDependency());
    match<HBOBoardBusNet>(
        p, "net", present(a.getBoardBusNets()), present(b.getBoardBusNets()),
        [](const HBOBoardBusNet& n) { return n.getName(); },
        [](const HBOBoardBusNet& n) {
            return std::to_string(n.getC1PinIndex()) + " - " + std::to_string(n.getC2PinIndex());
        },
        [&](const Path& q, const HBOBoardBusNet& x, const HBOBoardBusNet& y) {
            // The pin names travel with the indices: a renumbered pin moves the net.
            changed(q, "c1_pin", netEnd(m_a, a.getComp1(), x.getC1PinIndex()),
                    netEnd(m_b, b.getComp1(), y.getC1PinIndex()));
            changed(q, "c2_pin", netEnd(m_a, a.getComp2(), x.getC2PinIndex()),
                    netEnd(m_b, b.getComp2(), y.getC2PinIndex()));
            // A net's delays are the connection's unless it has its own; its
            // enablement dependency is always the connection's.
            auto own = [](float value, float inherited) {
                return value == inherited ? std::string() : formatFloat(value);
            };
            changed(q, "typical_delay", own(x.getTypicalDelay(), a.getDelay()), own(y.getTypicalDelay(), b.getDelay()));
            changed(q, "min_delay", own(x.getMinDelay(), a.getMinDelay()), own(y.getMinDelay(), b.getMinDelay()));
            changed(q, "max_delay", own(x.getMaxDelay(), a.getMaxDelay()), own(y.getMaxDelay(), b.getMaxDelay()));
        });
}

void Differ::presets(const HBOBoard::IpPresetMap& a, const HBOBoard::IpPresetMap& b) {
    using Entry = HBOBoard::IpPresetMap::value_type;
    std::vector<const Entry*> entriesA, entriesB;
    for (const Entry& e : a)
        entriesA.push_back(&e);
    for (const Entry& e : b)
        entriesB.push_back(&e);
    // A rule's pairs are the board interfaces it associates, with their order.
    const bool isPreset = m_section == "presets";
    const std::string kind = isPreset ? "preset" : "rule";
    const std::string pairs = isPreset ? "parameter " : "board_interface ";
    match<Entry>(
        Path(), kind, entriesA, entriesB, [](const Entry& e) { return e.first; },
        [](const Entry& e) {
            std::vector<std::string> ips;
            for (const HBOIpPreset* ip : e.second)
                if (ip)
                    ips.push_back(vlnvOf(*ip));
            return join(ips, " ");
        },
        [this, pairs](const Path& q, const Entry& x, const Entry& y) {
            match<HBOIpPreset>(
                q, "ip", present(x.second), present(y.second),
                // "*", any interface of the IP, is what the reader puts for none.
                [](const HBOIpPreset& ip) {
                    const std::string& intf = ip.getIpInterface();
                    return vlnvOf(ip) + (intf.empty() || intf == "*" ? "" : " interface " + intf);
                },
                [](const HBOIpPreset& ip) { return ip.getPresetName(); },
                [this, pairs](const Path& r, const HBOIpPreset& s, const HBOIpPreset& t) {
                    changed(r, "preset_name", s.getPresetName(), t.getPresetName());
                    changed(r, "preset_proc", s.getPresetProcName(), t.getPresetProcName());
                    changed(r, "kind", s.getPresetorAssocIntf(), t.getPresetorAssocIntf());
                    changed(r, "value_type", s.getValueType(), t.getValueType());
                    // A parameter may name a file beside the board, which the reader made a path.
                    changedMap(r, pairs, relativeValues(m_dirA, s.getParamList()),
                               relativeValues(m_dirB, t.getParamList()));
                });
        });
}

std::string railMembers(const HBOPowerRail& rail) {
    std::vector<std::string> items;
    const auto& phases = rail.getMemberPhases();
    for (const std::string& member : rail.getMemberNames()) {
        auto it = phases.find(member);
        items.push_back((rail.isSupply(member) ? "supply " : "rail ") + member +
                        (it == phases.end() ? "" : "/" + std::to_string(it->second)));
    }
    return join(items, ", ");
}

void Differ::powerRails() {
    std::vector<const HBOPowerRail*> railsA, railsB;
    for (const HBOPowerRail& r : m_a.getPowerRails())
        railsA.push_back(&r);
    for (const HBOPowerRail& r : m_b.getPowerRails())
        railsB.push_back(&r);
    match<HBOPowerRail>(
        Path(), "power rail", railsA, railsB, [](const HBOPowerRail& r) { return r.getName(); }, railMembers,
        [this](const Path& q, const HBOPowerRail& x, const HBOPowerRail& y) {
            changed(q, "direct", boolText(x.isDirect()), boolText(y.isDirect()));
            changed(q, "phases", std::to_string(x.getNumPhases()), std::to_string(y.getNumPhases()));
            changed(q, "members", railMembers(x), railMembers(y));
        });
}

// Groups are walked down; a group on one side that is a value on the other
// is a changed value, shown as "{...}".
void Differ::dataProps(const Path& p, const HBOBoardDataProps::PropMap& a, const HBOBoardDataProps::PropMap& b) {
    using Entry = HBOBoardDataProps::PropMap::value_type;
    auto text = [](const Entry& e) {
        const show::DataPropValue v = show::dataPropValue(e.second);
        return v.isGroup ? std::string("{...}") : v.known ? v.text : "<" + v.text + ">";
    };
    std::vector<const Entry*> entriesA, entriesB;
    for (const Entry& e : a)
        entriesA.push_back(&e);
    for (const Entry& e : b)
        entriesB.push_back(&e);
    match<Entry>(
        p, "property", entriesA, entriesB, [](const Entry& e) { return e.first; }, text,
        [&](const Path& q, const Entry& x, const Entry& y) {
            const show::DataPropValue vx = show::dataPropValue(x.second);
            const show::DataPropValue vy = show::dataPropValue(y.second);
            if (vx.isGroup && vy.isGroup)
                dataProps(q, *vx.group, *vy.group);
            else
                changed(q, "value", text(x), text(y));
        });
}

void Differ::run() {
    identity();

    m_section = "parameters";
    parameters(Path(), m_a.getParameters(), m_b.getParameters());

    m_section = "jumpers";
    match<HBOJumper>(
        Path(), "jumper", present(m_a.getJumpers()), present(m_b.getJumpers()),
        [](const HBOJumper& j) { return j.getName(); },
        [](const HBOJumper& j) { return std::string("default ") + boolText(j.getDefaultValue()); },
        [this](const Path& q, const HBOJumper& x, const HBOJumper& y) {
            changed(q, "default_value", boolText(x.getDefaultValue()), boolText(y.getDefaultValue()));
            changed(q, "description", x.getDescription(), y.getDescription());
        });

    m_section = "images";
    images(Path(), m_a.getImages(), m_b.getImages());

    m_section = "components";
    match<HBOBoardComponent>(
        Path(), "component", presentValues(m_a.getBoardComponents()), presentValues(m_b.getBoardComponents()),
        [](const HBOBoardComponent& c) { return c.getComponentName(); }, componentSummary,
        [this](const Path& q, const HBOBoardComponent& x, const HBOBoardComponent& y) { component(q, x, y); });

    m_section = "connections";
    match<HBOBoardBus>(
        Path(), "connection", present(m_a.getBuses()), present(m_b.getBuses()),
        [](const HBOBoardBus& bus) { return bus.getName(); },
        [](const HBOBoardBus& bus) {
            return bus.getComp1() + "[" + rangeText(bus.getStartIndexComp1(), bus.getStopIndexComp1()) + "] - " +
                   bus.getComp2() + "[" + rangeText(bus.getStartIndexComp2(), bus.getStopIndexComp2()) + "]";
        },
        [this](const Path& q, const HBOBoardBus& x, const HBOBoardBus& y) { connection(q, x, y); });

    m_section = "presets";
    presets(m_a.getIpPresets(), m_b.getIpPresets());
    m_section = "ip_associated_rules";
    presets(m_a.getIpAssociatedInterfaces(), m_b.getIpAssociatedInterfaces());

    m_section = "power_rails";
    powerRails();

    m_section = "data_properties";
    dataProps(Path(), m_a.getBoardDataProps().getAllData(), m_b.getBoardDataProps().getAllData());
}

// Empty values and values with blanks are hard to see in a line of text.
std::string valueText(const std::string& value) {
    if (value.empty())
        return "(none)";
    if (value.find_first_of(" \t\n") != std::string::npos)
        return "\"" + value + "\"";
    return value;
}

}  // namespace

const std::vector<DiffSection>& diffSections() {
    static const std::vector<DiffSection> sections = {
        {"identity", "Identity"},       {"parameters", "Parameters"},
        {"jumpers", "Jumpers"},         {"images", "Images"},
        {"components", "Components"},   {"connections", "Connections"},
        {"presets", "Presets"},         {"ip_associated_rules", "IP associated rules"},
        {"power_rails", "Power rails"}, {"data_properties", "Data properties"},
    };
    return sections;
}

std::vector<BoardDifference> diffBoards(const HBOBoard& before, const HBOBoard& after) {
    std::vector<BoardDifference> out;
    Differ(before, after, out).run();
    return out;
}

const char* changeName(BoardDifference::Change change) {
    switch (change) {
    case BoardDifference::kAdded: return "added";
    case BoardDifference::kRemoved: return "removed";
    case BoardDifference::kChanged: break;
    }
    return "changed";
}

std::string differenceLine(const BoardDifference& d) {
    std::vector<std::string> parts;
    for (const BoardDifference::Step& s : d.path)
        parts.push_back(s.kind + " " + s.name);
    std::string last;
    switch (d.change) {
    case BoardDifference::kAdded: last = "added" + (d.after.empty() ? "" : " (" + d.after + ")"); break;
    case BoardDifference::kRemoved: last = "removed" + (d.before.empty() ? "" : " (" + d.before + ")"); break;
    case BoardDifference::kChanged: last = d.field + " " + valueText(d.before) + " -> " + valueText(d.after); break;
    }
    parts.push_back(last);
    return join(parts, ": ");
}

}  // namespace zrboard

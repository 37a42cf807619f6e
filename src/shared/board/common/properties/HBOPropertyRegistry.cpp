#include "HBOPropertyRegistry.h"

#include <cstdio>
#include <cstring>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/split.hpp>

#include "HBOBoard.h"
#include "HBOBoardUtils.h"
#include "HBOIpPreset.h"

namespace HBOPropertyRegistry {

namespace {
// With no interpreter, the value in out is the result (and, in Python mode,
// the Python manager's).
bool publish(Tcl_Interp* interp, HATAttrAny& out) {
    HCPProperty::Utils::setAttrResult(interp, out);
    return true;
}
}  // namespace

bool publishStringResult(Tcl_Interp* interp, const std::string& value, HATAttrAny& out) {
    HATAttrUtils::setAny(out, value);
    return publish(interp, out);
}
bool publishBoolResult(Tcl_Interp* interp, bool value, HATAttrAny& out) {
    HATAttrUtils::setAny(out, value);
    return publish(interp, out);
}
bool publishIntResult(Tcl_Interp* interp, int value, HATAttrAny& out) {
    HATAttrUtils::setAny(out, value);
    return publish(interp, out);
}
bool publishListResult(Tcl_Interp* interp, const HATStringList& value, HATAttrAny& out) {
    HATAttrUtils::setAny(out, value);
    return publish(interp, out);
}

bool supportsCed(const HBOBoard& board) { return board.getSupportsCED(); }

void addClass(HCPProperty::ObjectInfo& info, const std::string& className) {
    HCPProperty::Spec& spec = info.createSpec("class");
    spec.setGetFcn([className](Tcl_Interp* interp, const tclany&, const std::string&, HATAttrAny& out) {
        return publishStringResult(interp, className, out);
    });
    spec.getAttrSpec().setAttrType(HATAttrTypes::ATTR_STRING);
    spec.getAttrSpec().setReadOnly(true);
}

void renameClass(HCPProperty::ObjectInfo& info, const std::string& className) {
    info.deleteSpec("class");
    addClass(info, className);
}

void deprecate(HCPProperty::Spec& spec, const char* advisory) {
    if (HBOBoardUtils::isV2SchemaEnabled())
        spec.getAttrSpec().advisoryText = advisory;
}

HCPProperty::Spec& addDefault(HCPProperty::ObjectInfo& info, HCPProperty::Spec::GetFcn get,
                              HCPProperty::Spec::GetDefaultFcn list, bool visible) {
    HCPProperty::Spec& spec = info.createSpec(HCPProperty::ObjectInfo::DEFAULT_SPEC);
    spec.setGetFcn(std::move(get));
    spec.setGetDefaultFcn(std::move(list));
    spec.getAttrSpec().setAttrType(HATAttrTypes::ATTR_STRING);
    spec.getAttrSpec().setReadOnly(true);
    spec.getAttrSpec().setVisible(visible);
    return spec;
}

std::string intText(int value) { return std::to_string(value); }

std::string delayText(float value) {
    if (value == 0.0f)
        return std::string();
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
    return text;
}

HATStringList toList(const std::vector<std::string>& items) {
    HATStringList list;
    for (const std::string& s : items)
        list.append(s);
    return list;
}

HATStringList dependencyList(const std::string& text) {
    std::vector<std::string> parts;
    if (!text.empty())
        boost::algorithm::split(parts, text, boost::algorithm::is_any_of(" "));
    return toList(parts);
}

HATStringList presetList(const std::string& procName, const HBOBoard* board) {
    HATStringList list;
    if (!board)
        return list;
    // A copy: nothing read below may change the board's map under the walk.
    const HBOBoard::IpPresetMap presets = board->getIpPresets();
    std::vector<const HBOIpPreset*> gathered;
    for (const auto& entry : presets)
        if (boost::algorithm::iequals(entry.first, procName))
            for (const HBOIpPreset* p : entry.second)
                if (p)
                    gathered.push_back(p);
    for (const HBOIpPreset* p : gathered) {
        std::vector<std::string> versions;
        boost::algorithm::split(versions, p->getVersion(), boost::algorithm::is_any_of(","));
        for (const std::string& v : versions) {
            std::string text = procName + ":" + p->getVendor() + ":" + p->getLibrary() + ":" + p->getName();
            text += v.empty() ? ":*" : ":" + v;
            if (!p->getIpInterface().empty())
                text += ":" + p->getIpInterface();
            list.append(text);
        }
    }
    return list;
}

bool hasPrefix(const std::string& name, const char* prefix, std::string& key) {
    std::size_t n = std::strlen(prefix);
    if (name.size() < n || name.compare(0, n, prefix) != 0)
        return false;
    key = name.substr(n);
    return true;
}

bool equalsNoCase(const std::string& a, const char* b) { return boost::algorithm::iequals(a, b); }

}  // namespace HBOPropertyRegistry

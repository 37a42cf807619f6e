#include "HBOCase.h"
#include "HBOIpPreset.h"

#include <cstdio>
#include <sstream>

#include <boost/algorithm/string/predicate.hpp>
#include <boost/filesystem.hpp>

#include "HBOBoard.h"
#include "HBOBoardUtils.h"
#include "HBONativeCacheHook.h"
#include "HBORebase.h"

HBOIpPreset::HBOIpPreset(const HBOIpPreset& other, HBOBoard* board, const std::string& prefix)
    : HBOIpPreset(other) {
    m_owner = board;
    if (prefix.empty())
        return;
    m_presetProcName = HBORebase::name(prefix, other.m_presetProcName);
    m_presetName = m_presetProcName + ":" + m_vendor + ":" + m_library + ":" + m_name + ":" + m_version + ":" +
                   m_ipInterface;
    if (other.isAssocIntf()) {
        // The keys name board interfaces, which the merge renames alike.
        m_params.clear();
        for (const auto& kv : other.m_params)
            m_params[HBORebase::name(prefix, kv.first)] = kv.second;
    }
}

HBOIpPreset::~HBOIpPreset() {
    HBONativeCacheHook::remove(this);
}

bool HBOIpPreset::setVendor(const std::string& v) {
    m_vendor = v;
    return true;
}
bool HBOIpPreset::setLibrary(const std::string& v) {
    m_library = v;
    return true;
}
bool HBOIpPreset::setName(const std::string& v) {
    m_name = v;
    return true;
}
bool HBOIpPreset::setPresetProcName(const std::string& v) {
    m_presetProcName = v;
    return true;
}
bool HBOIpPreset::setVersion(const std::string& v) {
    m_version = v;
    return true;
}
bool HBOIpPreset::setIpInterface(const std::string& v) {
    m_ipInterface = v;
    return true;
}
bool HBOIpPreset::setPresetName(const std::string& v) {
    m_presetName = v;
    return true;
}
bool HBOIpPreset::setPresetorAssocIntf(const std::string& kind) {
    m_kind = kind;
    return true;
}
bool HBOIpPreset::setValueType(const std::string& v) {
    m_valueType = v;
    return true;
}
bool HBOIpPreset::setOwner(HBOBoard* owner) {
    m_owner = owner;
    return true;
}

bool HBOIpPreset::isPreset() const {
    return HBOCase::iequals(m_kind, "preset");
}

bool HBOIpPreset::isAssocIntf() const {
    return HBOCase::iequals(m_kind, "assoc_intf");
}

bool HBOIpPreset::getParamValue(const std::string& name, std::string& out) const {
    auto it = m_params.find(name);
    if (it == m_params.end())
        return false;
    out = it->second;
    return true;
}

bool HBOIpPreset::setParam(const std::string& name, const std::string& value) {
    if (name.empty())
        return false;
    std::string stored = value;
    // A table file named without a directory lies beside the board file.
    if (m_owner && boost::algorithm::ends_with(value, ".csv")) {
        try {
            namespace fs = boost::filesystem;
            std::string parent = fs::path(value).parent_path().string();
            if (parent.empty() || parent == ".") {
                std::string candidate = fs::path(m_owner->getBoardFile()).parent_path().string() +
                                        HBOBoardUtils::getDirSeparator() + value;
                if (fs::exists(candidate))
                    stored = candidate;
            }
        } catch (...) {
            stored = value;
        }
    }
    m_params[name] = stored;
    return true;
}

void HBOIpPreset::display(int indent) const {
    std::ostringstream os;
    os << "Name : " << m_name << "\n"
       << "Preset Name : " << m_presetName << "\n"
       << "Preset Proc Name : " << m_presetProcName << "\n"
       << "IP Interface Name : " << m_ipInterface << "\n";
    std::string text = HBOBoardUtils::indent(os.str(), indent > 0 ? static_cast<unsigned int>(indent) : 0u);
    std::fputs(text.c_str(), stderr);
}

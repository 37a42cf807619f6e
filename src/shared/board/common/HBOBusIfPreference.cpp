#include "HBOBusIfPreference.h"

#include <cstdio>
#include <string>

#include "HBONativeCacheHook.h"

HBOBusIfPreference::HBOBusIfPreference(const HBOBusIfPreference& other, HBOBoard* board)
    : HBOBusIfPreference(other) {
    m_owner = board;
}

HBOBusIfPreference::~HBOBusIfPreference() {
    HBONativeCacheHook::remove(this);
}

bool HBOBusIfPreference::setMajorGroup(const std::string& v) {
    m_majorGroup = v;
    return true;
}
bool HBOBusIfPreference::setMinorGroup(const std::string& v) {
    m_minorGroup = v;
    return true;
}
bool HBOBusIfPreference::setDefaultIpVlnv(const std::string& v) {
    m_defaultIpVlnv = v;
    return true;
}
bool HBOBusIfPreference::setPresetProc(const std::string& v) {
    m_presetProc = v;
    return true;
}
bool HBOBusIfPreference::setPresetFile(const std::string& v) {
    m_presetFile = v;
    return true;
}
bool HBOBusIfPreference::setName(const std::string& v) {
    m_name = v;
    return true;
}
bool HBOBusIfPreference::setPrefName(const std::string& v) {
    m_prefName = v;
    return true;
}
bool HBOBusIfPreference::setVendor(const std::string& v) {
    m_vendor = v;
    return true;
}
bool HBOBusIfPreference::setLibrary(const std::string& v) {
    m_library = v;
    return true;
}
bool HBOBusIfPreference::setVersion(const std::string& v) {
    m_version = v;
    return true;
}
bool HBOBusIfPreference::setOrder(int order) {
    m_order = order;
    return true;
}
bool HBOBusIfPreference::setOwner(HBOBoard* owner) {
    m_owner = owner;
    return true;
}

bool HBOBusIfPreference::getParamValue(const std::string& /*name*/, std::string& /*out*/) const {
    return false;
}

void HBOBusIfPreference::display(int indent) const {
    std::string dashes(indent > 0 ? static_cast<size_t>(indent) : 0u, '-');
    std::fprintf(stderr, "%sPreferred Ip - vlnv:%s , preset_proc:%s , preset_file:%s  \n", dashes.c_str(),
                 m_defaultIpVlnv.c_str(), m_presetProc.c_str(), m_presetFile.c_str());
}

#include "HPAParamMgr.h"

#include "HUTConvert.h"

HPAParam::HPAParam(const std::string& name, Kind kind, const std::string& description,
                   const std::string& defaultValue)
    : m_name(name), m_kind(kind), m_description(description), m_default(defaultValue), m_value(defaultValue) {}

HPAParam::~HPAParam() = default;

bool HPAParam::getValueAsBool() const { return HUTConvert::toBool(m_value); }

bool HPAParam::setValueFromString(const std::string& value) {
    if (m_kind == STRING) {
        m_value = value;
        return true;
    }
    bool b = false;
    if (!HUTConvert::stringToBoolean(value, b, false))
        return false;
    // Boolean values are kept in one spelling, whatever word set them.
    m_value = b ? "true" : "false";
    return true;
}

// The host's own parameters, there before any library registers its own.
HPAParamMgr* HPAParamMgr::makeWithHostParams() {
    HPAParamMgr* mgr = new HPAParamMgr;
    // On by default: a project runs the board start-up script when it loads its board.
    mgr->registerBoolParam("project.enableBITabFlow",
                           "Run the board start-up script scripts/board/init.tcl of the installation when a project "
                           "loads its board.",
                           true);
    return mgr;
}

HPAParamMgr* HPAParamMgr::getParamMgr() {
    // Built on first use and never destroyed: the static initialisers and
    // destructors of other libraries may reach it in any order.
    static HPAParamMgr* mgr = makeWithHostParams();
    return mgr;
}

bool HPAParamMgr::registerBoolParam(const std::string& name, const std::string& description, bool defaultValue) {
    if (m_byName.count(name))
        return false;
    m_params.push_back(std::make_unique<HPAParam>(name, HPAParam::BOOL, description, defaultValue ? "true" : "false"));
    m_byName[name] = m_params.back().get();
    return true;
}

bool HPAParamMgr::registerStringParam(const std::string& name, const std::string& description,
                                      const std::string& defaultValue) {
    if (m_byName.count(name))
        return false;
    m_params.push_back(std::make_unique<HPAParam>(name, HPAParam::STRING, description, defaultValue));
    m_byName[name] = m_params.back().get();
    return true;
}

bool HPAParamMgr::setHidden(const std::string& name, bool hidden) {
    HPAParam* p = findParam(name);
    if (!p)
        return false;
    p->setHidden(hidden);
    return true;
}

bool HPAParamMgr::paramExists(const std::string& name) const { return m_byName.count(name) != 0; }

HPAParam* HPAParamMgr::findParam(const std::string& name) const {
    auto it = m_byName.find(name);
    return it == m_byName.end() ? nullptr : it->second;
}

bool HPAParamMgr::getValueAsBool(const std::string& name) const {
    const HPAParam* p = findParam(name);
    return p && p->getValueAsBool();
}

std::string HPAParamMgr::getValueAsString(const std::string& name) const {
    const HPAParam* p = findParam(name);
    return p ? p->getValueAsString() : std::string();
}

bool HPAParamMgr::setValue(const std::string& name, const std::string& value) {
    HPAParam* p = findParam(name);
    return p && p->setValueFromString(value);
}

bool HPAParamMgr::resetValue(const std::string& name) {
    HPAParam* p = findParam(name);
    if (!p)
        return false;
    p->resetToDefault();
    return true;
}

bool HPAParamMgr::removeParam(const std::string& name) {
    auto it = m_byName.find(name);
    if (it == m_byName.end())
        return false;
    HPAParam* p = it->second;
    m_byName.erase(it);
    for (auto pi = m_params.begin(); pi != m_params.end(); ++pi) {
        if (pi->get() == p) {
            m_params.erase(pi);
            break;
        }
    }
    return true;
}

std::vector<const HPAParam*> HPAParamMgr::getParams() const {
    std::vector<const HPAParam*> out;
    out.reserve(m_params.size());
    for (const auto& p : m_params)
        out.push_back(p.get());
    return out;
}

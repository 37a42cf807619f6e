#include "HBOCase.h"
#include "HBOBoardDataProps.h"

#include <locale>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/core/demangle.hpp>

#include "ComMsgMgr.h"

const std::string HBOBoardDataProps::OP_COND_KEY = "OPERATING_CONDITIONS";

namespace {

std::string upper(const std::string& key) {
    return HBOCase::upper(key);
}

}  // namespace

HBOBoardDataProps::HBOBoardDataProps(const PropMap& data) : m_data(data) {}

void HBOBoardDataProps::setStrDataProp(const std::string& key, const std::string& value) {
    m_data[upper(key)] = PropValByStr(value);
}

void HBOBoardDataProps::setMapDataProp(const std::string& key, const PropMap& group) {
    m_data[upper(key)] = group;
}

const HBOBoardDataProps::PropMap* HBOBoardDataProps::findGroup(const PropMap& level, const std::string& key) const {
    auto it = level.find(upper(key));
    if (it == level.end())
        return nullptr;
    return boost::any_cast<PropMap>(&it->second);
}

void HBOBoardDataProps::writeGroupsAndProps(const PropMap& group, StrMap& out) {
    for (const auto& entry : group) {
        if (const PropValByStr* value = boost::any_cast<PropValByStr>(&entry.second)) {
            out[entry.first] = *value;
            continue;
        }
        const std::string typeName = boost::core::demangle(entry.second.type().name());
        ComMsgMgr::sendScopedMsg::eval(2, __FILE__, __LINE__, "board", "board.dataProps", ComMsgMgr::MSG_DEBUG1,
                                       "BAD ANY_CAST in HBOBoardDataProps::writeGroupsAndProps--expected "
                                       "PropValByStr but got type %s for key %s!",
                                       typeName, entry.first);
    }
}

boost::optional<std::string> HBOBoardDataProps::getStrDataProp(const std::string& key) const {
    auto it = m_data.find(upper(key));
    if (it == m_data.end())
        return boost::none;
    if (const PropValByStr* value = boost::any_cast<PropValByStr>(&it->second))
        return *value;
    return boost::none;
}

boost::optional<HBOBoardDataProps::StrMap> HBOBoardDataProps::getMapDataProp(const std::string& key) const {
    const PropMap* group = findGroup(m_data, key);
    if (!group)
        return boost::none;
    StrMap out;
    writeGroupsAndProps(*group, out);
    return out;
}

void HBOBoardDataProps::getOperatingConditions(PropMap& out) const {
    if (const PropMap* group = findGroup(m_data, OP_COND_KEY))
        out = *group;
}

void HBOBoardDataProps::getOperatingConditions(StrMap& out) const {
    if (const PropMap* group = findGroup(m_data, OP_COND_KEY)) {
        out.clear();
        writeGroupsAndProps(*group, out);
    }
}

bool HBOBoardDataProps::hasOperatingConditions() const {
    return findGroup(m_data, OP_COND_KEY) != nullptr;
}

std::string HBOBoardDataProps::getStrOperatingCondition(const std::string& key) const {
    const PropMap* group = findGroup(m_data, OP_COND_KEY);
    if (!group)
        return std::string();
    auto it = group->find(upper(key));
    if (it == group->end())
        return std::string();
    const PropValByStr* value = boost::any_cast<PropValByStr>(&it->second);
    return value ? *value : std::string();
}

HBOBoardDataProps::StrMap HBOBoardDataProps::getMapOperatingCondition(const std::string& key) const {
    StrMap out;
    const PropMap* group = findGroup(m_data, OP_COND_KEY);
    if (!group)
        return out;
    if (const PropMap* nested = findGroup(*group, key))
        writeGroupsAndProps(*nested, out);
    return out;
}

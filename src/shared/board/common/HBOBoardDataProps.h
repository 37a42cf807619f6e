// Named values about a board's power and operating conditions: a tree whose leaves
// are strings and whose inner nodes are groups (nested maps of the same kind).
// Keys are upper case. A plain value.
#ifndef HBOBOARDDATAPROPS_H
#define HBOBOARDDATAPROPS_H

#include <map>
#include <string>

#include <boost/any.hpp>
#include <boost/optional.hpp>

class HBOBoardDataProps {
public:
    // The type of a leaf value held in the any.
    typedef std::string PropValByStr;
    // A level of the tree: values are PropValByStr or PropMap.
    typedef std::map<std::string, boost::any> PropMap;
    typedef std::map<std::string, std::string> StrMap;

    static const std::string OP_COND_KEY;  // "OPERATING_CONDITIONS"

    HBOBoardDataProps() = default;
    explicit HBOBoardDataProps(const PropMap& data);

    const PropMap& getAllData() const { return m_data; }
    void setAllData(const PropMap& data) { m_data = data; }
    // Building; keys are folded to upper case.
    void setStrDataProp(const std::string& key, const std::string& value);
    void setMapDataProp(const std::string& key, const PropMap& group);
    bool empty() const { return m_data.empty(); }
    void clear() { m_data.clear(); }

    // Look-ups fold the key to upper case as the stored keys are.
    // None when the key is missing or holds a group.
    boost::optional<std::string> getStrDataProp(const std::string& key) const;
    // The string values of a group; none when the key is missing or holds a string.
    boost::optional<StrMap> getMapDataProp(const std::string& key) const;

    // The group OP_COND_KEY; out is left alone when there is none.
    void getOperatingConditions(PropMap& out) const;
    // Its string values only.
    void getOperatingConditions(StrMap& out) const;
    bool hasOperatingConditions() const;
    // The string under key in that group, else empty.
    std::string getStrOperatingCondition(const std::string& key) const;
    // The string values of the group under key in that group, else empty.
    StrMap getMapOperatingCondition(const std::string& key) const;

private:
    // Copies the string values of group into out; any other value is reported and skipped.
    static void writeGroupsAndProps(const PropMap& group, StrMap& out);
    const PropMap* findGroup(const PropMap& level, const std::string& key) const;

    PropMap m_data;
};

#endif

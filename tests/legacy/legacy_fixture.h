// Scratch board directories and a message recorder for the front door and
// schema 1 reader tests.
#ifndef LEGACY_FIXTURE_H
#define LEGACY_FIXTURE_H

#include <fstream>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

#include "ComMsgMgr.h"
#include "HPAParamMgr.h"

class ScratchDir {
public:
    ScratchDir() : m_path(boost::filesystem::temp_directory_path() / boost::filesystem::unique_path("zrlegacy-%%%%-%%%%")) {
        boost::filesystem::create_directories(m_path);
    }
    ~ScratchDir() {
        boost::system::error_code ec;
        boost::filesystem::remove_all(m_path, ec);
    }
    std::string write(const std::string& name, const std::string& text) const {
        const boost::filesystem::path p = m_path / name;
        boost::filesystem::create_directories(p.parent_path());
        std::ofstream(p.string(), std::ios::binary) << text;
        return p.string();
    }
    std::string path(const std::string& name) const { return (m_path / name).string(); }
    std::string dir() const { return m_path.string(); }

private:
    boost::filesystem::path m_path;
};

// Records every message delivered while it lives, quietly.
class MessageLog {
public:
    MessageLog() {
        ComMsgMgr::setPrintToStderr(false);
        m_handle = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) {
            if (!m.getId().empty())
                m_msgs.push_back(m);
        });
    }
    ~MessageLog() {
        ComMsgMgr::removeListener(m_handle);
        ComMsgMgr::setPrintToStderr(true);
    }
    std::vector<std::string> ids() const {
        std::vector<std::string> out;
        for (const auto& m : m_msgs)
            out.push_back(m.getId());
        return out;
    }
    const ComMsgMgrInstance* find(const std::string& id) const {
        for (const auto& m : m_msgs)
            if (m.getId() == id)
                return &m;
        return nullptr;
    }
    size_t count(const std::string& id) const {
        size_t n = 0;
        for (const auto& m : m_msgs)
            n += m.getId() == id;
        return n;
    }

private:
    int m_handle;
    std::vector<ComMsgMgrInstance> m_msgs;
};

// Sets a parameter for the length of a scope.
class ParamOverride {
public:
    ParamOverride(const std::string& name, const std::string& value) : m_name(name) {
        HPAParamMgr::getParamMgr()->setValue(name, value);
    }
    ~ParamOverride() { HPAParamMgr::getParamMgr()->resetValue(m_name); }

private:
    std::string m_name;
};

#endif

// Shared set-up of the property tests: every class registered (init, then
// initV2Props) with schema 2 on, the reference board read from the data
// directory, a Tcl interpreter to see what scripts see, and helpers that read
// and list properties the way the service gives them.
#ifndef ZR_TEST_PROPERTY_FIXTURE_H
#define ZR_TEST_PROPERTY_FIXTURE_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tcl.h>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOPropertySetup.h"
#include "HBOParser.h"
#include "HCPProperty.h"
#include "HPAParamMgr.h"

namespace property_fixture {

typedef std::vector<std::string> Names;

inline void registerAll() { HBOPropertySetup::registerAll(); }

inline std::string referenceBoardFile() {
    return std::string(ZR_TEST_DATA_DIR) + "/boards/board_files/tarnwick/1.2/board.xml";
}

// Read as a script would without an interpreter; "<none>" when the object has no such property.
template <class T>
std::string get(T* object, const std::string& name) {
    HATAttrAny value;
    if (!HCPProperty::getProperty(nullptr, zrc::tcltasks::tclany(object), name, value))
        return "<none>";
    return value.toString();
}

template <class T>
HATAttrAny getAny(T* object, const std::string& name) {
    HATAttrAny value;
    EXPECT_TRUE(HCPProperty::getProperty(nullptr, zrc::tcltasks::tclany(object), name, value)) << name;
    return value;
}

template <class T>
Names listed(T* object) {
    Names names;
    for (const HCPProperty::ListedProperty& p : HCPProperty::listProperties(zrc::tcltasks::tclany(object)))
        names.push_back(p.name);
    return names;
}

template <class T>
std::vector<HCPProperty::ListedProperty> listing(T* object) {
    return HCPProperty::listProperties(zrc::tcltasks::tclany(object));
}

// The listed names that start with prefix.
template <class T>
Names listedWith(T* object, const std::string& prefix) {
    Names out;
    for (const std::string& n : listed(object))
        if (n.compare(0, prefix.size(), prefix) == 0)
            out.push_back(n);
    return out;
}

inline HATAttrTypes::AttrType typeOf(const HCPProperty::ObjectInfo& info, const std::string& name) {
    return info.findSpec(name)->getAttrSpec().getAttrType();
}

class PropertyTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        Tcl_FindExecutable(nullptr);
        s_interp = Tcl_CreateInterp();
    }
    static void TearDownTestSuite() {
        Tcl_DeleteInterp(s_interp);
        s_interp = nullptr;
    }

    void SetUp() override {
        m_print = ComMsgMgr::printToStderr();
        ComMsgMgr::setPrintToStderr(false);
        m_listener = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) { m_messages.push_back(m); });
        HPAParamMgr::getParamMgr()->setValue("board.enableSchemaV2", "true");
        registerAll();
    }
    void TearDown() override {
        delete m_board;
        HCPProperty::clearHistory();
        ComMsgMgr::removeListener(m_listener);
        ComMsgMgr::setPrintToStderr(m_print);
        HPAParamMgr::getParamMgr()->resetValue("board.enableSchemaV2");
        HPAParamMgr::getParamMgr()->resetValue("board.dataProps.enableTclProps");
    }

    HBOBoard& reference() {
        if (!m_board) {
            m_board = new HBOBoard;
            HBOParser parser;
            EXPECT_TRUE(parser.parseFile(referenceBoardFile(), m_board));
        }
        return *m_board;
    }

    // What get_property leaves as the Tcl result.
    template <class T>
    std::string tclResult(T* object, const std::string& name) {
        Tcl_ResetResult(s_interp);
        HATAttrAny value;
        EXPECT_TRUE(HCPProperty::getProperty(s_interp, zrc::tcltasks::tclany(object), name, value)) << name;
        return Tcl_GetStringResult(s_interp);
    }

    Names warnings() const {
        Names out;
        for (const ComMsgMgrInstance& m : m_messages)
            if (m.getMask() == ComMsgMgr::MSG_WARNING)
                out.push_back(m.getText());
        return out;
    }
    void clearMessages() { m_messages.clear(); }
    const std::vector<ComMsgMgrInstance>& messages() const { return m_messages; }

    static inline Tcl_Interp* s_interp = nullptr;
    HBOBoard* m_board = nullptr;

private:
    bool m_print = true;
    int m_listener = 0;
    std::vector<ComMsgMgrInstance> m_messages;
};

}  // namespace property_fixture

#endif

// Shared set-up of the board reader tests (the legacy ones too): a temporary
// directory per case, a parse with HBOBoardParser, the messages delivered on
// the way, and parameters that are put back after the case.
#ifndef ZR_TEST_PARSER_FIXTURE_H
#define ZR_TEST_PARSER_FIXTURE_H

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardParser.h"
#include "HBOImage.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HPAParamMgr.h"

using Strings = std::vector<std::string>;
using Args = std::vector<Strings>;

class ParserFixture : public ::testing::Test {
protected:
    struct Parsed {
        bool ok = false;
        bool validated = true;
    };

    void SetUp() override {
        namespace fs = boost::filesystem;
        m_dir = (fs::temp_directory_path() / fs::unique_path("zr-parse-%%%%-%%%%-%%%%")).string();
        fs::create_directories(m_dir);
        m_wasPrinting = ComMsgMgr::printToStderr();
        ComMsgMgr::setPrintToStderr(false);
        m_listener = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) { m_messages.push_back(m); });
        // Every case starts from the defaults, whatever an earlier one set.
        setParam("board.validateXML", "false");
        setParam("board.enable2020Checks", "false");
    }

    void TearDown() override {
        ComMsgMgr::removeListener(m_listener);
        ComMsgMgr::setPrintToStderr(m_wasPrinting);
        for (const std::string& name : m_touched)
            HPAParamMgr::getParamMgr()->resetValue(name);
        for (const std::string& scope : m_scopes)
            ComMsgMgr::enableScope(scope, false);
        delete m_board;
        boost::system::error_code ec;
        boost::filesystem::remove_all(m_dir, ec);
    }

    // Writes `text` to `name` below the case's directory; the full path.
    std::string write(const std::string& name, const std::string& text) {
        std::string path = m_dir + "/" + name;
        boost::filesystem::create_directories(boost::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    static std::string boardXml(const std::string& sections, const std::string& rootAttrs = "",
                                const std::string& schema = "2.1", const std::string& doctype = "") {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + doctype + "<board schema_version=\"" + schema +
               "\" vendor=\"acme\" name=\"tb1\" " + rootAttrs + ">\n" + sections + "\n</board>\n";
    }

    // The sections every readable board has (three lines).
    static std::string basics(const std::string& version = "1.0") {
        return "<compatible_board_revisions><revision id=\"0\">1.0</revision></compatible_board_revisions>\n"
               "<file_version>" + version + "</file_version>\n<description>A test board</description>\n";
    }

    // A board of the basics and `body`, written to `name`; the full path.
    std::string writeBoard(const std::string& name, const std::string& body, const std::string& rootAttrs = "") {
        return write(name, boardXml(basics() + body, rootAttrs));
    }

    void setParam(const std::string& name, const std::string& value) {
        HPAParamMgr::getParamMgr()->setValue(name, value);
        m_touched.insert(name);
    }

    void enableScope(const std::string& scope) {
        ComMsgMgr::enableScope(scope, true);
        m_scopes.insert(scope);
    }

    // Parses `file` into a fresh board; `schema`, when given, is set on the
    // board first, as the front door does.
    Parsed parse(const std::string& file, const std::string& dtdDir = "", const std::string& overrideDir = "",
                 HBOParsedVLNVs* vlnvs = nullptr, const std::string& schema = "") {
        HBOBoard* fresh = freshBoard();
        if (!schema.empty())
            fresh->setBoardSchemaVersion(schema);
        Parsed result;
        result.ok = HBOBoardParser().parseFile(file, m_board, dtdDir, overrideDir, result.validated, vlnvs);
        return result;
    }

    // A new board in place of the last one, kept until the next or the end of the case.
    HBOBoard* freshBoard() {
        delete m_board;
        return m_board = new HBOBoard();
    }

    // Parses `file` again with `param` set to `value`, the earlier messages dropped.
    Parsed reparse(const std::string& file, const std::string& param, const std::string& value = "true") {
        setParam(param, value);
        clearMessages();
        return parse(file);
    }

    Parsed read(const std::string& name, const std::string& body, const std::string& rootAttrs = "") {
        return parse(writeBoard(name, body, rootAttrs));
    }

    HBOBoard& board() { return *m_board; }
    const std::string& dir() const { return m_dir; }
    const std::vector<ComMsgMgrInstance>& messages() const { return m_messages; }
    void clearMessages() { m_messages.clear(); }

    int count(const std::string& id) const { return static_cast<int>(argsOf(id).size()); }
    // The first message of `id`; fails the case when there is none.
    ComMsgMgrInstance first(const std::string& id) const {
        for (const ComMsgMgrInstance& m : m_messages)
            if (m.getId() == id)
                return m;
        ADD_FAILURE() << "no message " << id;
        return ComMsgMgrInstance();
    }
    // Argument `i` of the first message of `id`; a marker when there is none.
    std::string arg(const std::string& id, size_t i) const {
        const Args all = argsOf(id);
        return !all.empty() && i < all[0].size() ? all[0][i] : "<no " + id + " argument " + std::to_string(i) + ">";
    }
    // Arguments of every message of `id`, in order of delivery.
    Args argsOf(const std::string& id) const {
        Args out;
        for (const ComMsgMgrInstance& m : m_messages)
            if (m.getId() == id)
                out.push_back(m.getArgs());
        return out;
    }
    // Second arguments of every @49-69 check message, in order.
    Strings checkTexts() const {
        Strings out;
        for (const Strings& a : argsOf("49-69"))
            if (a.size() == 2)
                out.push_back(a[1]);
        return out;
    }
    // Ids of the numbered messages, in order of delivery.
    Strings ids() const {
        Strings out;
        for (const ComMsgMgrInstance& m : m_messages)
            if (!m.getId().empty())
                out.push_back(m.getId());
        return out;
    }

private:
    std::string m_dir;
    bool m_wasPrinting = true;
    int m_listener = 0;
    std::vector<ComMsgMgrInstance> m_messages;
    std::set<std::string> m_touched;
    std::set<std::string> m_scopes;
    HBOBoard* m_board = nullptr;
};

#endif

// `zrboard check PATH...`: reads each board through the front door with
// validation and the later checks on, shows every message, and sums up.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "BoardPaths.h"
#include "Command.h"
#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOParser.h"
#include "HPAParamMgr.h"
#include "Json.h"
#include "MessageCollector.h"

namespace zrboard {

namespace {

struct FileResult {
    std::string path;
    std::string board;
    std::string schema;
    bool ok = false;
    std::vector<ComMsgMgrInstance> messages;
};

FileResult checkOne(const std::string& arg) {
    FileResult r;
    r.path = boardFileOf(arg);
    MessageCollector collector;
    std::unique_ptr<HBOBoard> board(new HBOBoard());
    HBOParser parser;
    r.ok = parser.parseFile(r.path, board.get());
    r.board = board->getName();
    r.schema = board->getBoardSchemaVersion();
    r.messages = collector.messages();
    return r;
}

std::string summaryLine(const FileResult& r) {
    int errors = 0, critical = 0, warnings = 0;
    for (const auto& m : r.messages) {
        errors += m.getMask() == ComMsgMgr::MSG_ERROR;
        critical += m.getMask() == ComMsgMgr::MSG_CRITICAL_WARNING;
        warnings += m.getMask() == ComMsgMgr::MSG_WARNING;
    }
    std::string line = r.path + ": " + (r.ok ? "ok" : "FAILED");
    if (!r.board.empty())
        line += " (" + r.board + ", schema " + r.schema + ")";
    line += ", " + std::to_string(errors) + " error(s), " + std::to_string(critical) + " critical warning(s), " +
            std::to_string(warnings) + " warning(s)";
    return line;
}

void writeJson(const std::vector<FileResult>& results, bool allOk) {
    JsonWriter json(std::cout);
    json.beginObject().field("ok", allOk).key("files").beginArray();
    for (const FileResult& r : results) {
        json.beginObject().field("path", r.path).field("result", r.ok ? "ok" : "failed");
        json.field("board", r.board).field("schema_version", r.schema).key("messages").beginArray();
        for (const auto& m : r.messages) {
            json.beginObject()
                .field("id", m.getId())
                .field("severity", ComMsgMgr::severityName(m.getMask()))
                .field("scope", m.getScope())
                .key("args")
                .strings(m.getArgs())
                .field("text", m.getText())
                .endObject();
        }
        json.endArray().endObject();
    }
    json.endArray().endObject();
}

}  // namespace

int runCheck(const Command& self, const std::vector<std::string>& args) {
    bool validate = true, strict = true, asJson = false;
    std::vector<std::string> paths;
    for (const std::string& a : args) {
        if (a == "--no-validate")
            validate = false;
        else if (a == "--no-strict")
            strict = false;
        else if (a == "--json")
            asJson = true;
        else if (!a.empty() && a[0] == '-')
            return usageError("unknown option '" + a + "'", &self);
        else
            paths.push_back(a);
    }
    if (paths.empty())
        return usageError("check needs at least one PATH", &self);

    HPAParamMgr* params = HPAParamMgr::getParamMgr();
    params->setValue("board.validateXML", validate ? "true" : "false");
    params->setValue("board.enable2020Checks", strict ? "true" : "false");

    // With --json the messages travel in the document only.
    const bool printed = ComMsgMgr::printToStderr();
    if (asJson)
        ComMsgMgr::setPrintToStderr(false);
    std::vector<FileResult> results;
    bool allOk = true;
    for (const std::string& p : paths) {
        results.push_back(checkOne(p));
        allOk = allOk && results.back().ok;
    }
    ComMsgMgr::setPrintToStderr(printed);

    if (asJson) {
        writeJson(results, allOk);
    } else {
        for (const FileResult& r : results)
            std::cout << summaryLine(r) << "\n";
    }
    return allOk ? kExitOk : kExitFailure;
}

}  // namespace zrboard

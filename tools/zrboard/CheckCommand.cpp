// `zrboard check PATH...`: reads each board through the front door with
// validation and the later checks on, shows every message, and sums up.
// Messages go to standard error as they come, by default in the form that
// editors read (file:line:column: severity: text); summaries to standard output.
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
#include "MessageFormat.h"

namespace zrboard {

namespace {

enum class Format { Gcc, Json, Plain };

struct Options {
    bool validate = true;
    bool strict = true;
    bool quiet = false;
    Format format = Format::Gcc;
};

bool shown(const ComMsgMgrInstance& m, const Options& o) { return !(o.quiet && m.getMask() == ComMsgMgr::MSG_INFO); }

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

void writeJson(const std::vector<FileResult>& results, bool allOk, const Options& options) {
    JsonWriter json(std::cout);
    json.beginObject().field("ok", allOk).key("files").beginArray();
    for (const FileResult& r : results) {
        json.beginObject().field("path", r.path).field("result", r.ok ? "ok" : "failed");
        json.field("board", r.board).field("schema_version", r.schema).key("messages").beginArray();
        for (const auto& m : r.messages) {
            if (!shown(m, options))
                continue;
            const ComMsgPosition& at = m.getPosition();
            json.beginObject()
                .field("id", m.getId())
                .field("severity", ComMsgMgr::severityName(m.getMask()))
                .field("scope", m.getScope())
                .key("args")
                .strings(m.getArgs())
                .field("text", m.getText());
            // Where the fault lies: null for a message that has no place in a file.
            json.key("file");
            at.known() ? json.value(at.file) : json.null();
            json.key("line");
            at.known() ? json.value(at.line) : json.null();
            json.key("column");
            at.known() && at.column > 0 ? json.value(at.column) : json.null();
            if (!m.getDetail().empty())
                json.field("detail", m.getDetail());
            json.endObject();
        }
        json.endArray().endObject();
    }
    json.endArray().endObject();
}

// "--format=X" or "--format X"; the value, or empty when `arg` is no format option.
bool formatOption(const std::vector<std::string>& args, std::size_t& i, std::string& value) {
    static const std::string kOption = "--format";
    const std::string& a = args[i];
    if (a.compare(0, kOption.size() + 1, kOption + "=") == 0) {
        value = a.substr(kOption.size() + 1);
        return true;
    }
    if (a != kOption)
        return false;
    value = i + 1 < args.size() ? args[++i] : std::string();
    return true;
}

}  // namespace

int runCheck(const Command& self, const std::vector<std::string>& args) {
    Options options;
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        std::string format;
        if (a == "--no-validate") {
            options.validate = false;
        } else if (a == "--no-strict") {
            options.strict = false;
        } else if (a == "--quiet" || a == "-q") {
            options.quiet = true;
        } else if (a == "--json") {
            options.format = Format::Json;
        } else if (formatOption(args, i, format)) {
            if (format == "gcc")
                options.format = Format::Gcc;
            else if (format == "json")
                options.format = Format::Json;
            else if (format == "plain")
                options.format = Format::Plain;
            else
                return usageError(format.empty() ? "--format needs a value: gcc, json or plain"
                                                 : "unknown format '" + format + "'; use --format=gcc, json or plain",
                                  &self);
        } else if (!a.empty() && a[0] == '-') {
            return usageError("unknown option '" + a + "'", &self);
        } else {
            paths.push_back(a);
        }
    }
    if (paths.empty())
        return usageError("check needs at least one PATH", &self);

    HPAParamMgr* params = HPAParamMgr::getParamMgr();
    params->setValue("board.validateXML", options.validate ? "true" : "false");
    params->setValue("board.enable2020Checks", options.strict ? "true" : "false");

    // The tool prints each message itself, in the chosen form, as it comes;
    // with JSON the messages travel in the document only.
    const bool printed = ComMsgMgr::printToStderr();
    ComMsgMgr::setPrintToStderr(false);
    int printer = 0;
    if (options.format != Format::Json) {
        printer = ComMsgMgr::addListener([&options](const ComMsgMgrInstance& m) {
            if (!shown(m, options))
                return;
            std::cerr << (options.format == Format::Gcc ? editorLines(m) : plainLines(m));
            std::cerr.flush();
        });
    }
    std::vector<FileResult> results;
    bool allOk = true;
    for (const std::string& p : paths) {
        results.push_back(checkOne(p));
        allOk = allOk && results.back().ok;
    }
    if (printer)
        ComMsgMgr::removeListener(printer);
    ComMsgMgr::setPrintToStderr(printed);

    if (options.format == Format::Json) {
        writeJson(results, allOk, options);
    } else {
        for (const FileResult& r : results)
            std::cout << summaryLine(r) << "\n";
    }
    return allOk ? kExitOk : kExitFailure;
}

}  // namespace zrboard

#include "MessageFormat.h"

#include <cctype>

namespace zrboard {

namespace {

// One message is one line: trailing line ends dropped, inner ones made blanks.
std::string oneLine(std::string text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())))
        text.pop_back();
    for (char& c : text)
        if (c == '\n' || c == '\r')
            c = ' ';
    return text;
}

std::string lowerSeverity(ComMsgMgr::MsgMask mask) {
    std::string word = ComMsgMgr::severityName(mask);
    for (char& c : word)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return word;
}

// "FILE:LINE:COLUMN: ", "FILE:LINE: " or "FILE: ", as much as is known.
std::string place(const ComMsgPosition& at) {
    std::string out = at.file;
    if (at.known()) {
        out += ':' + std::to_string(at.line);
        if (at.column > 0)
            out += ':' + std::to_string(at.column);
    }
    return out + ": ";
}

}  // namespace

// As the library prints it, a debug listing over several lines included.
std::string plainLines(const ComMsgMgrInstance& msg) { return msg.getLine() + "\n"; }

std::string editorLines(const ComMsgMgrInstance& msg) {
    const ComMsgPosition& at = msg.getPosition();
    std::string out;
    if (at.known() && !msg.getId().empty())
        out = place(at) + lowerSeverity(msg.getMask()) + ": [" + msg.getId() + "] " + oneLine(msg.getText()) + "\n";
    else
        out = plainLines(msg);
    if (!msg.getDetail().empty())
        out += (at.file.empty() ? std::string() : place(at)) + "note: " + oneLine(msg.getDetail()) + "\n";
    return out;
}

}  // namespace zrboard

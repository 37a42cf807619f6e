#include "HBOBoardUtils.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <locale>
#include <sstream>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOModelPort.h"
#include "HPAParamMgr.h"

namespace {

bool isAsciiDigit(char c) { return c >= '0' && c <= '9'; }

bool isBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

// Splits at every separator, keeping empty fields ("" is one empty field).
std::vector<std::string> splitKeepEmpty(const std::string& text, char sep) {
    std::vector<std::string> fields;
    std::string::size_type start = 0;
    for (;;) {
        const std::string::size_type pos = text.find(sep, start);
        if (pos == std::string::npos) {
            fields.push_back(text.substr(start));
            return fields;
        }
        fields.push_back(text.substr(start, pos - start));
        start = pos + 1;
    }
}

// Value of dot-separated field `n` for the revision order: the sum of the
// digits of its leading digit run ("12" weighs 3). 0 when the string has
// fewer fields.
int digitSumField(const std::string& text, int n) {
    std::string::size_type pos = 0;
    for (int dots = 0; dots < n; ++dots) {
        pos = text.find('.', pos);
        if (pos == std::string::npos)
            return 0;
        ++pos;
    }
    int sum = 0;
    for (; pos < text.size() && isAsciiDigit(text[pos]); ++pos)
        sum += text[pos] - '0';
    return sum;
}

bool paramIsTrue(const std::string& name) {
    HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
    return mgr->paramExists(name) && mgr->getValueAsBool(name);
}

}  // namespace

namespace HBOBoardUtils {

std::string getDirSeparator() { return "/"; }

bool isEqualOrGreater(std::string a, std::string b) {
    const std::locale loc;
    std::string upperA = a;
    std::string upperB = b;
    for (char& c : upperA)
        c = std::toupper(c, loc);
    for (char& c : upperB)
        c = std::toupper(c, loc);
    if (upperA == upperB)
        return true;

    const std::vector<std::string> fa = splitKeepEmpty(a, '.');
    const std::vector<std::string> fb = splitKeepEmpty(b, '.');
    if (fa.size() != fb.size())
        return false;
    if (fa.size() < 2)
        return std::atoi(a.c_str()) >= std::atoi(b.c_str());

    const int majorA = std::atoi(fa[0].c_str());
    const int majorB = std::atoi(fb[0].c_str());
    if (majorA != majorB)
        return majorA > majorB;
    return std::atoi(fa[1].c_str()) > std::atoi(fb[1].c_str());
}

int version_compare(std::string a, std::string b) {
    if (a.empty())
        return b.empty() ? 0 : -1;
    const bool numA = isAsciiDigit(a[0]);
    if (!numA && !b.empty() && isAsciiDigit(b[0]))
        return -1;
    if (b.empty())
        return 1;
    const bool numB = isAsciiDigit(b[0]);
    if (numA && !numB)
        return 1;
    if (!numA) {
        const std::size_t shared = std::min(a.size(), b.size());
        const int r = std::memcmp(a.data(), b.data(), shared);
        if (r != 0)
            return r;
        return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
    }
    if (a == b)
        return 0;
    const int majorA = digitSumField(a, 0);
    const int majorB = digitSumField(b, 0);
    if (majorA != majorB)
        return majorA - majorB;
    return digitSumField(a, 1) - digitSumField(b, 1);
}

bool isV2SchemaBoard(const HBOBoard* board) {
    return board && isEqualOrGreater(board->getBoardSchemaVersion(), "2.0");
}

bool isV2SchemaBoard(const HBOBoardComponent* component) {
    return component && isV2SchemaBoard(component->getBoard());
}

bool isV2SchemaBoard(const HBOBusIf* busIf) {
    return busIf && isV2SchemaBoard(busIf->getOwnerComponent());
}

bool isV2SchemaBoard(const HBOModelPort* port) {
    return port && isV2SchemaBoard(port->getOwner());
}

bool isSchema20OrGreater(const HBOBoard* board) { return isV2SchemaBoard(board); }

bool isV2SchemaEnabled() { return paramIsTrue("board.enableSchemaV2"); }

bool isBoardIntegraterSupportEnabled() { return paramIsTrue("board.enableBoardIntegratorSupport"); }

std::string getBoardNameFromBoardPart(std::string name) {
    const std::vector<std::string> f = splitKeepEmpty(name, ':');
    if (f.size() == 3 || f.size() == 4)
        return f[1];
    return name;
}

std::string getBoardPartNameFromVLNV(std::string name) {
    const std::vector<std::string> f = splitKeepEmpty(name, ':');
    if (f.size() == 4)
        return f[2];
    return name;
}

std::string getBoardKeyFromBoardPart(std::string name) {
    const std::vector<std::string> f = splitKeepEmpty(name, ':');
    if (f.size() == 4)
        return f[0] + ":" + f[1] + ":" + f[3];
    return name;
}

bool getUserRepoPathFromParam(std::string& out) {
    HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
    // The project-level list must not be combined with the user's list.
    if (mgr->paramExists("project.boardPartRepoPaths") &&
        !mgr->getValueAsString("project.boardPartRepoPaths").empty()) {
        ComMsgMgr::sendMsg::eval(0, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR, "@49-73@");
        return false;
    }
    if (mgr->paramExists("board.repoPaths")) {
        out = mgr->getValueAsString("board.repoPaths");
        return true;
    }
    out.clear();
    return false;
}

std::vector<std::string> parseTclList(std::string list) {
    std::vector<std::string> result;
    std::string token;
    bool tokenOpen = false;
    bool inBraces = false;

    auto extend = [&](char c) {
        if (!tokenOpen) {
            token.clear();
            tokenOpen = true;
        }
        token += c;
    };
    auto close = [&]() {
        if (tokenOpen) {
            result.push_back(token);
            tokenOpen = false;
        }
    };

    for (char c : list) {
        if (inBraces) {
            if (c == '}') {
                // The first closing brace ends the group, however many opened.
                close();
                inBraces = false;
            } else {
                extend(c == '{' ? ' ' : c);
            }
            continue;
        }
        if (c == '}')
            c = ' ';
        if (!isBlank(c) && c != '{') {
            extend(c);
        } else {
            close();
            if (c == '{')
                inBraces = true;
        }
    }
    close();
    return result;
}

std::string asTclSpaceSeparatedStr(const std::vector<std::string>& elements) {
    std::string out;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (i)
            out += ' ';
        const std::string& e = elements[i];
        bool hasBlank = false;
        for (char c : e)
            hasBlank = hasBlank || isBlank(c);
        if (hasBlank)
            out += "{" + e + "}";
        else
            out += e;
    }
    return out;
}

std::string join(const std::vector<std::string>& elements, const std::string& separator) {
    std::string out;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (i)
            out += separator;
        out += elements[i];
    }
    return out;
}

std::string indent(const std::string& text, unsigned int count) {
    if (count == 0)
        return text;
    if (text.empty())
        return std::string();
    const std::string prefix(count, ' ');
    std::istringstream in(text);
    std::string out;
    std::string line;
    while (std::getline(in, line))
        out += prefix + line + "\n";
    return out;
}

const char* valueOrEmpty(const char* text) { return text ? text : ""; }

int changeDir(const std::string& dir) { return ::chdir(dir.c_str()); }

int getCurrDir(std::string& out) {
    char buf[1024];
    if (::getcwd(buf, sizeof buf) == nullptr)
        return 1;
    out = buf;
    return 0;
}

void DumpDebugStr(const std::string& paramName, const std::string& stage, HBOBoard* board) {
    if (!board)
        return;
    const std::string& name = board->getBoardName();
    if (name != "bdf0" && name != "bdg0")
        return;
    if (!paramIsTrue(paramName))
        return;
    std::cout << paramName << " : " << stage << " for board address " << static_cast<const void*>(board) << " "
              << board->getDescription() << std::endl;
}

void getBoardFileParamList(std::vector<std::string>& list) {
    static const char* const entries[] = {
        "heat_sink_temperature:<board><parameters>:as implied",
        "heat_sink_type:<board><parameters>:as implied",
        "SLR:<board><component><parameters>:SLR value for memory component",
        "connects_with:<board><component><parameters>:connector name",
        "ddr_type:<board><component><parameters>:type of ddr memory",
        "frequency:<board><component><parameters>:clock frequency of a clock component",
        "mode:<board><component><parameters>:mode parameter different from component_mode",
        "size:<board><component><parameters>:size of memory for a memory component",
        "type:<board><component><parameters>:can indicate type. For a clock component it gives the clock type",
        "TYPE:<board><component><interface><parameters>:indicates type like memory channel",
        "block_location:<board><component><interface><parameters>:as implied",
        "buffer_inst_name:<board><component><interface><parameters>:name of utility buffer instance for "
        "quorra_gt_flow",
        "frequency:<board><component><interface><parameters>:clock frequency",
        "gt_endpoint_interface_type:<board><component><interface><parameters>:vlnv of the gt cell",
        "gt_flow_interface_master_name:<board><component><interface><parameters>:name of the master interface "
        "for quorra_gt_flow",
        "gt_inst_name:<board><component><interface><parameters>:gt cell inst name for quorra_gt_flow",
        "gt_lanes:<board><component><interface><parameters>:gt lane numbers that the gt bank interface connects",
        "gt_loc:<board><component><interface><parameters>:loc of the gt cell",
        "is_gt_flow_interface_master:<board><component><interface><parameters>:indicates if the interface is a "
        "mater in for quorra_gt_flow",
        "presets_special_handling:<board><component><interface><parameters>:to enable designer assistance for "
        "HPSX and NoC (DDR)",
        "ref_clk_inst:<board><component><interface><parameters>:ref clock instance name for quorra_gt_flow",
        "rst_polarity:<board><component><interface><parameters>:as implied",
        "type:<board><component><interface><parameters>:can indicate type. For a clock interface it gives the "
        "clock type",
    };
    list.clear();
    for (const char* e : entries)
        list.emplace_back(e);
}

}  // namespace HBOBoardUtils

// `zrboard params`: the library's parameters in registration order.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "Command.h"
#include "HBOBoardUtils.h"
#include "HPAParamMgr.h"

namespace zrboard {

namespace {

// An empty value is shown as "" so that the columns stay readable.
std::string cell(const std::string& value) { return value.empty() ? "\"\"" : value; }

// Columns separated by two blanks, every column but the last padded.
void printTable(std::ostream& out, const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()), 0);
        for (std::size_t c = 0; c < row.size(); ++c)
            widths[c] = std::max(widths[c], row[c].size());
    }
    for (const auto& row : rows) {
        std::vector<std::string> padded = row;
        for (std::size_t c = 0; c + 1 < padded.size(); ++c)
            padded[c].resize(widths[c], ' ');
        out << HBOBoardUtils::join(padded, "  ") << "\n";
    }
}

}  // namespace

int runParams(const Command& self, const std::vector<std::string>& args) {
    bool all = false;
    for (const std::string& arg : args) {
        if (arg == "--all")
            all = true;
        else
            return usageError("params: unexpected argument '" + arg + "'", &self);
    }

    std::vector<std::vector<std::string>> rows;
    rows.push_back({"NAME", "KIND", "DEFAULT", "VALUE", "HIDDEN", "DESCRIPTION"});
    for (const HPAParam* p : HPAParamMgr::getParamMgr()->getParams()) {
        if (p->isHidden() && !all)
            continue;
        rows.push_back({p->getName(), p->getKindName(), cell(p->getDefaultAsString()), cell(p->getValueAsString()),
                        p->isHidden() ? "yes" : "no", p->getDescription()});
    }
    printTable(std::cout, rows);
    return kExitOk;
}

}  // namespace zrboard

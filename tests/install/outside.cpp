// Built against an installed tree only: proves that the flat headers, the
// libraries and the installed data directory serve a program outside the
// source tree.
#include <iostream>
#include <memory>
#include <vector>

#include "HBOBoard.h"
#include "HBOBoardUtils.h"
#include "HBOParser.h"
#include "HPAParamMgr.h"
#include "HUTEnv.h"

int main() {
    if (HBOBoardUtils::version_compare("1.2", "1.10") <= 0) {
        std::cerr << "unexpected revision order\n";
        return 1;
    }
    if (!HPAParamMgr::getParamMgr()->paramExists("board.enableSchemaV2")) {
        std::cerr << "parameters not registered\n";
        return 1;
    }
    const std::vector<std::string> dirs = HUTEnv::getQDEDataDirList();
    if (dirs.empty()) {
        std::cerr << "no data directory\n";
        return 1;
    }
    const std::string file = dirs.front() + "/boards/board_files/durnival/1.1/board.xml";
    std::unique_ptr<HBOBoard> board(new HBOBoard());
    HBOParser parser;
    if (!parser.parseFile(file, board.get()) || board->getName() != "korvelhw:durnival:1.1") {
        std::cerr << "cannot read the installed example board " << file << "\n";
        return 1;
    }
    std::cout << "outside program read " << board->getName() << " from " << dirs.front() << "\n";
    return 0;
}

// Built against an installed tree only: proves that the flat headers and the
// libraries serve a program outside the source tree.
#include <iostream>

#include "HBOBoardUtils.h"
#include "HPAParamMgr.h"

int main() {
    if (HBOBoardUtils::version_compare("1.2", "1.10") <= 0) {
        std::cerr << "unexpected revision order\n";
        return 1;
    }
    if (!HPAParamMgr::getParamMgr()->paramExists("board.enableSchemaV2")) {
        std::cerr << "parameters not registered\n";
        return 1;
    }
    std::cout << "outside program ok\n";
    return 0;
}

#include "HBMBoardMigration.h"

#include <iostream>
#include <string>

#include "HBMBoard.h"

HBMBoardMigration::HBMBoardMigration() = default;
HBMBoardMigration::~HBMBoardMigration() = default;

HBMBoardMigration& HBMBoardMigration::getInstance() {
    static HBMBoardMigration instance;
    return instance;
}

HBMBoard& HBMBoardMigration::getBoard() {
    static HBMBoard board;
    return board;
}

bool HBMBoardMigration::parse() {
    HBMBoard& board = getBoard();
    const std::string source = board.getSourcePath();

    // The two required files end the run when missing; a failed read of either
    // goes on without a word. The preset file is optional, but a failed read
    // of it fails the run.
    auto readRequired = [&](const char* name, bool (HBMBoard::*parseFile)(std::string)) {
        std::string path;
        if (!HBMBoard::XmlFilePath(source, name, path)) {
            std::cout << path << " not parsed\n";
            return false;
        }
        if ((board.*parseFile)(path))
            std::cout << path << " parsed\n";
        return true;
    };
    if (!readRequired("board.xml", &HBMBoard::parseBoardFile) || !readRequired("part0_pins.xml", &HBMBoard::parsePins))
        return false;

    std::string presetPath;
    if (!HBMBoard::XmlFilePath(source, "preset.xml", presetPath))
        return true;
    if (board.parsePresets(presetPath)) {
        std::cout << presetPath << " parsed\n";
        return true;
    }
    std::cout << presetPath << " not parsed\n";
    return false;
}

bool HBMBoardMigration::write() {
    HBMBoard& board = getBoard();
    const std::string dest = board.getDestinationPath();
    return board.writeBoardFile(dest) && board.writePinsFile(dest) && board.writePresetsFile(dest);
}

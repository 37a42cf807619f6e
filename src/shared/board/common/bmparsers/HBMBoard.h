// The migration tool's board: the models of the three files of a board
// directory, read one file at a time and written into another directory.
#ifndef HBMBOARD_H
#define HBMBOARD_H

#include <string>

#include "HBMBoardFile.h"
#include "HBMPinsFile.h"
#include "HBMPresetFile.h"

class HBMBoard {
public:
    HBMBoard();
    ~HBMBoard();
    HBMBoard(const HBMBoard&) = delete;
    HBMBoard& operator=(const HBMBoard&) = delete;

    HBMPinsFile& getPins() { return m_pins; }
    HBMPresetFile& getPresets() { return m_presets; }
    HBMBoardFile& getBoardFile() { return m_board; }

    const std::string& getSourcePath() const { return m_sourcePath; }
    void setSourcePath(const std::string& path) { m_sourcePath = path; }
    const std::string& getDestinationPath() const { return m_destinationPath; }
    void setDestinationPath(const std::string& path) { m_destinationPath = path; }

    // `dir` and `name` joined by one "/" (an empty `dir` gives "/name"). When
    // that path exists it goes to `out` and the result is true; otherwise
    // @49-36 is sent and `out` is left as it was.
    static bool XmlFilePath(const std::string& dir, std::string name, std::string& out);

    // Each reads a plain or packed file into its model: false when no root
    // element came out, true otherwise, whatever the model made of it. A packed
    // file that cannot be opened throws HEXError @49-110.
    bool parseBoardFile(std::string path);
    bool parsePins(std::string path);
    bool parsePresets(std::string path);

    // Each writes its model's file into `dir`, truncating what stands there.
    // A file that cannot be opened prints "Cannot open" and gives false.
    bool writeBoardFile(std::string dir);
    bool writePinsFile(std::string dir);
    bool writePresetsFile(std::string dir);

private:
    HBMPinsFile m_pins;
    HBMPresetFile m_presets;
    HBMBoardFile m_board;
    std::string m_sourcePath;
    std::string m_destinationPath;
};

#endif

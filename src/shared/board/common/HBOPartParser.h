// Reader of board files of schema 1.0 and 1.1: one root element describing
// one device, its ports and pins, its interfaces and an optional preset file.
// It fills the board with one component, the active part.
#ifndef HBOPARTPARSER_H
#define HBOPARTPARSER_H

#include <string>

class HBOBoard;
class HBOBoardComponent;
class HXMLWElement;

class HBOPartParser {
public:
    HBOPartParser();
    ~HBOPartParser();
    HBOPartParser(const HBOPartParser&) = delete;
    HBOPartParser& operator=(const HBOPartParser&) = delete;

    bool parseFile(const std::string& path, HBOBoard* board);

private:
    bool read(const std::string& path);
    bool readPartAndBoardInfo(const HXMLWElement* root, std::string& partString);
    bool readPorts(const HXMLWElement* root);
    bool readInterfaces(const HXMLWElement* root);
    bool readPresetFile(const std::string& name);
    bool readPresetRoot(const HXMLWElement* root);

    HBOBoard* m_board = nullptr;            // not owned
    HBOBoardComponent* m_part = nullptr;  // handed to the board
};

#endif

// The front door for every board.xml: picks the reader by schema version, and
// reshapes a board read by the schema 1 reader into the schema 2 model.
#ifndef HBOPARSER_H
#define HBOPARSER_H

#include <string>

class HBOBoard;

class HBOParser {
public:
    HBOParser();
    ~HBOParser();
    HBOParser(const HBOParser&) = delete;
    HBOParser& operator=(const HBOParser&) = delete;

    // True when the chosen reader says so. Nothing leaves as an exception.
    bool parseFile(const std::string& path, HBOBoard* board);

    // Always false: the work shows in the board. Boards of schema 2 are left alone.
    bool migrateV1ToV2(HBOBoard* board);

private:
    bool dispatch(const std::string& path, HBOBoard* board);
};

#endif

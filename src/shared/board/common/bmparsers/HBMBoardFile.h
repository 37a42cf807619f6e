// The slot of board.xml in the migration tool. It lists the board's components
// on the standard output while reading, keeps nothing, and writes nothing: a
// migration does not carry board.xml through this model.
#ifndef HBMBOARDFILE_H
#define HBMBOARDFILE_H

#include <iosfwd>
#include <string>

class HXMLWElement;

class HBMBoardFile {
public:
    HBMBoardFile();
    ~HBMBoardFile();

    // False for a root without children.
    bool parse(HXMLWElement* root);
    // Leaves the file empty, by design.
    void write(std::ofstream& out) const;

private:
    // Prints "Component: NAME" for each child of every "components" element.
    bool readComponents(HXMLWElement* root, std::string& error);
};

#endif

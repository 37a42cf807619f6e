// Free helpers that every part of the board library leans on: version
// ordering, schema tests, board identifier splitting, the few global
// parameters, minimal Tcl list handling, and small string and directory
// utilities. Nothing here holds state.
#ifndef HBOBOARDUTILS_H
#define HBOBOARDUTILS_H

#include <string>
#include <vector>

class HBOBoard;
class HBOBoardComponent;
class HBOBusIf;
class HBOModelPort;

namespace HBOBoardUtils {

// Always "/", whatever the platform: board paths are stored that way.
std::string getDirSeparator();

// "a is at least b" for dotted schema versions. Only the first two fields are
// compared, and only between strings with the same number of fields; readers
// of board files depend on the exact (odd) results of this rule.
bool isEqualOrGreater(std::string a, std::string b);

// Three-way order of revision strings. Numeric fields weigh by the sum of
// their digits and only the first two fields count; the catalogue's order of
// revisions follows from exactly this, so it must not be "fixed".
int version_compare(std::string a, std::string b);

// Schema version of at least "2.0"; null anywhere on the way gives false.
bool isV2SchemaBoard(const HBOBoard* board);
bool isV2SchemaBoard(const HBOBoardComponent* component);
bool isV2SchemaBoard(const HBOBusIf* busIf);
bool isV2SchemaBoard(const HBOModelPort* port);
bool isSchema20OrGreater(const HBOBoard* board);

// Values of the two feature parameters; a missing parameter reads as false.
bool isV2SchemaEnabled();
bool isBoardIntegraterSupportEnabled();

// "vendor:board:part:rev" and "vendor:board:rev" splitters. A name with an
// unexpected number of fields comes back unchanged.
std::string getBoardNameFromBoardPart(std::string name);
std::string getBoardPartNameFromVLNV(std::string name);
std::string getBoardKeyFromBoardPart(std::string name);

// The user's board repository path list. False (and `out` untouched) with an
// error message when the project-level parameter is set; false with an empty
// `out` when the repository parameter does not exist.
bool getUserRepoPathFromParam(std::string& out);

// A small brace-list scanner, not a full Tcl list parser: no backslashes, no
// quotes, no nesting (the first "}" always closes).
std::vector<std::string> parseTclList(std::string list);
// Blank separated; elements holding white space are wrapped in braces.
std::string asTclSpaceSeparatedStr(const std::vector<std::string>& elements);

std::string join(const std::vector<std::string>& elements, const std::string& separator);
// Every line prefixed by `count` blanks and ended by a newline.
std::string indent(const std::string& text, unsigned int count);
const char* valueOrEmpty(const char* text);

// Working directory; both return 0 on success.
int changeDir(const std::string& dir);
int getCurrDir(std::string& out);

// Repository debug print, confined to the boards "bdf0" and "bdg0" and to a
// true boolean parameter named `paramName`.
void DumpDebugStr(const std::string& paramName, const std::string& stage, HBOBoard* board);

// The documented parameters of board files, "name:location:description".
void getBoardFileParamList(std::vector<std::string>& list);

}  // namespace HBOBoardUtils

#endif

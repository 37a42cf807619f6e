// The grammar-loading parse that precedes every read of a schema 1 file.
#ifndef HBOLEGACYGRAMMAR_H
#define HBOLEGACYGRAMMAR_H

#include <string>

namespace HBOLegacyGrammar {
// Parses `path` once, with the first `boards/board_schemas/1.0/<dtdName>` of
// the data directories loaded and cached, and no validation. Throws HEXError
// "@49-115@%s%s" for a parser exception, "@49-112@%s" for any other; a thrown
// text is reported as "@49-44@%s" and the parse goes on.
void preParse(const std::string& path, const char* dtdName);
}  // namespace HBOLegacyGrammar

#endif

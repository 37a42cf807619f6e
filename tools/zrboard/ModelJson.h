// The whole board model as one JSON document, for `zrboard show --json`.
#ifndef ZRBOARD_MODELJSON_H
#define ZRBOARD_MODELJSON_H

#include <iosfwd>

class HBOBoard;

namespace zrboard {

void writeBoardJson(std::ostream& out, const HBOBoard& board);

}  // namespace zrboard

#endif

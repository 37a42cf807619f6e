// The readable outline of a board that `zrboard show` prints.
#ifndef ZRBOARD_SHOWOUTLINE_H
#define ZRBOARD_SHOWOUTLINE_H

#include <iosfwd>

class HBOBoard;

namespace zrboard {

void writeBoardOutline(std::ostream& out, const HBOBoard& board);

}  // namespace zrboard

#endif

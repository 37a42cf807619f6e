// Which daughter-board connectors fit each connector of a reference board,
// read from the board's compatibility caches; `compat` and `site` show it.
#ifndef ZRBOARD_CONNECTORFITS_H
#define ZRBOARD_CONNECTORFITS_H

#include <vector>

class HBOBoard;
class HBOBoardComponent;

namespace zrboard {

struct ConnectorFit {
    const HBOBoardComponent* own;
    std::vector<const HBOBoardComponent*> full, partial;  // ordered by name
};

// A board with an FPGA that is not an integrated board: one the caches are kept for.
bool isReferenceBoard(const HBOBoard& board);

// One entry per connector of `board`; with `latest` only the newest version
// of each daughter part.
std::vector<ConnectorFit> fitsOf(const HBOBoard& board, bool latest);

// One entry per connector of a daughter board: the connectors of the
// reference boards among `boards` that it fits.
std::vector<ConnectorFit> fitsOfDaughter(const HBOBoard& daughter, const std::vector<HBOBoard*>& boards);

}  // namespace zrboard

#endif

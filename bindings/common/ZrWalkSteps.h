// The walks down a board (get_board_components and the rest), shared by the
// Tcl package and the Python module.
#ifndef ZR_BIND_ZRWALKSTEPS_H
#define ZR_BIND_ZRWALKSTEPS_H

#include <functional>
#include <string>
#include <vector>

#include "ZrRef.h"

namespace zrbind {

struct Walk {
    const char* name;
    const char* sources;  // the kinds the walk starts from, for error texts
    // Appends the children of one object; false when the walk doesn't start from its kind.
    bool (*step)(const Ref& from, std::vector<Ref>& out);
};

const std::vector<Walk>& walks();

// The objects found, each once, in order, and only those whose name keep
// accepts (all without keep).
std::vector<Ref> walkResult(const std::vector<Ref>& found, const std::function<bool(const std::string&)>& keep);

}  // namespace zrbind

#endif

// Where in an input file a message arose. It travels beside a message to the
// listeners; the message's id, arguments, severity and text stay as they are.
#ifndef ZR_COMMON_COMMSGPOSITION_H
#define ZR_COMMON_COMMSGPOSITION_H

#include <string>

struct ComMsgPosition {
    std::string file;
    // 1-based; a line of 0 means that the message has no position.
    int line = 0;
    // 1-based; 0 when the column is not known.
    int column = 0;

    bool known() const { return line > 0; }
};

// While a scope lives, every message built on its thread carries its position;
// the innermost scope wins. Readers open one around the handling of each
// element, so a message deferred there keeps the position it was built at.
// The scope holds a reference to `file`, which must outlive it.
class ComMsgPositionScope {
public:
    ComMsgPositionScope(const std::string& file, int line, int column);
    ~ComMsgPositionScope();
    ComMsgPositionScope(const ComMsgPositionScope&) = delete;
    ComMsgPositionScope& operator=(const ComMsgPositionScope&) = delete;

    // The innermost scope's position on this thread; unknown without one.
    static ComMsgPosition current();

    // Where the last exception on this thread left the scopes: the innermost
    // scope it unwound, for the message that the catcher sends in its stead.
    // Unknown when none was unwound since the last call, which clears it.
    static ComMsgPosition takeUnwound();

private:
    const std::string& m_file;
    int m_line;
    int m_column;
    const ComMsgPositionScope* m_outer;
};

#endif

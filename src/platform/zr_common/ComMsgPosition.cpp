#include "ComMsgPosition.h"

namespace {
// Scopes nest strictly on one thread: each links to the one it hides.
thread_local const ComMsgPositionScope* t_innermost = nullptr;
}  // namespace

ComMsgPositionScope::ComMsgPositionScope(const std::string& file, int line, int column)
    : m_file(file), m_line(line), m_column(column), m_outer(t_innermost) {
    t_innermost = this;
}

ComMsgPositionScope::~ComMsgPositionScope() { t_innermost = m_outer; }

ComMsgPosition ComMsgPositionScope::current() {
    ComMsgPosition position;
    if (const ComMsgPositionScope* s = t_innermost) {
        position.file = s->m_file;
        position.line = s->m_line;
        position.column = s->m_column;
    }
    return position;
}

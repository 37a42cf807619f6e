#include "ComMsgPosition.h"

#include <exception>

namespace {
// Scopes nest strictly on one thread: each links to the one it hides.
thread_local const ComMsgPositionScope* t_innermost = nullptr;
// The first scope that an exception unwinds is its innermost; the scopes
// around it that the same exception unwinds later must not replace it, so
// recording waits until the reader makes a scope again.
thread_local bool t_recordUnwound = true;
thread_local ComMsgPosition t_unwound;
}  // namespace

ComMsgPositionScope::ComMsgPositionScope(const std::string& file, int line, int column)
    : m_file(file), m_line(line), m_column(column), m_outer(t_innermost) {
    t_innermost = this;
    t_recordUnwound = true;
}

ComMsgPositionScope::~ComMsgPositionScope() {
    if (t_recordUnwound && std::uncaught_exceptions() > 0) {
        t_unwound.file = m_file;
        t_unwound.line = m_line;
        t_unwound.column = m_column;
        t_recordUnwound = false;
    }
    t_innermost = m_outer;
}

ComMsgPosition ComMsgPositionScope::current() {
    ComMsgPosition position;
    if (const ComMsgPositionScope* s = t_innermost) {
        position.file = s->m_file;
        position.line = s->m_line;
        position.column = s->m_column;
    }
    return position;
}

ComMsgPosition ComMsgPositionScope::takeUnwound() {
    ComMsgPosition position = t_unwound;
    t_unwound = ComMsgPosition();
    return position;
}

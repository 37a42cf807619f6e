#include "ComMsgPosition.h"

#include <exception>

namespace {
// Scopes nest strictly on one thread: each links to the one it hides. The
// first scope that an exception unwinds is its innermost; the scopes around
// it that the same exception unwinds later must not replace it, so recording
// waits until the reader makes a scope again. One plain record, so that a
// scope costs one look-up of the thread's storage.
struct ScopeState {
    const ComMsgPositionScope* innermost = nullptr;
    bool recordUnwound = true;
};
thread_local ScopeState t_state;
thread_local ComMsgPosition t_unwound;
}  // namespace

ComMsgPositionScope::ComMsgPositionScope(const std::string& file, int line, int column)
    : m_file(file), m_line(line), m_column(column) {
    ScopeState& state = t_state;
    m_outer = state.innermost;
    state.innermost = this;
    state.recordUnwound = true;
}

ComMsgPositionScope::~ComMsgPositionScope() {
    ScopeState& state = t_state;
    if (state.recordUnwound && std::uncaught_exceptions() > 0) {
        t_unwound.file = m_file;
        t_unwound.line = m_line;
        t_unwound.column = m_column;
        state.recordUnwound = false;
    }
    state.innermost = m_outer;
}

ComMsgPosition ComMsgPositionScope::current() {
    ComMsgPosition position;
    if (const ComMsgPositionScope* s = t_state.innermost) {
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

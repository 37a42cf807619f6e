// A built message: splits the id off its format and renders its English text.
#include "ComMsgMgrInstance.h"

#include <cstring>
#include <utility>

namespace {

// Puts the argument texts in place of %s and %d, in order; "%%" is a percent sign.
// Missing arguments leave nothing behind, surplus ones are dropped.
std::string substitute(const char* text, const std::vector<std::string>& args) {
    std::string out;
    out.reserve(std::strlen(text) + 16);
    std::size_t next = 0;
    for (const char* p = text; *p; ++p) {
        if (p[0] == '%' && (p[1] == 's' || p[1] == 'd')) {
            if (next < args.size())
                out += args[next];
            ++next;
            ++p;
        } else if (p[0] == '%' && p[1] == '%') {
            out += '%';
            ++p;
        } else {
            out += *p;
        }
    }
    return out;
}

bool isDebug(ComMsgMgr::MsgMask mask) {
    return mask == ComMsgMgr::MSG_DEBUG1 || mask == ComMsgMgr::MSG_DEBUG2;
}

}  // namespace

ComMsgMgrInstance::ComMsgMgrInstance() = default;

ComMsgMgrInstance::ComMsgMgrInstance(int argc, const char* file, int line, const char* scope,
                                     ComMsgMgr::MsgMask mask, const char* format,
                                     std::vector<std::string> args)
    : m_format(format ? format : ""),
      m_scope(scope ? scope : ""),
      m_file(file ? file : ""),
      m_line(line),
      m_argc(argc),
      m_mask(mask),
      m_args(std::move(args)),
      m_position(ComMsgPositionScope::current()) {
    // "@49-69@%s%s": the id lies between the first two at signs.
    if (m_format.size() > 2 && m_format[0] == '@') {
        std::size_t end = m_format.find('@', 1);
        if (end != std::string::npos && end > 1)
            m_id = m_format.substr(1, end - 1);
    }
}

std::string ComMsgMgrInstance::getText() const {
    if (!m_id.empty()) {
        if (const char* text = ComMsgMgr::catalogueText(m_id))
            return substitute(text, m_args);
        return substitute(m_format.c_str() + m_id.size() + 2, m_args);
    }
    std::string text = substitute(m_format.c_str(), m_args);
    if (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

std::string ComMsgMgrInstance::getLine() const {
    std::string line = ComMsgMgr::severityName(m_mask);
    line += ": [";
    line += m_scope;
    const std::string& tag = isDebug(m_mask) ? m_channel : m_id;
    if (!tag.empty()) {
        if (!m_scope.empty())
            line += ' ';
        line += tag;
    }
    line += "] ";
    line += getText();
    return line;
}

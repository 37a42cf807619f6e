#include "HBOSAX2Handler.h"

#include <xercesc/util/XMLString.hpp>

#include "ComMsgMgr.h"

HBOSAX2Handler::HBOSAX2Handler(const std::string& file, bool lineShift) : m_file(file), m_lineShift(lineShift) {}

HBOSAX2Handler::~HBOSAX2Handler() = default;

int HBOSAX2Handler::adjustLine(int line) const {
    return (m_lineShift && line > 0) ? line - 1 : line;
}

void HBOSAX2Handler::store(const char* format, const xercesc::SAXParseException& e) {
    std::string text;
    if (char* t = xercesc::XMLString::transcode(e.getMessage())) {
        text = t;
        xercesc::XMLString::release(&t);
    }
    int line = adjustLine(static_cast<int>(e.getLineNumber()));
    // The validating parser's own place of the fault travels beside the message.
    const ComMsgPositionScope at(m_file, line, static_cast<int>(e.getColumnNumber()));
    m_messages.push_back(ComMsgMgrInstance::createInstance::eval(3, __FILE__, __LINE__, "board",
                                                                 ComMsgMgr::MSG_WARNING, format, m_file, line,
                                                                 text));
}

void HBOSAX2Handler::error(const xercesc::SAXParseException& e) {
    store("@49-105@%s%d%s", e);
}

void HBOSAX2Handler::fatalError(const xercesc::SAXParseException& e) {
    store("@49-106@%s%d%s", e);
}

int HBOSAX2Handler::sendMessages() const {
    for (const ComMsgMgrInstance& m : m_messages)
        ComMsgMgr::sendMessage(m);
    return static_cast<int>(m_messages.size());
}

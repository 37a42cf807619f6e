// Collects the messages delivered while it lives, without printing them.
#ifndef ZR_TEST_MESSAGERECORDER_H
#define ZR_TEST_MESSAGERECORDER_H

#include <vector>

#include "ComMsgMgr.h"

class MessageRecorder {
public:
    MessageRecorder() : m_wasPrinting(ComMsgMgr::printToStderr()) {
        ComMsgMgr::setPrintToStderr(false);
        m_handle = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) { m_messages.push_back(m); });
    }
    ~MessageRecorder() {
        ComMsgMgr::removeListener(m_handle);
        ComMsgMgr::setPrintToStderr(m_wasPrinting);
    }
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;

    const std::vector<ComMsgMgrInstance>& messages() const { return m_messages; }

private:
    bool m_wasPrinting;
    int m_handle = 0;
    std::vector<ComMsgMgrInstance> m_messages;
};

#endif

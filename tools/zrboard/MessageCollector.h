// Collects the numbered messages delivered while it lives.
#ifndef ZRBOARD_MESSAGECOLLECTOR_H
#define ZRBOARD_MESSAGECOLLECTOR_H

#include <vector>

#include "ComMsgMgr.h"

namespace zrboard {

class MessageCollector {
public:
    MessageCollector() {
        m_handle = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) {
            if (!m.getId().empty())
                m_messages.push_back(m);
        });
    }
    ~MessageCollector() { ComMsgMgr::removeListener(m_handle); }
    MessageCollector(const MessageCollector&) = delete;
    MessageCollector& operator=(const MessageCollector&) = delete;

    const std::vector<ComMsgMgrInstance>& messages() const { return m_messages; }
    void clear() { m_messages.clear(); }
    int count(ComMsgMgr::MsgMask mask) const {
        int n = 0;
        for (const auto& m : m_messages)
            n += m.getMask() == mask;
        return n;
    }

private:
    int m_handle = 0;
    std::vector<ComMsgMgrInstance> m_messages;
};

}  // namespace zrboard

#endif

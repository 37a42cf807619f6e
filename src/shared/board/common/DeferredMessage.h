// A board file fault kept for later: the built message and whether the file
// may still count as read (`ok` false fails it when the list is reduced).
#ifndef DEFERREDMESSAGE_H
#define DEFERREDMESSAGE_H

#include "ComMsgMgrInstance.h"

class DeferredMessage {
public:
    DeferredMessage() = default;
    DeferredMessage(const ComMsgMgrInstance& message, bool isOk) : msg(message), ok(isOk) {}

    ComMsgMgrInstance msg;
    bool ok = false;
};

#endif

// Message manager of the host: numbered messages, debug channels, listeners.
#ifndef ZR_COMMON_COMMSGMGR_H
#define ZR_COMMON_COMMSGMGR_H

#include <functional>
#include <string>
#include <vector>

#include "ComMsgArgs.h"

class ComMsgMgrInstance;

class ComMsgMgr {
public:
    enum MsgMask {
        MSG_NOTE = 0x20000,
        MSG_DEBUG1 = 0x1000001,
        MSG_DEBUG2 = 0x1000002,
        MSG_INFO = 0x4000000,
        MSG_WARNING = 0x8000000,
        MSG_CRITICAL_WARNING = 0x10000000,
        MSG_ERROR = 0x20000000
    };

    // Receives every delivered message, debug lines included (their id is empty).
    using Listener = std::function<void(const ComMsgMgrInstance&)>;

    // Formats and delivers a numbered message at once.
    struct sendMsg {
        template <class... A>
        static void eval(int argc, const char* file, int line, const char* scope, MsgMask mask,
                         const char* format, const A&... args);
    };

    // Delivers a debug line only when its channel is on; otherwise nothing is built.
    struct sendScopedMsg {
        template <class... A>
        static void eval(int argc, const char* file, int line, const char* scope, const char* channel,
                         MsgMask mask, const char* format, const A&... args);
    };

    static void sendMessage(const ComMsgMgrInstance& msg);
    static void sendMsgString(const char* idText, MsgMask mask, const char* scope);

    // Debug channels: switched on by ZR_DEBUG (comma separated; "*" or "all" for
    // every channel), read once on first use, or here.
    static bool hasScope(const char* channel);
    static void enableScope(const std::string& channel, bool on = true);

    // Listeners; the handle removes one again.
    static int addListener(Listener listener);
    static void removeListener(int handle);

    // Standard error printing of delivered messages; on by default.
    static void setPrintToStderr(bool on);
    static bool printToStderr();

    static const char* severityName(MsgMask mask);

    // Our English text for a catalogue id such as "49-69", or null when unknown.
    static const char* catalogueText(const std::string& id);
    // The placeholders that an id's callers send ("%s%d%s"), or null when unknown.
    static const char* catalogueFormat(const std::string& id);
    // Every id of the catalogue, in catalogue order.
    static std::vector<std::string> catalogueIds();
};

// The instance class completes the templates above.
#include "ComMsgMgrInstance.h"

#endif

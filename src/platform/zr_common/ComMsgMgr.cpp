// Delivery of messages: standard error printing, listeners and debug channels.
#include "ComMsgMgr.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

namespace {

struct MsgState {
    using ListenerPtr = std::shared_ptr<ComMsgMgr::Listener>;

    std::vector<std::pair<int, ListenerPtr>> listeners;
    int nextHandle = 1;
    bool print = true;
    // Transparent comparison lets hasScope look a channel up without building a string.
    std::set<std::string, std::less<>> channels;
    bool allChannels = false;

    MsgState() {
        // ZR_DEBUG is read once, when messages are first used.
        const char* env = std::getenv("ZR_DEBUG");
        if (!env)
            return;
        std::string_view rest(env);
        while (!rest.empty()) {
            std::size_t comma = rest.find(',');
            std::string_view item = rest.substr(0, comma);
            while (!item.empty() && (item.front() == ' ' || item.front() == '\t'))
                item.remove_prefix(1);
            while (!item.empty() && (item.back() == ' ' || item.back() == '\t'))
                item.remove_suffix(1);
            if (item == "*" || item == "all")
                allChannels = true;
            else if (!item.empty())
                channels.emplace(item);
            if (comma == std::string_view::npos)
                break;
            rest.remove_prefix(comma + 1);
        }
    }
};

MsgState& state() {
    // Never destroyed, so that messages sent from static destructors still work.
    static MsgState* s = new MsgState;
    return *s;
}

}  // namespace

bool ComMsgMgr::hasScope(const char* channel) {
    const MsgState& s = state();
    if (s.allChannels)
        return true;
    if (s.channels.empty() || !channel)
        return false;
    return s.channels.find(std::string_view(channel)) != s.channels.end();
}

void ComMsgMgr::enableScope(const std::string& channel, bool on) {
    MsgState& s = state();
    if (channel == "*" || channel == "all") {
        s.allChannels = on;
        if (!on)
            s.channels.clear();
    } else if (on) {
        s.channels.insert(channel);
    } else {
        s.channels.erase(channel);
    }
}

int ComMsgMgr::addListener(Listener listener) {
    MsgState& s = state();
    int handle = s.nextHandle++;
    s.listeners.emplace_back(handle, std::make_shared<Listener>(std::move(listener)));
    return handle;
}

void ComMsgMgr::removeListener(int handle) {
    MsgState& s = state();
    for (auto it = s.listeners.begin(); it != s.listeners.end(); ++it) {
        if (it->first == handle) {
            s.listeners.erase(it);
            return;
        }
    }
}

void ComMsgMgr::setPrintToStderr(bool on) { state().print = on; }

bool ComMsgMgr::printToStderr() { return state().print; }

const char* ComMsgMgr::severityName(MsgMask mask) {
    switch (mask) {
    case MSG_INFO:
        return "INFO";
    case MSG_WARNING:
        return "WARNING";
    case MSG_CRITICAL_WARNING:
        return "CRITICAL WARNING";
    case MSG_ERROR:
        return "ERROR";
    case MSG_NOTE:
        return "NOTE";
    case MSG_DEBUG1:
    case MSG_DEBUG2:
        return "DEBUG";
    }
    return "INFO";
}

void ComMsgMgr::sendMessage(const ComMsgMgrInstance& msg) {
    MsgState& s = state();
    if (s.print) {
        std::string line = msg.getLine();
        line += '\n';
        std::fwrite(line.data(), 1, line.size(), stderr);
        std::fflush(stderr);
    }
    if (s.listeners.empty())
        return;
    // Listeners may attach or detach others, or themselves, while we call them:
    // walk a snapshot, skip those detached meanwhile, and keep each alive during its call.
    std::vector<std::pair<int, MsgState::ListenerPtr>> snapshot = s.listeners;
    for (const auto& entry : snapshot) {
        bool attached = false;
        for (const auto& current : s.listeners) {
            if (current.first == entry.first) {
                attached = true;
                break;
            }
        }
        if (attached)
            (*entry.second)(msg);
    }
}

void ComMsgMgr::sendMsgString(const char* idText, MsgMask mask, const char* scope) {
    sendMessage(ComMsgMgrInstance(0, "", 0, scope, mask, idText, {}));
}

// The host's event broker: listeners by event code. Delivery is synchronous,
// on the caller's thread, in the order the listeners were added.
#ifndef ZR_COMMON_HUTGUIEVENTBROKER_H
#define ZR_COMMON_HUTGUIEVENTBROKER_H

#include <cstddef>
#include <functional>

#include "HUTGuiEvent.h"
#include "HUTGuiEventConnectionHandle.h"

class HUTGuiEventBroker {
public:
    using Listener = std::function<void(const HUTGuiEvent::GuiEventBase&)>;

    // The caller owns the handle that comes back.
    static HUTGuiEventConnectionHandle* addListener(int code, Listener listener);
    static void deliver(const HUTGuiEvent::GuiEventBase& event);
    // Connected listeners of a code.
    static std::size_t listenerCount(int code);
};

#endif

// One listener's connection to the event broker. Disconnecting is final;
// destroying a handle leaves the connection as it is.
#ifndef ZR_COMMON_HUTGUIEVENTCONNECTIONHANDLE_H
#define ZR_COMMON_HUTGUIEVENTCONNECTIONHANDLE_H

#include <memory>

class HUTGuiEventConnectionHandle {
public:
    struct Slot;
    explicit HUTGuiEventConnectionHandle(std::shared_ptr<Slot> slot) : m_slot(std::move(slot)) {}

    bool isConnected() const;
    void disconnect();

private:
    std::shared_ptr<Slot> m_slot;
};

#endif

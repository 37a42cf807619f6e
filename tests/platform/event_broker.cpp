// The event broker: delivery by code and in order, payloads, disconnection
// also from inside a delivery.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "HUTGuiEvent.h"
#include "HUTGuiEventBroker.h"

namespace {

const int kCode = 7001;
const int kOtherCode = 7002;

using Handle = std::unique_ptr<HUTGuiEventConnectionHandle>;

}  // namespace

TEST(EventBroker, DeliversByCodeInOrderWithPayload) {
    std::vector<std::string> seen;
    Handle first(HUTGuiEventBroker::addListener(kCode, [&](const HUTGuiEvent::GuiEventBase& e) {
        auto& native = dynamic_cast<const HUTGuiEvent::NativeEvent&>(e);
        seen.push_back("first " + boost::any_cast<std::string>(native.getData()));
    }));
    Handle second(HUTGuiEventBroker::addListener(kCode, [&](const HUTGuiEvent::GuiEventBase& e) {
        seen.push_back("second " + std::to_string(e.getCode()));
    }));
    Handle other(HUTGuiEventBroker::addListener(kOtherCode, [&](const HUTGuiEvent::GuiEventBase&) {
        seen.push_back("other");
    }));
    EXPECT_EQ(HUTGuiEventBroker::listenerCount(kCode), 2u);

    HUTGuiEvent::NativeEvent(kCode, std::string("payload")).doEvent();
    EXPECT_EQ(seen, (std::vector<std::string>{"first payload", "second 7001"}));
    first->disconnect();
    second->disconnect();
    other->disconnect();
}

TEST(EventBroker, DisconnectStopsDeliveryEvenDuringOne) {
    int calls = 0;
    Handle later;
    // The first listener disconnects itself and the one behind it.
    Handle self(HUTGuiEventBroker::addListener(kCode, [&](const HUTGuiEvent::GuiEventBase&) {
        ++calls;
        self->disconnect();
        later->disconnect();
    }));
    later.reset(HUTGuiEventBroker::addListener(kCode, [&](const HUTGuiEvent::GuiEventBase&) { calls += 100; }));

    HUTGuiEvent::GuiEventBase(kCode).doEvent();
    HUTGuiEvent::GuiEventBase(kCode).doEvent();
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(self->isConnected());
    EXPECT_EQ(HUTGuiEventBroker::listenerCount(kCode), 0u);
    // Disconnecting twice, or an event nobody listens to, is harmless.
    self->disconnect();
    HUTGuiEvent::GuiEventBase(kOtherCode + 50).doEvent();
}

// Listeners by event code. Each connection is a shared slot, so a handle can
// disconnect it while a delivery that already copied the slot list runs on.
#include "HUTGuiEventBroker.h"

#include <map>
#include <memory>
#include <vector>

struct HUTGuiEventConnectionHandle::Slot {
    HUTGuiEventBroker::Listener listener;
    bool connected = true;
};

namespace {

using SlotList = std::vector<std::shared_ptr<HUTGuiEventConnectionHandle::Slot>>;

std::map<int, SlotList>& slotsByCode() {
    static std::map<int, SlotList> slots;
    return slots;
}

// Drops the disconnected slots of a code, so that the lists do not grow.
void prune(SlotList& list) {
    SlotList kept;
    kept.reserve(list.size());
    for (auto& slot : list)
        if (slot->connected)
            kept.push_back(slot);
    list.swap(kept);
}

}  // namespace

HUTGuiEvent::GuiEventBase::~GuiEventBase() = default;

std::string HUTGuiEvent::GuiEventBase::getName() const { return "event " + std::to_string(m_code); }

void HUTGuiEvent::GuiEventBase::doEvent() const { HUTGuiEventBroker::deliver(*this); }

bool HUTGuiEventConnectionHandle::isConnected() const { return m_slot && m_slot->connected; }

void HUTGuiEventConnectionHandle::disconnect() {
    if (!m_slot)
        return;
    m_slot->connected = false;
    m_slot->listener = nullptr;
}

HUTGuiEventConnectionHandle* HUTGuiEventBroker::addListener(int code, Listener listener) {
    auto slot = std::make_shared<HUTGuiEventConnectionHandle::Slot>();
    slot->listener = std::move(listener);
    SlotList& list = slotsByCode()[code];
    prune(list);
    list.push_back(slot);
    return new HUTGuiEventConnectionHandle(slot);
}

void HUTGuiEventBroker::deliver(const HUTGuiEvent::GuiEventBase& event) {
    auto found = slotsByCode().find(event.getCode());
    if (found == slotsByCode().end())
        return;
    // A copy: listeners may add or disconnect listeners while they run.
    SlotList snapshot = found->second;
    for (auto& slot : snapshot) {
        if (!slot->connected)
            continue;
        // Held by value so that a listener that disconnects itself survives its own call.
        HUTGuiEventBroker::Listener call = slot->listener;
        call(event);
    }
}

std::size_t HUTGuiEventBroker::listenerCount(int code) {
    auto found = slotsByCode().find(code);
    if (found == slotsByCode().end())
        return 0;
    std::size_t n = 0;
    for (auto& slot : found->second)
        if (slot->connected)
            ++n;
    return n;
}

// Scope guard for memory statistics; has no visible effect.
#ifndef ZR_COMMON_HUTMEMWATCHER_H
#define ZR_COMMON_HUTMEMWATCHER_H

class HUTMemWatcher {
public:
    HUTMemWatcher(const char*, const char*) {}
    HUTMemWatcher(const HUTMemWatcher&) = delete;
    HUTMemWatcher& operator=(const HUTMemWatcher&) = delete;
};

#endif

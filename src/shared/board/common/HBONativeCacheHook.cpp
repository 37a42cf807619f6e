#include "HBONativeCacheHook.h"

namespace HBONativeCacheHook {
// No script layer is attached yet: nothing holds handles to drop.
void removeObject(const std::type_info&, const void*) noexcept {}
}  // namespace HBONativeCacheHook

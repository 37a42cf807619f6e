// Name and version that `zrboard --version` prints. The build may pass the
// project version as ZRBOARD_VERSION; otherwise this is the one place to bump.
#ifndef ZRBOARD_VERSION_H
#define ZRBOARD_VERSION_H

#ifndef ZRBOARD_VERSION
#define ZRBOARD_VERSION "0.1.0"
#endif

namespace zrboard {
constexpr const char* kToolName = "zrboard";
constexpr const char* kToolVersion = ZRBOARD_VERSION;
}  // namespace zrboard

#endif

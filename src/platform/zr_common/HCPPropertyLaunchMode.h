// Whether the environment runs its scripts in Python rather than Tcl.
#ifndef ZR_COMMON_HCPPROPERTYLAUNCHMODE_H
#define ZR_COMMON_HCPPROPERTYLAUNCHMODE_H

namespace HCPProperty {

class LaunchMode {
public:
    static bool isPyMode();
    static void setPyMode(bool on);
};

}  // namespace HCPProperty

#endif

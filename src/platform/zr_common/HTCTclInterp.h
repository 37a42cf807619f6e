// The host's Tcl interpreter.
#ifndef ZR_COMMON_HTCTCLINTERP_H
#define ZR_COMMON_HTCTCLINTERP_H

#include <string>

struct Tcl_Interp;

class HTCTclInterp {
public:
    // The process's interpreter: made on first use with Tcl's own start-up
    // script run, and kept for the life of the process.
    static Tcl_Interp* getDefaultInterp();
    // Why Tcl's own start-up script failed, or empty when it ran.
    static const std::string& getInitError();
};

#endif

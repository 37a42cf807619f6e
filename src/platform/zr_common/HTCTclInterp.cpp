#include "HTCTclInterp.h"

#include <tcl.h>

namespace {

struct DefaultInterp {
    Tcl_Interp* interp = nullptr;
    std::string initError;

    DefaultInterp() {
        Tcl_FindExecutable(nullptr);
        interp = Tcl_CreateInterp();
        // Without Tcl's library the core commands still work; what failed is kept for the asking.
        if (Tcl_Init(interp) != TCL_OK)
            initError = Tcl_GetStringResult(interp);
    }
};

// Never destroyed: scripts may still run from other libraries' static destructors.
DefaultInterp& defaultInterp() {
    static DefaultInterp* d = new DefaultInterp;
    return *d;
}

}  // namespace

Tcl_Interp* HTCTclInterp::getDefaultInterp() { return defaultInterp().interp; }

const std::string& HTCTclInterp::getInitError() { return defaultInterp().initError; }

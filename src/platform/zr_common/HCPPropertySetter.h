// A change of a writable property, kept by the service so that it can be undone and redone.
#ifndef ZR_COMMON_HCPPROPERTYSETTER_H
#define ZR_COMMON_HCPPROPERTYSETTER_H

#include <string>

#include <tcl.h>

#include "HATAttr.h"
#include "HSTVector.h"
#include "tcl_collection.h"

namespace HCPProperty {

class Setter {
public:
    typedef zrc::tcltasks::tcl_collection<HSTVector<zrc::tcltasks::tclany>> Objects;

    virtual ~Setter();
    // The command id under which the service files the change.
    virtual int getCommandId() const { return 9999; }
    // Stores and applies value on every object; 0 on success.
    virtual int set(Tcl_Interp* interp, const Objects& objects, const std::string& name, const HATAttr& value) = 0;
    // Back to the state before set; the same as undo unless a setter knows better.
    virtual int reset() { return undo(); }
    virtual int undo() = 0;
    virtual int redo() = 0;
    // Called when the service lets the change go.
    virtual void release() {}
};

}  // namespace HCPProperty

#endif

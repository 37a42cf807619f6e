// Sent before the catalogue drops its user boards: holders of user board
// pointers let go of them here. The payload is the HBOBoardCReposMgr*.
#ifndef HBOBOARDCATALOGMODIFYPREEVENT_H
#define HBOBOARDCATALOGMODIFYPREEVENT_H

#include "HUTGuiEvent.h"

class HBOBoardCReposMgr;

class HBOBoardCatalogModifyPreEvent : public HUTGuiEvent::NativeEvent {
public:
    explicit HBOBoardCatalogModifyPreEvent(HBOBoardCReposMgr* mgr)
        : HUTGuiEvent::NativeEvent(HUTGuiEvent::kCatalogModifyPre, boost::any(mgr)) {}
    std::string getName() const override { return "HBOBoardCatalogModifyPreEvent"; }
};

#endif

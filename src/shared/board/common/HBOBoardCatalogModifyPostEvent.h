// Sent when a refresh of the catalogue is over, failed or not. The payload
// is the HBOBoardCReposMgr*.
#ifndef HBOBOARDCATALOGMODIFYPOSTEVENT_H
#define HBOBOARDCATALOGMODIFYPOSTEVENT_H

#include "HUTGuiEvent.h"

class HBOBoardCReposMgr;

class HBOBoardCatalogModifyPostEvent : public HUTGuiEvent::NativeEvent {
public:
    explicit HBOBoardCatalogModifyPostEvent(HBOBoardCReposMgr* mgr)
        : HUTGuiEvent::NativeEvent(HUTGuiEvent::kCatalogModifyPost, boost::any(mgr)) {}
    std::string getName() const override { return "HBOBoardCatalogModifyPostEvent"; }
};

#endif

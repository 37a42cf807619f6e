// Internal: the project catalogue made last. Every constructor of
// HBOPartCReposMgr sets it and every destructor clears it.
#ifndef HBOPARTCREPOSMGRINSTANCE_H
#define HBOPARTCREPOSMGRINSTANCE_H

class HBOPartCReposMgr;

namespace HBOPartCReposMgrInstance {
extern HBOPartCReposMgr* current;
}

#endif

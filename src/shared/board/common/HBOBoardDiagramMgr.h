// Which boards have a diagram open, and which of them is the current one.
// A reference-counted singleton; it does not own the boards.
#ifndef HBOBOARDDIAGRAMMGR_H
#define HBOBOARDDIAGRAMMGR_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

class HBOBoard;

class HBOBoardDiagramMgr {
public:
    // Made at first use; every call takes one reference.
    static HBOBoardDiagramMgr* getGlobal();
    // Gives one reference back; the last one destroys the singleton.
    static void release();

    void addToOpenedBoardDiagrams(HBOBoard* board);
    void removeFromOpenedBoardDiagrams(std::string name);
    void getOpenedBoardDiagrams(std::vector<HBOBoard*>& out) const;

    HBOBoard* getCurrentBoardDiagram() const { return m_current; }
    // The open board of that name becomes current; null and no change otherwise.
    HBOBoard* setCurrentBoardDiagram(std::string name);
    // Any board but null becomes current, open or not.
    void setCurrentBoardDiagram(HBOBoard* board);

private:
    HBOBoardDiagramMgr() = default;
    ~HBOBoardDiagramMgr() = default;
    HBOBoardDiagramMgr(const HBOBoardDiagramMgr&) = delete;
    HBOBoardDiagramMgr& operator=(const HBOBoardDiagramMgr&) = delete;

    std::int32_t m_ref_count = 0;
    std::map<std::string, HBOBoard*> m_opened;
    HBOBoard* m_current = nullptr;
};

#endif

// The catalogue of one project: the project's own repository list and its
// user boards, standing over the process-wide catalogue. One per session.
#ifndef HBOPARTCREPOSMGR_H
#define HBOPARTCREPOSMGR_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "HSTVector.h"

class HBOBoard;
class HBOBoardComponent;
class HBOBoardCReposMgr;

class HBOPartCReposMgr {
public:
    explicit HBOPartCReposMgr(bool from_param = true);
    ~HBOPartCReposMgr();
    HBOPartCReposMgr(const HBOPartCReposMgr&) = delete;
    HBOPartCReposMgr& operator=(const HBOPartCReposMgr&) = delete;

    void addUserRepoFromParam();
    void getUserRepositoryPaths(std::vector<std::string>& out) const { out = m_user_repo_list; }
    bool setUserRepositoryPaths(const std::vector<std::string>& paths);
    void refreshBoardParts();

    void getAllBoardParts(HSTVector<HBOBoard*>& out);
    void getAllLatestBoardParts(HSTVector<HBOBoard*>& out);
    void getAllActiveBoardParts(std::vector<HBOBoardComponent*>& out);
    HBOBoard* getInfoForBoardPart(const std::string& name);
    bool getLatestVersionForBoard(const std::string& name, std::string& version);
    std::string getBoardPartNameForBoard(const std::string& old_name);
    bool hasCorrBoardInInstall(std::string vlnv) const;

    bool registerUserBoard(HBOBoard* board);
    bool unregisterUserBoard(const std::string& name);

    // Takes `board` out of the maps of the manager made last, if any.
    static void clearBoard(HBOBoard* board);

    void rebuildConnectorsCompatibilityCache();

private:
    typedef std::map<std::string, HBOBoard*> BoardMap;

    void clearAll();
    void clearProjectBoards();
    void scanUserRepositories();
    // `depth` bounds the descent, so that a loop of directory links ends.
    bool findBoardFiles(const std::string& directory, int depth = 0);
    void mergeBoards();
    // Joins a project board that declares connected boards to them.
    void resolveIntegratedBoard(HBOBoard* board);
    void populateFamilyBoards();
    void populateLatestBoards();
    void rebuildGlobalConnectorCaches();
    HBOBoard* addBoardPart(const std::string& path);

    BoardMap m_boardpart_map;
    BoardMap m_user_boardpart_map;
    BoardMap m_latest_boardpart_map;
    std::map<std::string, std::vector<HBOBoard*>> m_family_board_map;
    std::vector<std::string> m_user_repo_list;
    HBOBoardCReposMgr* m_repos_mgr;
    std::set<std::string> m_static_replaced_by_user;
    std::string m_current_repo;
    bool m_connectors_dirty;
};

#endif

// The process-wide catalogue of boards: every board of the installation, read
// once, and the boards of the user's and the project's repositories, read anew
// at each refresh. It owns all of them and answers look-ups by name.
//
// One reference-counted instance. Some callers (appendAllBoards, the connector
// cache rebuild, the repository event listener) take a reference they never
// give back, so the instance usually lives as long as the process.
#ifndef HBOBOARDCREPOSMGR_H
#define HBOBOARDCREPOSMGR_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

class HBOBoard;
class HBOBoardComponent;
class HBOBusIfPreference;
class HUTGuiEventConnectionHandle;

class HBOBoardCReposMgr {
public:
    // Makes the catalogue on first use; every call counts one holder.
    static HBOBoardCReposMgr* getGlobal();
    // One holder less; the last one destroys the catalogue.
    static void release();
    // The catalogue if it has been made, without counting a holder.
    static HBOBoardCReposMgr* peekGlobal();
    // getGlobal()->getAllBoards(out), leaving the reference taken.
    static void appendAllBoards(std::vector<HBOBoard*>& out);

    HBOBoardCReposMgr(const HBOBoardCReposMgr&) = delete;
    HBOBoardCReposMgr& operator=(const HBOBoardCReposMgr&) = delete;

    // Walks `directory` for board.xml files (any case) and files each board.
    // Always returns false; a missing directory is reported.
    bool findBoardFiles(const std::string& directory, bool is_static);

    // Re-reads the user's and the project's repositories. Pointers to user
    // boards die; installed boards keep their addresses.
    void refreshBoards();
    // A Tcl list of the project's repositories; always refreshes.
    void setProjectRepo(const std::string& paths);
    void rebuildConnectorsCompatibilityCache();

    // Appended in order of the lower-case catalogue name.
    void getAllBoards(std::vector<HBOBoard*>& out);
    void getAllStaticBoardParts(std::vector<HBOBoard*>& out);
    void getAllLatestBoards(std::vector<HBOBoard*>& out);
    // vendor:library:board_name:version of installed boards that a user board hides.
    void getStaticBoardsReplacedByUser(std::set<std::string>& out);

    // The board of a catalogue name, a board part name or a short name; any case.
    HBOBoard* getInfoForBoard(const std::string& name);
    // The board part name that superseded an old board name, or "".
    std::string getBoardPartNameForBoard(const std::string& old_name);

    // Keep the newest file version per board, or every board of the highest
    // revision; the list comes back as the boards' active parts. Always true.
    bool filterLatestVersionBoardParts(std::vector<HBOBoardComponent*>& parts);
    bool filterLatestRevisionBoardParts(std::vector<HBOBoardComponent*>& parts);

    // Gives the board's interfaces without a preference of their own the
    // installation's preference. False for a null board.
    bool populatePreferenceData(HBOBoard* board);

private:
    typedef std::map<std::string, HBOBoard*> BoardMap;

    HBOBoardCReposMgr();
    ~HBOBoardCReposMgr();

    void populateStaticBoardPartList();
    // `canonical`: the path is known to be in canonical form already.
    HBOBoard* addBoardPart(const std::string& path, bool is_static, bool canonical = false);
    bool walkBoardFiles(const std::string& directory, bool is_static, bool canonical);
    void populateBoardPartList();
    void walkRepositoryList(const std::string& tclList);
    void resolveIntegratedBoard(HBOBoard* board);
    void clearUserBoards();
    void clearStaticBoards();
    void clearDerivedMaps();
    void populateLatestBoards();
    void populateFamilyBoards();
    void populateFamousNames();
    void populateLegacyBoardNames();
    bool readInterfacePreferences();
    void syncUserRepoPaths();
    HBOBoard* getInfoForFamousBoard(const std::string& name);

    BoardMap m_boardpart_map;
    BoardMap m_static_boardpart_map;
    BoardMap m_user_boardpart_map;
    std::set<std::string> m_static_replaced_by_user;
    BoardMap m_latest_boardpart_map;
    std::map<std::string, std::vector<HBOBoard*>> m_family_board_map;
    std::map<std::string, std::string> m_famous_name_map;
    std::map<std::string, std::string> m_legacy_name_map;
    std::int32_t m_ref_count;
    std::string m_user_repo_paths;
    std::string m_project_repo;
    std::map<std::string, HBOBusIfPreference*> m_preference_map;
    std::string m_current_repo;
    bool m_connectors_dirty;
    std::vector<HUTGuiEventConnectionHandle*> m_event_listeners;
};

#endif

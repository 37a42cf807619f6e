// The board of one project: the chosen board (not owned), the project's own
// catalogue, and whether the board start-up script has run. Choosing a board,
// changing the repository paths without losing the choice, and composing
// integrated boards all go through here.
#ifndef HBOBOARDCDATAMANAGER_H
#define HBOBOARDCDATAMANAGER_H

#include <string>
#include <utility>
#include <vector>

#include <boost/tuple/tuple.hpp>

#include "HSTVector.h"

class HBOBoard;
class HBOBusIf;
class HBOModelPort;
class HBOPartCReposMgr;

class HBOBoardCDataManager {
public:
    // Base connector, "vendor:board:connector:version" of the daughter.
    typedef std::pair<std::string, std::string> ConnectionPair;
    // Base connector, daughter board, daughter connector.
    typedef boost::tuple<std::string, const HBOBoard*, std::string> ConnectionTuple;

    HBOBoardCDataManager();
    ~HBOBoardCDataManager();
    HBOBoardCDataManager(const HBOBoardCDataManager&) = delete;
    HBOBoardCDataManager& operator=(const HBOBoardCDataManager&) = delete;

    // Looks a name up in the project's catalogue; with `try_legacy` an old
    // name is tried through its successor, and `via_legacy` set on that hit.
    HBOBoard* getBoard(std::string name, bool& via_legacy, bool try_legacy);

    // False for the board already chosen. Throws (or, `soft`, warns and
    // returns false) for a board that is not found.
    bool setBoard(std::string name, std::string part, bool soft, bool try_legacy);
    // Takes `board` as it is, populating its constraints at need; always true.
    bool setBoard(HBOBoard* board, std::string part, bool, bool);

    bool setBoardStrategy(HBOBoard* board);
    bool setBoardStrategyForced(HBOBoard* board);
    bool unsetBoardStrategy();
    HBOBoard* getBoardStrategy() const { return m_board; }
    bool isBoardStrategySet() const { return m_board != nullptr; }

    HBOPartCReposMgr* getBoardPartReposMgr() const { return m_repos_mgr; }
    void getBoardPartRepoPaths(HSTVector<std::string>& out) const;
    // Replaces the project's repositories and re-binds the chosen board to
    // the boards read anew; `board_changed` tells that the pointer moved.
    bool setBoardPartRepoPaths(HSTVector<std::string> paths, bool& board_changed);

    bool registerUserBoard(HBOBoard* board);
    bool unregisterUserBoard(const std::string& name);

    bool getBusIfByName(HBOBusIf*& out, const std::string& name);
    bool getModelPortByName(HBOModelPort*& out, const std::string& name);
    bool getModelPortSeq(std::vector<HBOModelPort*>& out);

    // Warns when the project uses a user copy of a board the installation carries.
    void WarnIfNotLatestBoard(HBOBoard* board);

    // Runs the board start-up script once per project.
    bool loadBoardTcl();

    // Integrated boards, owned by the caller. Refusals throw HEXError.
    HBOBoard* createIntegratdBoard(const std::string& base_part, const std::vector<ConnectionPair>& connections,
                                   const std::string& name);
    HBOBoard* createIntegratdBoard(const std::string& base_part, const std::vector<ConnectionTuple>& connections,
                                   const std::string& name);
    HBOBoard* createIntegratdBoard(const HBOBoard* base, const std::vector<ConnectionTuple>& connections,
                                   const std::string& name);
    HBOBoard* createIntegratdBoard(const HBOBoard* base, const std::vector<ConnectionPair>& connections,
                                   const std::string& name);

    std::string createUniqBoardNameForIntegratedBoard(const std::string& base,
                                                      const std::vector<ConnectionPair>& connections);

private:
    HBOBoard* m_board;
    bool m_tcl_loaded;
    HBOPartCReposMgr* m_repos_mgr;
};

#endif

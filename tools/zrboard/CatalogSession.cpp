#include "CatalogSession.h"

#include <iostream>
#include <memory>
#include <set>

#include <boost/filesystem.hpp>

#include "BoardPaths.h"
#include "Command.h"
#include "HBOBoard.h"
#include "HBOBoardCReposMgr.h"
#include "HBOBoardUtils.h"
#include "HBOCase.h"
#include "HBOParser.h"
#include "HPAParamMgr.h"
#include "HUTEnv.h"
#include "MessageCollector.h"
#include "Version.h"

namespace fs = boost::filesystem;

namespace zrboard {

namespace {

bool isBoardFile(const fs::path& p) { return HBOCase::lower(p.filename().string()) == "board.xml"; }

std::string canonicalOrSame(const fs::path& p) {
    boost::system::error_code ec;
    fs::path c = fs::canonical(p, ec);
    return ec ? p.generic_string() : c.generic_string();
}

// Board files below `root`, as the catalogue's walk finds them, by the paths
// the walk reached them under.
void collectBoardFiles(const fs::path& root, std::vector<std::string>& out) {
    boost::system::error_code ec;
    if (!fs::is_directory(root, ec))
        return;
    fs::recursive_directory_iterator it(root, fs::directory_options::follow_directory_symlink |
                                                  fs::directory_options::skip_permission_denied, ec);
    for (; !ec && it != fs::recursive_directory_iterator(); it.increment(ec)) {
        // Deep enough for any repository layout, and no endless descent through links.
        if (it.depth() > 32)
            it.disable_recursion_pending();
        if (fs::is_regular_file(it->status()) && isBoardFile(it->path()))
            out.push_back(it->path().generic_string());
    }
}

// Reads a board file as the catalogue does, or validating; its messages instead of printing them.
bool readQuietly(const std::string& file, bool validate, std::vector<ComMsgMgrInstance>& messages) {
    HPAParamMgr* params = HPAParamMgr::getParamMgr();
    const std::string validated = params->getValueAsString("board.validateXML");
    params->setValue("board.validateXML", validate ? "true" : validated);
    const bool printing = ComMsgMgr::printToStderr();
    ComMsgMgr::setPrintToStderr(false);
    MessageCollector collector;
    std::unique_ptr<HBOBoard> board(new HBOBoard());
    HBOParser parser;
    const bool ok = parser.parseFile(file, board.get());
    ComMsgMgr::setPrintToStderr(printing);
    params->setValue("board.validateXML", validated);
    messages = collector.messages();
    return ok;
}

}  // namespace

CatalogSession::CatalogSession(const std::vector<std::string>& repos) {
    if (!repos.empty())
        HPAParamMgr::getParamMgr()->setValue("board.repoPaths", HBOBoardUtils::asTclSpaceSeparatedStr(repos));

    const std::string sep = HBOBoardUtils::getDirSeparator();
    const std::vector<std::string> dataDirs = HUTEnv::getQDEDataDirList();
    for (const std::string& dir : dataDirs)
        m_roots.push_back(dir + sep + "boards" + sep + "board_parts");
    if (HBOBoardUtils::isV2SchemaEnabled()) {
        for (const std::string& dir : dataDirs) {
            m_roots.push_back(dir + sep + "boards" + sep + "board_files");
            m_roots.push_back(dir + sep + "zarn" + sep + "boards");
        }
    }
    std::string userRepos;
    HBOBoardUtils::getUserRepoPathFromParam(userRepos);
    for (const std::string& repo : HBOBoardUtils::parseTclList(userRepos))
        m_roots.push_back(repo);

    // The readers' messages belong to the boards that failed, which are
    // reported apart; what concerns a repository as a whole is kept.
    const bool printing = ComMsgMgr::printToStderr();
    ComMsgMgr::setPrintToStderr(false);
    {
        MessageCollector collector;
        m_mgr = HBOBoardCReposMgr::getGlobal();
        for (const ComMsgMgrInstance& m : collector.messages())
            if (m.getId() == "49-91" || m.getId() == "49-44" || m.getId() == "49-73")
                m_notices.push_back(m);
    }
    ComMsgMgr::setPrintToStderr(printing);
}

// The catalogue stays until the process ends: deleting thousands of boards
// one by one only to exit costs the tool a good part of its run.
CatalogSession::~CatalogSession() = default;

HBOBoard* CatalogSession::find(const std::string& name) const {
    if (HBOBoard* board = m_mgr->getInfoForBoard(name))
        return board;
    const std::string successor = m_mgr->getBoardPartNameForBoard(name);
    return successor.empty() ? nullptr : m_mgr->getInfoForBoard(successor);
}

HBOBoard* CatalogSession::findFile(const std::string& path) const {
    const std::string file = canonicalOrSame(boardFileOf(path));
    std::vector<HBOBoard*> boards;
    m_mgr->getAllBoards(boards);
    for (HBOBoard* board : boards)
        if (board->getBoardFile() == file)
            return board;
    return nullptr;
}

const std::vector<FailedBoard>& CatalogSession::failedBoards() {
    if (!m_failedKnown)
        findFailedBoards();
    return m_failed;
}

void CatalogSession::findFailedBoards() {
    m_failedKnown = true;
    std::set<std::string> filed;
    std::vector<HBOBoard*> boards;
    m_mgr->getAllStaticBoardParts(boards);
    m_mgr->getAllBoards(boards);
    for (const HBOBoard* board : boards)
        filed.insert(board->getBoardFile());

    std::vector<std::string> files;
    for (const std::string& root : m_roots)
        collectBoardFiles(root, files);
    std::set<std::string> seen;
    for (const std::string& found : files) {
        // Most files are filed under the very path the walk found: those need
        // no resolving. Not filed: either it did not read, or a board of its
        // name came first.
        if (filed.count(found))
            continue;
        const std::string file = canonicalOrSame(found);
        if (filed.count(file) || !seen.insert(file).second)
            continue;
        std::vector<ComMsgMgrInstance> messages;
        if (readQuietly(file, false, messages))
            continue;
        // Again with validation, which collects every fault of the file.
        readQuietly(file, true, messages);
        FailedBoard failed{file, {}};
        for (const ComMsgMgrInstance& m : messages)
            if (m.getMask() != ComMsgMgr::MSG_INFO && m.getMask() != ComMsgMgr::MSG_NOTE)
                failed.messages.push_back(m);
        m_failed.push_back(failed);
    }
}

bool CatalogSession::hadProblems() { return !m_notices.empty() || !failedBoards().empty(); }

void CatalogSession::reportProblems(std::ostream& err, const std::string& command) {
    for (const ComMsgMgrInstance& m : m_notices)
        err << m.getLine() << "\n";
    for (const FailedBoard& f : failedBoards()) {
        err << kToolName << ": " << command << ": cannot read the board file '" << f.path << "'\n";
        for (const ComMsgMgrInstance& m : f.messages)
            err << "  " << m.getLine() << "\n";
        err << "  (run '" << kToolName << " check " << f.path << "' for the details)\n";
    }
}

int parseCatalogOptions(const Command& self, const std::vector<std::string>& args, CatalogOptions& out) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        std::string error;
        if (a == "--latest")
            out.latest = true;
        else if (a == "--json")
            out.json = true;
        else if (a == "--repo" || a.compare(0, 7, "--repo=") == 0) {
            if (!takeRepoOption(args, i, out.repos, error))
                return usageError(error, &self);
        } else if (!a.empty() && a[0] == '-')
            return usageError("unknown option '" + a + "'", &self);
        else
            out.operands.push_back(a);
    }
    return kExitOk;
}

bool takeRepoOption(const std::vector<std::string>& args, std::size_t& i, std::vector<std::string>& repos,
                    std::string& error) {
    const std::string& a = args[i];
    if (a.compare(0, 7, "--repo=") == 0) {
        repos.push_back(a.substr(7));
    } else if (i + 1 < args.size()) {
        repos.push_back(args[++i]);
    } else {
        error = "option --repo needs a directory";
        return false;
    }
    if (repos.back().empty()) {
        error = "option --repo needs a directory, got an empty one";
        return false;
    }
    return true;
}

}  // namespace zrboard

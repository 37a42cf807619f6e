// Times what a project does with integrated boards:
//   - building an integrated board of the reference board and two FMC cards
//     through the session (target: under 10 ms);
//   - re-binding the project's integrated board after its repository paths
//     change, with 1,000 generated boards in the project's repositories.
//
// The repositories are written at start-up into a temporary directory: a
// second FMC connector is added to a copy of the reference board so that two
// FMC daughters fit, and gen_board.py writes the 1,000 boards. The integrated
// board is built once before any timing; a build that fails, or lacks the
// daughters' parts, makes the program fail.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/algorithm/string/replace.hpp>
#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardCDataManager.h"
#include "HBOBoardComponent.h"
#include "HEXAll.h"
#include "HBOPartCReposMgr.h"
#include "HPAParamMgr.h"
#include "HSTVector.h"
#include "synthetic_board.h"

namespace fs = boost::filesystem;

namespace {

typedef std::vector<HBOBoardCDataManager::ConnectionPair> Pairs;

const char* const kBase = "korvelhw:tarnwick2:1.2";
const Pairs kDaughters{{"fmc_lpc", "korvelhw:wrenmoor:fmc_conn:1.0"}, {"fmc_lpc2", "korvelhw:fennock:fmc_conn:1.0"}};
// 1,000 unless ZR_BENCH_SESSION_BOARDS says otherwise (the smoke run of the tests takes fewer).
int generatedBoards() {
    const char* env = std::getenv("ZR_BENCH_SESSION_BOARDS");
    const int n = env ? std::atoi(env) : 0;
    return n > 0 ? n : 1000;
}

std::string readFile(const fs::path& p) {
    std::ifstream in(p.string());
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

// The text from the line holding `start` to the end of the line holding `end` after it.
std::string block(const std::string& text, const std::string& start, const std::string& end) {
    const std::string::size_type a = text.rfind('\n', text.find(start)) + 1;
    const std::string::size_type b = text.find('\n', text.find(end, a)) + 1;
    if (a == 0 || b == 0 || b <= a)
        throw std::runtime_error("the reference board has no '" + start + "'");
    return text.substr(a, b - a);
}

// The repositories of the benchmark, removed at the end.
class Repositories {
public:
    Repositories() : m_root(bench_support::makeTempDir()) {
        writeTwoFmcBase();
        bench_support::runGenerator({"python3", std::string(ZR_BENCH_SOURCE_DIR) + "/bench/gen_board.py", "--repo",
                                     "--boards", std::to_string(generatedBoards()), "--out", generated(), "--pins",
                                     "64", "--interfaces", "8", "--connections", "2", "--nets", "8", "--dtd-dir",
                                     std::string(ZR_BENCH_SOURCE_DIR) + "/data/boards/board_schemas/current"});
        fs::create_directories(empty());
    }
    ~Repositories() {
        boost::system::error_code ec;
        fs::remove_all(m_root, ec);
    }
    std::string base() const { return m_root + "/base"; }
    std::string generated() const { return m_root + "/generated"; }
    std::string empty() const { return m_root + "/empty"; }

private:
    // The reference board with a second FMC connector wired like the first.
    void writeTwoFmcBase() {
        const fs::path from = fs::path(ZR_BENCH_SOURCE_DIR) / "data/boards/board_files/tarnwick/1.2";
        const fs::path to = fs::path(base()) / "tarnwick2";
        fs::create_directories(to);
        for (fs::directory_iterator it(from), end; it != end; ++it)
            if (fs::is_regular_file(it->status()))
                fs::copy_file(it->path(), to / it->path().filename(), fs::copy_option::overwrite_if_exists);
        std::string xml = readFile(from / "board.xml");
        boost::algorithm::replace_first(xml, "../../../board_schemas/",
                                        std::string(ZR_BENCH_SOURCE_DIR) + "/data/boards/board_schemas/");
        boost::algorithm::replace_first(xml, "name=\"tarnwick\"", "name=\"tarnwick2\"");
        const std::string connector = block(xml, "<component name=\"fmc_lpc\"", "</component>");
        const std::string connection = block(xml, "<connection name=\"part0_fmc_lpc\"", "</connection>");
        std::string connector2 = connector;
        std::string connection2 = connection;
        boost::algorithm::replace_first(connector2, "name=\"fmc_lpc\"", "name=\"fmc_lpc2\"");
        boost::algorithm::replace_all(connection2, "fmc_lpc", "fmc_lpc2");
        boost::algorithm::replace_first(xml, connector, connector + connector2);
        boost::algorithm::replace_first(xml, connection, connection + connection2);
        std::ofstream(to.string() + "/board.xml") << xml;
    }
    std::string m_root;
};

Repositories* g_repos = nullptr;

// The integrated board, owned by the caller; throws what the session throws.
HBOBoard* buildRig(HBOBoardCDataManager& session) { return session.createIntegratdBoard(kBase, kDaughters, "rig"); }

void checkRig(const HBOBoard& rig) {
    for (const char* part : {"fmc_lpc_fmc_conn", "fmc_lpc2_fmc_conn", "fmc_lpc2_dled_4bits"})
        if (!rig.findBoardComponent(part))
            throw std::runtime_error(std::string("the integrated board lacks ") + part);
    int generated = 0;
    for (const HBOBoardBus* bus : rig.getBuses())
        generated += bus && (bus->getName() == "fmc_lpc_fmc_lpc_fmc_conn" || bus->getName() == "fmc_lpc2_fmc_lpc2_fmc_conn");
    if (generated != 2)
        throw std::runtime_error("the integrated board lacks its generated connections");
}

void BM_CreateIntegratedBoard(benchmark::State& state) {
    HBOBoardCDataManager session;
    bool changed = false;
    session.setBoardPartRepoPaths(HSTVector<std::string>{g_repos->base()}, changed);
    for (auto _ : state) {
        std::unique_ptr<HBOBoard> rig(buildRig(session));
        benchmark::DoNotOptimize(rig.get());
    }
}
BENCHMARK(BM_CreateIntegratedBoard)->Unit(benchmark::kMillisecond);

// One re-binding: the paths change (the generated repository moves from last
// to first and back), the project's boards are read anew and the integrated
// board is rebuilt or let go. Setting the board up again is not timed.
void BM_RebindIntegratedBoard(benchmark::State& state) {
    HBOBoardCDataManager session;
    const HSTVector<std::string> lists[2] = {{g_repos->base(), g_repos->generated()},
                                             {g_repos->generated(), g_repos->base()}};
    bool changed = false;
    session.setBoardPartRepoPaths(lists[0], changed);
    int turn = 1;
    for (auto _ : state) {
        state.PauseTiming();
        HBOBoard* rig = buildRig(session);
        session.registerUserBoard(rig);  // the project's catalogue owns it from here
        session.setBoard(rig, "", false, false);
        state.ResumeTiming();
        session.setBoardPartRepoPaths(lists[turn], changed);
        turn = 1 - turn;
    }
    HSTVector<HBOBoard*> all;
    session.getBoardPartReposMgr()->getAllBoardParts(all);
    state.counters["boards"] = static_cast<double>(all.size());
}
BENCHMARK(BM_RebindIntegratedBoard)->Unit(benchmark::kMillisecond)->Iterations(5);

// The same change of paths with a plain project board chosen, for comparison:
// what the re-reading of the repositories costs by itself.
void BM_RebindPlainBoard(benchmark::State& state) {
    HBOBoardCDataManager session;
    const HSTVector<std::string> lists[2] = {{g_repos->base(), g_repos->generated()},
                                             {g_repos->generated(), g_repos->base()}};
    bool changed = false;
    session.setBoardPartRepoPaths(lists[0], changed);
    session.setBoard(kBase, "", false, false);
    int turn = 1;
    for (auto _ : state) {
        session.setBoardPartRepoPaths(lists[turn], changed);
        if (!session.getBoardStrategy()) {
            state.SkipWithError("the project lost its board");
            break;
        }
        turn = 1 - turn;
    }
}
BENCHMARK(BM_RebindPlainBoard)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    // Board file checks of the generated boards would flood the output.
    ComMsgMgr::setPrintToStderr(false);
    try {
        Repositories repos;
        g_repos = &repos;
        HBOBoardCDataManager session;
        bool changed = false;
        session.setBoardPartRepoPaths(HSTVector<std::string>{repos.base()}, changed);
        std::unique_ptr<HBOBoard> rig(buildRig(session));
        checkRig(*rig);
        benchmark::RunSpecifiedBenchmarks();
        g_repos = nullptr;
    } catch (const std::exception& e) {
        std::cerr << "bench_session: " << e.what() << "\n";
        return 1;
    }
    benchmark::Shutdown();
    return 0;
}

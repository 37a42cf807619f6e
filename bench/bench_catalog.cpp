// Times the first build of the board catalogue over a large generated
// installation against a bare SAX pass over the same files, times a look-up
// by name, and measures what the held catalogue costs in memory against the
// bytes it read, and how long `zrboard list` takes on that installation.
//
// The installation is generated at start-up into a temporary data directory
// and removed at the end. A catalogue that misses boards fails the program
// before anything is timed.
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/filesystem.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "bare_sax_reader.h"
#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardCReposMgr.h"

namespace fs = boost::filesystem;

namespace {

constexpr double kTargetRatio = 1.0;
constexpr double kTargetMemory = 2.5;

struct Installation {
    std::string dir;
    std::vector<std::string> files;  // every XML file a scan opens
    std::uintmax_t bytes = 0;
    std::size_t boardFiles = 0;
    std::vector<std::string> partNames;  // vendor:board:part0:version of each board
};

const Installation* g_inst = nullptr;

std::string quoted(const std::string& s) {
    std::string q = "'";
    for (char c : s)
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

// Every board of realistic size: 600 FPGA pins, 20 interfaces with presets, an
// FMC and a PMOD connector; every other board in a second version.
bool generate(Installation& inst, int boards) {
    const char* tmp = std::getenv("TMPDIR");
    inst.dir = (fs::path(tmp && *tmp ? tmp : "/tmp") / fs::unique_path("zr_catalog_%%%%%%")).string();
    const std::string command = "python3 " + quoted(std::string(ZR_BENCH_SOURCE_DIR) + "/bench/gen_board.py") +
                                " --repo --boards " + std::to_string(boards) +
                                " --second-version-every 2 --pins 600 --interfaces 20 --connections 1 --nets 68"
                                " --pmods 1 --out " + quoted(inst.dir);
    if (std::system(command.c_str()) != 0)
        return false;
    fs::copy_file(std::string(ZR_BENCH_SOURCE_DIR) + "/data/boards/board_interface_preferences.xml",
                  fs::path(inst.dir) / "boards" / "board_interface_preferences.xml");
    for (fs::recursive_directory_iterator it(fs::path(inst.dir) / "boards" / "board_files"), end; it != end; ++it) {
        if (it->path().extension() != ".xml")
            continue;
        inst.files.push_back(it->path().string());
        inst.bytes += fs::file_size(it->path());
        if (it->path().filename() == "board.xml") {
            ++inst.boardFiles;
            const fs::path versionDir = it->path().parent_path();
            inst.partNames.push_back("korvelhw:" + versionDir.parent_path().filename().string() + ":part0:" +
                                     versionDir.filename().string());
        }
    }
    return inst.boardFiles > 0;
}

void dropCatalogue() {
    while (HBOBoardCReposMgr::peekGlobal())
        HBOBoardCReposMgr::release();
}

std::size_t heapInUse() {
    const struct mallinfo2 mi = mallinfo2();
    return mi.uordblks + mi.hblkhd;
}

// From the first getGlobal to a catalogue ready for look-ups; its deletion is
// not timed.
void BM_CatalogFirstGetGlobal(benchmark::State& state) {
    dropCatalogue();
    for (auto _ : state) {
        HBOBoardCReposMgr* mgr = HBOBoardCReposMgr::getGlobal();
        benchmark::DoNotOptimize(mgr);
        state.PauseTiming();
        dropCatalogue();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * g_inst->bytes));
}
BENCHMARK(BM_CatalogFirstGetGlobal)->Unit(benchmark::kMillisecond)->Iterations(1);

// The floor: the XML parser alone over the same files, with the features the
// board reader's loader uses and nothing done with the events.
void BM_SaxAllFiles(benchmark::State& state) {
    xercesc::DefaultHandler handler;
    std::unique_ptr<xercesc::SAX2XMLReader> reader = makeBareSaxReader(handler);
    for (auto _ : state) {
        for (const std::string& f : g_inst->files) {
            try {
                reader->parse(f.c_str());
            } catch (const xercesc::SAXParseException&) {
                state.SkipWithError("the XML parser failed on a generated file");
                return;
            }
        }
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * g_inst->bytes));
}
BENCHMARK(BM_SaxAllFiles)->Unit(benchmark::kMillisecond)->Iterations(1);

// A look-up by board part name in a catalogue that is ready, names in turn.
void BM_GetInfoForBoard(benchmark::State& state) {
    HBOBoardCReposMgr* mgr = HBOBoardCReposMgr::getGlobal();
    const std::vector<std::string>& names = g_inst->partNames;
    std::size_t i = 0;
    for (auto _ : state) {
        HBOBoard* board = mgr->getInfoForBoard(names[i]);
        if (!board) {
            state.SkipWithError(("no board for " + names[i]).c_str());
            break;
        }
        benchmark::DoNotOptimize(board);
        if (++i == names.size())
            i = 0;
    }
    dropCatalogue();
}
BENCHMARK(BM_GetInfoForBoard)->Unit(benchmark::kNanosecond);

class BestReporter : public benchmark::ConsoleReporter {
public:
    BestReporter() : ConsoleReporter(isatty(STDOUT_FILENO) ? OO_ColorTabular : OO_Tabular) {}
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            m_failed = m_failed || run.error_occurred;
            if (!run.error_occurred && run.run_type == Run::RT_Iteration && run.iterations > 0) {
                auto found = m_cpu.emplace(run.run_name.function_name, run.GetAdjustedCPUTime()).first;
                found->second = std::min(found->second, run.GetAdjustedCPUTime());
                auto wall = m_real.emplace(run.run_name.function_name, run.GetAdjustedRealTime()).first;
                wall->second = std::min(wall->second, run.GetAdjustedRealTime());
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }
    double cpu(const std::string& name) const { return m_cpu.count(name) ? m_cpu.at(name) : 0; }
    double real(const std::string& name) const { return m_real.count(name) ? m_real.at(name) : 0; }
    bool failed() const { return m_failed; }

private:
    std::map<std::string, double> m_cpu, m_real;
    bool m_failed = false;
};

// Builds the catalogue once, checks that every generated board is in it and
// prints the heap it holds. False when boards are missing.
bool buildOnceAndMeasure(const Installation& inst) {
    const std::size_t before = heapInUse();
    HBOBoardCReposMgr* mgr = HBOBoardCReposMgr::getGlobal();
    const std::size_t held = heapInUse();
    std::vector<HBOBoard*> boards;
    mgr->getAllBoards(boards);
    dropCatalogue();
    const std::size_t after = heapInUse();
    if (boards.size() != inst.boardFiles) {
        std::fprintf(stderr, "bench_catalog: the catalogue holds %zu boards, %zu were generated\n", boards.size(),
                     inst.boardFiles);
        return false;
    }
    const double ratio = static_cast<double>(held - before) / static_cast<double>(inst.bytes);
    std::printf("memory: the held catalogue takes %.1f MiB of heap for %.1f MiB of XML read: %.2fx (target at most "
                "%.1fx)%s; %+.1f MiB after it was released\n",
                (held - before) / 1048576.0, inst.bytes / 1048576.0, ratio, kTargetMemory,
                ratio > kTargetMemory ? ": ABOVE TARGET" : "", (static_cast<double>(after) - before) / 1048576.0);
    return true;
}

// Wall time of `zrboard list` on the installation, best of three runs.
void timeListCommand(const Installation& inst) {
    double best = std::numeric_limits<double>::infinity();
    const std::string command = "ZR_DATA_DIRS=" + quoted(inst.dir) + " " + quoted(ZR_ZRBOARD_BIN) + " list >/dev/null";
    for (int run = 0; run < 3; ++run) {
        const auto start = std::chrono::steady_clock::now();
        const int rc = std::system(command.c_str());
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (rc != 0) {
            std::printf("zrboard list: failed (status %d)\n", rc);
            return;
        }
        best = std::min(best, seconds);
    }
    std::printf("zrboard list: %.2f s wall time for %zu boards (best of 3)\n", best, inst.boardFiles);
}

// Three interleaved repetitions unless the command line says otherwise; an
// optional --boards=N (default 1000) sets the size of the installation.
std::vector<char*> defaultsAndBoards(int argc, char** argv, int& boards) {
    static char repetitions[] = "--benchmark_repetitions=3";
    static char interleaving[] = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> args{argv[0], repetitions, interleaving};
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]).compare(0, 9, "--boards=") == 0)
            boards = std::atoi(argv[i] + 9);
        else
            args.push_back(argv[i]);
    }
    args.push_back(nullptr);
    return args;
}

}  // namespace

int main(int argc, char** argv) {
    int boards = 1000;
    std::vector<char*> args = defaultsAndBoards(argc, argv, boards);
    argc = static_cast<int>(args.size()) - 1;
    argv = args.data();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv) || boards < 1)
        return 1;

    Installation inst;
    if (!generate(inst, boards)) {
        std::fprintf(stderr, "bench_catalog: the board generator failed\n");
        return 1;
    }
    setenv("ZR_DATA_DIRS", inst.dir.c_str(), 1);
    // The scan's messages would only slow it down; there should be none.
    ComMsgMgr::setPrintToStderr(false);
    xercesc::XMLPlatformUtils::Initialize();
    std::printf("installation: %zu board files (%d boards, every other in two versions), %zu XML files, %.1f MiB in "
                "%s\n",
                inst.boardFiles, boards, inst.files.size(), inst.bytes / 1048576.0, inst.dir.c_str());
    std::fflush(stdout);
    int status = 1;
    if (buildOnceAndMeasure(inst)) {
        g_inst = &inst;
        BestReporter reporter;
        benchmark::RunSpecifiedBenchmarks(&reporter);
        dropCatalogue();
        const double build = reporter.cpu("BM_CatalogFirstGetGlobal"), sax = reporter.cpu("BM_SaxAllFiles");
        if (build > 0 && sax > 0)
            std::printf("catalogue/SAX ratio: %.2f by CPU time, %.2f by wall time (target at most %.1f)%s\n",
                        build / sax, reporter.real("BM_CatalogFirstGetGlobal") / reporter.real("BM_SaxAllFiles"),
                        kTargetRatio, build / sax > kTargetRatio ? ": ABOVE TARGET" : "");
        const double lookUp = reporter.cpu("BM_GetInfoForBoard");
        if (lookUp > 0)
            std::printf("look-up: getInfoForBoard %.0f ns (target under 1000 ns)%s\n", lookUp,
                        lookUp >= 1000 ? ": ABOVE TARGET" : "");
        timeListCommand(inst);
        status = reporter.failed() ? 1 : 0;
        g_inst = nullptr;
    }
    benchmark::Shutdown();
    xercesc::XMLPlatformUtils::Terminate();
    boost::system::error_code ec;
    fs::remove_all(inst.dir, ec);
    return status;
}

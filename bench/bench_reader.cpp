// Times the board reader on a large synthetic board against a bare SAX pass of
// the XML parser over the same three files, and prints what the reader costs
// on top of parsing (the ratio of the two) and the memory one read takes.
//
// The board is written at start-up into a temporary directory and read once
// before any timing: a reader that fails on it, or loses part of it, makes the
// program fail, so that a benchmark of a broken read is never reported.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <benchmark/benchmark.h>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "bare_sax_reader.h"
#include "HBOBoard.h"
#include "HBOParser.h"
#include "HXMLWInterface.h"
#include "synthetic_board.h"

namespace {

// Set in main before any benchmark runs.
const SyntheticBoard* g_board = nullptr;

// The ratio the reader should stay within: reading a board, model and all,
// no slower than the old XML parser alone could scan it.
constexpr double kTargetRatio = 1.0;

void setBytes(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(g_board->totalBytes()));
}

// The whole read as a caller sees it: front door, schema dispatch, reader,
// checks, and the deletion of the board.
void BM_ReadBoard(benchmark::State& state) {
    const std::string path = g_board->boardFile();
    for (auto _ : state) {
        HBOParser parser;
        HBOBoard* board = new HBOBoard();
        const bool ok = parser.parseFile(path, board);
        delete board;
        if (!ok) {
            state.SkipWithError("the board reader failed on the synthetic board");
            break;
        }
    }
    setBytes(state);
}
BENCHMARK(BM_ReadBoard)->Unit(benchmark::kMillisecond);

// The XML files read into the host's plain trees and dropped: the part of
// BM_ReadBoard that is parsing; the rest is building the model.
void BM_ReadTrees(benchmark::State& state) {
    const std::vector<std::string> files = g_board->files();
    for (auto _ : state) {
        for (const std::string& f : files) {
            if (!HXMLWInterface::readFromFile(f)) {
                state.SkipWithError("the XML tree reader failed on the synthetic board");
                return;
            }
        }
    }
    setBytes(state);
}
BENCHMARK(BM_ReadTrees)->Unit(benchmark::kMillisecond);

// The floor: the XML parser alone, with the features the reader's own loader
// uses (no validation, no namespaces, no external grammar), and nothing done
// with the events. One parser serves every iteration, as in the reader.
void BM_SaxBaseline(benchmark::State& state) {
    const std::vector<std::string> files = g_board->files();
    xercesc::DefaultHandler handler;
    std::unique_ptr<xercesc::SAX2XMLReader> reader = makeBareSaxReader(handler);
    for (auto _ : state) {
        bool failed = false;
        for (const std::string& f : files) {
            try {
                reader->parse(f.c_str());
            } catch (const xercesc::SAXParseException&) {
                failed = true;
            } catch (const xercesc::XMLException&) {
                failed = true;
            }
            if (failed || reader->getErrorCount() != 0) {
                failed = true;
                break;
            }
        }
        if (failed) {
            state.SkipWithError("the XML parser failed on the synthetic board");
            break;
        }
    }
    setBytes(state);
}
BENCHMARK(BM_SaxBaseline)->Unit(benchmark::kMillisecond);

// Console output as usual, and keeps the best time per iteration of each
// benchmark: on a shared machine the fastest run is the one least disturbed.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    struct Best {
        double cpu = std::numeric_limits<double>::infinity();
        double real = std::numeric_limits<double>::infinity();
    };

    // Colour only on a terminal, as the library's own console output does.
    RatioReporter() : ConsoleReporter(isatty(STDOUT_FILENO) ? OO_ColorTabular : OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred)
                m_failed = true;
            if (run.error_occurred || run.run_type != Run::RT_Iteration || run.iterations == 0)
                continue;
            Best& b = m_best[run.run_name.function_name];
            b.cpu = std::min(b.cpu, run.GetAdjustedCPUTime());
            b.real = std::min(b.real, run.GetAdjustedRealTime());
        }
        ConsoleReporter::ReportRuns(runs);
    }

    const Best* find(const std::string& name) const {
        auto it = m_best.find(name);
        return it == m_best.end() ? nullptr : &it->second;
    }

    bool anyFailed() const { return m_failed; }

private:
    std::map<std::string, Best> m_best;
    bool m_failed = false;
};

void printRatio(const RatioReporter& reporter) {
    const RatioReporter::Best* read = reporter.find("BM_ReadBoard");
    const RatioReporter::Best* sax = reporter.find("BM_SaxBaseline");
    if (!read || !sax || !(sax->cpu > 0) || !(sax->real > 0)) {
        std::printf("reader/SAX ratio: not available (both BM_ReadBoard and BM_SaxBaseline must run)\n");
        return;
    }
    const double cpu = read->cpu / sax->cpu;
    const double real = read->real / sax->real;
    std::printf("reader/SAX ratio: %.2f by CPU time, %.2f by wall time (target at most %.0f)%s\n", cpu, real,
                kTargetRatio, cpu > kTargetRatio ? ": ABOVE TARGET" : "");
}

long peakRssKiB() {
    struct rusage ru {};
    getrusage(RUSAGE_SELF, &ru);
    return ru.ru_maxrss;  // KiB on this platform
}

long currentRssKiB() {
    std::ifstream statm("/proc/self/statm");
    long size = 0, resident = 0;
    if (!(statm >> size >> resident))
        return -1;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

// Reads the board once, checks that nothing was lost, and prints what the
// read cost in memory. False when the read failed or came back incomplete.
bool readOnceAndMeasure(const SyntheticBoard& synth) {
    const long peakBefore = peakRssKiB();
    const long rssBefore = currentRssKiB();
    const std::size_t heapBefore = mallinfo2().uordblks;
    HBOParser parser;
    HBOBoard* board = new HBOBoard();
    const bool ok = parser.parseFile(synth.boardFile(), board);
    const std::size_t heapHeld = mallinfo2().uordblks - heapBefore;
    const long rssHeld = currentRssKiB();
    const std::string faults = ok ? synth.checkShape(*board) : std::string();
    delete board;
    const long rssAfter = currentRssKiB();
    const long peakAfter = peakRssKiB();

    if (!ok) {
        std::fprintf(stderr, "bench_reader: the board reader failed on %s\n", synth.boardFile().c_str());
        return false;
    }
    if (!faults.empty()) {
        std::fprintf(stderr, "bench_reader: the board read from %s is incomplete:\n%s", synth.boardFile().c_str(),
                     faults.c_str());
        return false;
    }
    std::printf("memory: one read raised the peak RSS by %ld KiB (%ld -> %ld KiB); resident growth while the board "
                "was held %+ld KiB, after deleting it %+ld KiB\n",
                peakAfter - peakBefore, peakBefore, peakAfter, rssHeld - rssBefore, rssAfter - rssBefore);
    // The heap that the board holds, parser objects and tables made on first
    // use included (an upper bound), against the bytes of its files.
    std::printf("held: %zu bytes of heap while the board was held, %.2f times its %zu bytes of XML\n", heapHeld,
                static_cast<double>(heapHeld) / static_cast<double>(synth.totalBytes()),
                static_cast<std::size_t>(synth.totalBytes()));
    return true;
}

// Repetitions interleaved at random unless the command line says otherwise: the
// two benchmarks are compared with each other, and on a shared machine a slow
// spell that falls on only one of them would skew the ratio.
std::vector<char*> withDefaultRepetitions(int argc, char** argv) {
    static char repetitions[] = "--benchmark_repetitions=10";
    static char interleaving[] = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> args(argv, argv + argc);
    args.insert(args.begin() + (argc > 0 ? 1 : 0), {repetitions, interleaving});  // later flags win
    args.push_back(nullptr);
    return args;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<char*> args = withDefaultRepetitions(argc, argv);
    argc = static_cast<int>(args.size()) - 1;
    argv = args.data();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;

    // The host has the XML parser running long before a board is read, so its
    // start-up is kept out of the memory figure.
    xercesc::XMLPlatformUtils::Initialize();
    int status = 0;
    {
        std::unique_ptr<SyntheticBoard> synth;
        try {
            synth.reset(new SyntheticBoard(SyntheticBoardSize()));
        } catch (const std::exception& e) {
            std::fprintf(stderr, "bench_reader: %s\n", e.what());
            status = 1;
        }
        if (synth) {
            const SyntheticBoardSize& s = synth->size();
            std::printf("board: %d pins, %d interfaces, %d connections of %d nets; %.1f KiB of XML in %s\n", s.pins,
                        s.interfaces, s.connections, s.nets, static_cast<double>(synth->totalBytes()) / 1024.0,
                        synth->dir().c_str());
            std::fflush(stdout);
            if (!readOnceAndMeasure(*synth)) {
                status = 1;
            } else {
                g_board = synth.get();
                RatioReporter reporter;
                benchmark::RunSpecifiedBenchmarks(&reporter);
                printRatio(reporter);
                if (reporter.anyFailed())
                    status = 1;
                g_board = nullptr;
            }
        }
    }
    benchmark::Shutdown();
    xercesc::XMLPlatformUtils::Terminate();
    return status;
}

// A synthetic board written by gen_board.py into a temporary directory that
// lives as long as the object, and a check that a board read from it is whole.
#ifndef ZR_BENCH_SYNTHETIC_BOARD_H
#define ZR_BENCH_SYNTHETIC_BOARD_H

#include <cstdint>
#include <string>
#include <vector>

class HBOBoard;

namespace bench_support {
// A new directory under $TMPDIR (or /tmp); throws std::runtime_error on failure.
std::string makeTempDir();
// Runs a program (argv[0] searched on PATH) and waits; throws unless it exits with 0.
void runGenerator(const std::vector<std::string>& args);
}  // namespace bench_support

struct SyntheticBoardSize {
    int pins = 2000;
    int interfaces = 200;
    int connections = 20;
    int nets = 100;
};

class SyntheticBoard {
public:
    // Throws std::runtime_error when the directory cannot be made or the
    // generator fails.
    explicit SyntheticBoard(const SyntheticBoardSize& size);
    ~SyntheticBoard();
    SyntheticBoard(const SyntheticBoard&) = delete;
    SyntheticBoard& operator=(const SyntheticBoard&) = delete;

    const SyntheticBoardSize& size() const { return m_size; }
    const std::string& dir() const { return m_dir; }
    std::string boardFile() const { return file("board.xml"); }
    // board.xml, part0_pins.xml, preset.xml: everything a read of the board opens.
    std::vector<std::string> files() const;
    std::uintmax_t totalBytes() const;

    // What a board read from these files lacks, one line per fault; empty when
    // it has every component, interface, pin, connection and preset written.
    std::string checkShape(const HBOBoard& board) const;

private:
    std::string file(const char* name) const;

    SyntheticBoardSize m_size;
    std::string m_dir;
};

#endif

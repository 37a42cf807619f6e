#include "synthetic_board.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

#include <boost/filesystem.hpp>

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"

namespace fs = boost::filesystem;

namespace bench_support {

std::string makeTempDir() {
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base && *base ? base : "/tmp") + "/zr_bench_XXXXXX";
    std::vector<char> buf(pattern.begin(), pattern.end());
    buf.push_back('\0');
    if (!mkdtemp(buf.data()))
        throw std::runtime_error("cannot create a directory from " + pattern + ": " + std::strerror(errno));
    return buf.data();
}

// Runs the generator without a shell, so that no path needs quoting.
void runGenerator(const std::vector<std::string>& args) {
    std::vector<char*> argv;
    for (const std::string& a : args)
        argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    pid_t pid = fork();
    if (pid < 0)
        throw std::runtime_error(std::string("fork: ") + std::strerror(errno));
    if (pid == 0) {
        execvp(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    while (waitpid(pid, &status, 0) < 0)
        if (errno != EINTR)
            throw std::runtime_error(std::string("waitpid: ") + std::strerror(errno));
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::ostringstream os;
        os << "the board generator failed (";
        if (WIFEXITED(status))
            os << "exit status " << WEXITSTATUS(status) << (WEXITSTATUS(status) == 127 ? ", not started" : "");
        else
            os << "killed by signal " << WTERMSIG(status);
        os << "): " << args[0] << " " << args[1];
        throw std::runtime_error(os.str());
    }
}

}  // namespace bench_support

using bench_support::makeTempDir;
using bench_support::runGenerator;

namespace {

void expectCount(std::ostringstream& faults, const char* what, std::size_t got, std::size_t want) {
    if (got != want)
        faults << what << ": " << got << " read, " << want << " written\n";
}

}  // namespace

SyntheticBoard::SyntheticBoard(const SyntheticBoardSize& size) : m_size(size), m_dir(makeTempDir()) {
    try {
        runGenerator({"python3", std::string(ZR_BENCH_SOURCE_DIR) + "/bench/gen_board.py", "--out", m_dir,
                      "--pins", std::to_string(size.pins), "--interfaces", std::to_string(size.interfaces),
                      "--connections", std::to_string(size.connections), "--nets", std::to_string(size.nets)});
        for (const std::string& f : files())
            if (!fs::is_regular_file(f))
                throw std::runtime_error("the board generator wrote no " + f);
    } catch (...) {
        boost::system::error_code ec;
        fs::remove_all(m_dir, ec);
        throw;
    }
}

SyntheticBoard::~SyntheticBoard() {
    boost::system::error_code ec;
    fs::remove_all(m_dir, ec);
}

std::string SyntheticBoard::file(const char* name) const { return (fs::path(m_dir) / name).string(); }

std::vector<std::string> SyntheticBoard::files() const {
    return {file("board.xml"), file("part0_pins.xml"), file("preset.xml")};
}

std::uintmax_t SyntheticBoard::totalBytes() const {
    std::uintmax_t total = 0;
    for (const std::string& f : files()) {
        boost::system::error_code ec;
        std::uintmax_t n = fs::file_size(f, ec);
        if (!ec)
            total += n;
    }
    return total;
}

std::string SyntheticBoard::checkShape(const HBOBoard& board) const {
    std::ostringstream faults;
    // part0, one chip per interface, one connector per connection.
    expectCount(faults, "components", board.getBoardComponents().size(),
                1 + static_cast<std::size_t>(m_size.interfaces + m_size.connections));
    const HBOBoardComponent* fpga = board.getActivePart();
    if (!fpga) {
        faults << "no FPGA component\n";
    } else {
        expectCount(faults, "FPGA pins", fpga->getPins().size(), static_cast<std::size_t>(m_size.pins));
        std::vector<HBOBusIf*> ifs;
        fpga->getInterfacesVec(ifs);
        expectCount(faults, "FPGA interfaces", ifs.size(), static_cast<std::size_t>(m_size.interfaces));
    }
    expectCount(faults, "connections", board.getBuses().size(), static_cast<std::size_t>(m_size.connections));
    expectCount(faults, "IP presets", board.getIpPresets().size(), static_cast<std::size_t>(m_size.interfaces));
    for (int k = 0; k < m_size.connections && k < 100; ++k) {
        char name[16];
        std::snprintf(name, sizeof name, "conn_%02d", k);
        auto it = board.getBoardComponents().find(name);
        if (it == board.getBoardComponents().end() || !it->second) {
            faults << "component " << name << " missing\n";
            continue;
        }
        expectCount(faults, name, it->second->getPins().size(), static_cast<std::size_t>(m_size.nets));
    }
    return faults.str();
}

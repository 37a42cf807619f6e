// The entry code of the fuzz targets, shared by the libFuzzer programs (built
// with clang) and by the replay of their regression inputs in the ordinary
// test suite. Every entry takes one input of any bytes, runs one reader on it
// and returns 0; a fault shows as a crash or a sanitizer report.
#ifndef ZR_FUZZ_ENTRIES_H
#define ZR_FUZZ_ENTRIES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zrfuzz {

// One input as a board directory. The first byte holds the switches; the rest
// is board.xml up to the first line "%%% NAME", which begins the file NAME,
// and so on. NAME is 1 to 64 of [A-Za-z0-9._-], not "." or ".."; a section
// with any other name is dropped, and a later section of a name replaces an
// earlier one.
struct Bundle {
    enum Switch : unsigned {
        kValidate = 1,       // board.validateXML
        kPackBoard = 2,      // board.xml written packed
        kPackSideFiles = 4,  // every other file written packed
        kStrict = 8,         // board.enable2020Checks
    };
    struct File {
        std::string name;
        std::string text;
    };
    unsigned switches = 0;
    std::vector<File> files;  // board.xml first, always there
    bool has(Switch s) const { return (switches & s) != 0; }
};
Bundle splitBundle(const std::uint8_t* data, std::size_t size);
// The inverse of splitBundle, for corpora and tests.
std::string joinBundle(const Bundle& bundle);
// The marker that begins a file of a bundle.
extern const char* const kFileMarker;

using Entry = int (*)(const std::uint8_t* data, std::size_t size);
struct Target {
    const char* name;
    Entry run;
};
// Every fuzz target, by the name its program and its regression directory carry.
const std::vector<Target>& targets();
Entry findTarget(const std::string& name);

// Quiets the library's messages and prints, and points it at our data
// directory unless ZR_DATA_DIRS says otherwise. Each entry calls it.
void setUp();

}  // namespace zrfuzz

#endif

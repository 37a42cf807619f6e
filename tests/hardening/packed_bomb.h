// A packed file that is small on disk and unpacks just past the input bound.
#ifndef ZR_TEST_PACKED_BOMB_H
#define ZR_TEST_PACKED_BOMB_H

#include <string>

#include <boost/filesystem.hpp>
#include <boost/iostreams/device/file.hpp>
#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

#include "HUTFile.h"

// Writes `head` and then blanks past HUTFileUtils::kMaxInputBytes, packed, to `file`.
inline void writePackedBomb(const std::string& file, const std::string& head) {
    namespace io = boost::iostreams;
    boost::filesystem::create_directories(boost::filesystem::path(file).parent_path());
    io::filtering_ostream out;
    out.push(io::gzip_compressor());
    out.push(io::file_sink(file, std::ios::binary));
    out << head;
    const std::string block(1 << 20, ' ');
    for (std::size_t i = 0; i <= HUTFileUtils::kMaxInputBytes >> 20; ++i)
        out << block;
}

#endif

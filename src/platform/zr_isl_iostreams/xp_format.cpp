#include "xp_format.h"

#include <cstdio>

#include <sys/stat.h>

#include <boost/iostreams/device/file.hpp>
#include <boost/iostreams/filter/gzip.hpp>

namespace isl {
namespace iostreams {
namespace xp {

// Asked of every board file read: two bytes, without a stream's buffer.
bool is_xp_format(const std::string& path) {
    // Only a regular file is opened: a named pipe would block here.
    struct stat st;
    if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode))
        return false;
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f)
        return false;
    char magic[2] = {0, 0};
    const std::size_t n = std::fread(magic, 1, 2, f);
    std::fclose(f);
    return is_xp_format(magic, n);
}

bool is_xp_format(const char* data, std::size_t size) {
    return size >= 2 && static_cast<unsigned char>(data[0]) == 0x1f && static_cast<unsigned char>(data[1]) == 0x8b;
}

}  // namespace xp

void xp_autodetect::operator()(const std::string& path,
                               boost::iostreams::filtering_stream<boost::iostreams::input>& in) const {
    in.push(boost::iostreams::gzip_decompressor());
    boost::iostreams::file_source file(path, std::ios::in | std::ios::binary);
    bool opened = file.is_open();
    // The chain is completed either way, so that the stream stays usable; the
    // failed state is what tells the caller that the file could not be read.
    in.push(file);
    if (!opened)
        in.setstate(std::ios::failbit);
}

}  // namespace iostreams
}  // namespace isl

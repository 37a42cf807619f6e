// Packed board files: our packed form is gzip.
#ifndef ZR_ISL_IOSTREAMS_XP_FORMAT_H
#define ZR_ISL_IOSTREAMS_XP_FORMAT_H

#include <cstddef>
#include <string>

#include <boost/iostreams/filtering_stream.hpp>

namespace isl {
namespace iostreams {
namespace xp {
// True for a readable file that begins with the gzip magic bytes.
bool is_xp_format(const std::string& path);
// True for text that begins with the gzip magic bytes.
bool is_xp_format(const char* data, std::size_t size);
}  // namespace xp

struct xp_autodetect {
    // Pushes the gzip decompressor and the file itself, so that the stream reads
    // the unpacked text; a file that cannot be opened leaves the stream failed.
    void operator()(const std::string& path, boost::iostreams::filtering_stream<boost::iostreams::input>& in) const;
};
}  // namespace iostreams
}  // namespace isl

#endif

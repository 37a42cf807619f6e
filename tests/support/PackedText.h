// `text` packed as the readers' packed board files are (gzip).
#ifndef ZR_TEST_PACKEDTEXT_H
#define ZR_TEST_PACKEDTEXT_H

#include <sstream>
#include <string>

#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

inline std::string packed(const std::string& text) {
    std::ostringstream out;
    boost::iostreams::filtering_ostream gz;
    gz.push(boost::iostreams::gzip_compressor());
    gz.push(out);
    gz << text;
    gz.reset();
    return out.str();
}

#endif

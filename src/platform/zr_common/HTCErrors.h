// Errors of the scripting layer.
#ifndef ZR_COMMON_HTCERRORS_H
#define ZR_COMMON_HTCERRORS_H

#include "HEXAll.h"

namespace HTCErrors {

class error : public HEXError {
public:
    explicit error(const std::string& text) : HEXError(text) {}
};

class index_out_of_range : public error {
public:
    explicit index_out_of_range(int index) : error("index is out of range"), m_index(index) {}
    int getIndex() const { return m_index; }

private:
    int m_index;
};

class type_error : public error {
public:
    explicit type_error(const std::string& text) : error(text) {}
};

class append_typed_collection : public type_error {
public:
    explicit append_typed_collection(const std::string& text) : type_error(text) {}
};

inline error not_implemented() { return error("not implemented"); }

}  // namespace HTCErrors

#endif

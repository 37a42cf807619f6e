// The host's exception tree. HEXAll carries a built message.
#ifndef ZR_COMMON_HEXALL_H
#define ZR_COMMON_HEXALL_H

#include <exception>
#include <string>

#include "ComMsgMgr.h"

class HEXAll : public std::exception {
public:
    explicit HEXAll(const ComMsgMgrInstance& msg);
    // A message of our own, without catalogue id, at MSG_ERROR.
    explicit HEXAll(const std::string& text);
    ~HEXAll() override;

    const char* what() const noexcept override { return m_what.c_str(); }
    const ComMsgMgrInstance& getMsg() const { return m_msg; }
    // Sends the carried message.
    void print() const;

private:
    ComMsgMgrInstance m_msg;
    std::string m_what;
};

class HEXError : public HEXAll {
public:
    using HEXAll::HEXAll;
};

class HEXFatal : public HEXAll {
public:
    using HEXAll::HEXAll;
};

class HEXInternalException : public HEXFatal {
public:
    using HEXFatal::HEXFatal;
};

class HEXAlgException : public HEXError {
public:
    using HEXError::HEXError;
};

#endif

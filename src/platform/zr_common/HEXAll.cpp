#include "HEXAll.h"

HEXAll::HEXAll(const ComMsgMgrInstance& msg) : m_msg(msg), m_what(msg.getLine()) {}

// Our own text travels as the single argument of an id-less format, so that a
// percent sign in it is never taken for a placeholder.
HEXAll::HEXAll(const std::string& text)
    : m_msg(1, "", 0, "common", ComMsgMgr::MSG_ERROR, "%s", {text}), m_what(text) {}

HEXAll::~HEXAll() = default;

void HEXAll::print() const { ComMsgMgr::sendMessage(m_msg); }

// A built message that has not been sent: id, severity, scope and argument texts.
#ifndef ZR_COMMON_COMMSGMGRINSTANCE_H
#define ZR_COMMON_COMMSGMGRINSTANCE_H

#include <string>
#include <vector>

#include "ComMsgMgr.h"
#include "ComMsgPosition.h"

class ComMsgMgrInstance {
public:
    struct createInstance {
        template <class... A>
        static ComMsgMgrInstance eval(int argc, const char* file, int line, const char* scope,
                                      ComMsgMgr::MsgMask mask, const char* format, const A&... args) {
            return ComMsgMgrInstance(argc, file, line, scope, mask, format,
                                     std::vector<std::string>{zr_msg_detail::toArg(args)...});
        }
    };

    ComMsgMgrInstance();
    ComMsgMgrInstance(int argc, const char* file, int line, const char* scope, ComMsgMgr::MsgMask mask,
                      const char* format, std::vector<std::string> args);

    // "49-69" for "@49-69@%s%s"; empty for a debug line.
    const std::string& getId() const { return m_id; }
    const std::string& getFormat() const { return m_format; }
    const std::string& getScope() const { return m_scope; }
    const std::string& getChannel() const { return m_channel; }
    void setChannel(const std::string& c) { m_channel = c; }
    ComMsgMgr::MsgMask getMask() const { return m_mask; }
    const std::vector<std::string>& getArgs() const { return m_args; }
    int getArgCount() const { return m_argc; }
    const std::string& getSourceFile() const { return m_file; }
    int getSourceLine() const { return m_line; }

    // The English text: the catalogue's text with the arguments put in.
    std::string getText() const;
    // "SEVERITY: [scope id] text", as printed on standard error.
    std::string getLine() const;

    // Where in an input file the message arose: the position scope current
    // when the message was built, unless set otherwise. Not part of the text.
    const ComMsgPosition& getPosition() const { return m_position; }
    void setPosition(const ComMsgPosition& position) { m_position = position; }
    // More words beside the message, such as the XML parser's own text for a
    // file that it rejected; empty for most messages. Not part of the text.
    const std::string& getDetail() const { return m_detail; }
    void setDetail(const std::string& detail) { m_detail = detail; }

private:
    std::string m_id;
    std::string m_format;
    std::string m_scope;
    std::string m_channel;
    std::string m_file;
    int m_line = 0;
    int m_argc = 0;
    ComMsgMgr::MsgMask m_mask = ComMsgMgr::MSG_INFO;
    std::vector<std::string> m_args;
    ComMsgPosition m_position;
    std::string m_detail;
};

template <class... A>
void ComMsgMgr::sendMsg::eval(int argc, const char* file, int line, const char* scope, MsgMask mask,
                              const char* format, const A&... args) {
    sendMessage(ComMsgMgrInstance(argc, file, line, scope, mask, format,
                                  std::vector<std::string>{zr_msg_detail::toArg(args)...}));
}

template <class... A>
void ComMsgMgr::sendScopedMsg::eval(int argc, const char* file, int line, const char* scope,
                                    const char* channel, MsgMask mask, const char* format,
                                    const A&... args) {
    if (!hasScope(channel))
        return;
    ComMsgMgrInstance msg(argc, file, line, scope, mask, format,
                          std::vector<std::string>{zr_msg_detail::toArg(args)...});
    msg.setChannel(channel);
    sendMessage(msg);
}

#endif

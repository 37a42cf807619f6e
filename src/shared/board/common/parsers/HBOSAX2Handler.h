// Error collector of the validating read: grammar errors become numbered
// warnings that are kept, not sent, so that the whole file is checked before
// anything is reported.
#ifndef HBOSAX2HANDLER_H
#define HBOSAX2HANDLER_H

#include <string>
#include <vector>

#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>

#include "ComMsgMgrInstance.h"

class HBOSAX2Handler : public xercesc::DefaultHandler {
public:
    // `lineShift`: the document read is an override file that carries one
    // extra line on top, so reported lines go down by one.
    HBOSAX2Handler(const std::string& file, bool lineShift);
    ~HBOSAX2Handler() override;

    void error(const xercesc::SAXParseException& e) override;
    void fatalError(const xercesc::SAXParseException& e) override;

    // Sends every collected message in the order stored; the count of them.
    int sendMessages() const;
    const std::vector<ComMsgMgrInstance>& getMessages() const { return m_messages; }
    int adjustLine(int line) const;

private:
    void store(const char* format, const xercesc::SAXParseException& e);

    std::string m_file;
    bool m_lineShift;
    std::vector<ComMsgMgrInstance> m_messages;
};

#endif

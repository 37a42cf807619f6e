// The lines that the tool prints for one delivered message.
#ifndef ZRBOARD_MESSAGEFORMAT_H
#define ZRBOARD_MESSAGEFORMAT_H

#include <string>

#include "ComMsgMgrInstance.h"

namespace zrboard {

// "FILE:LINE:COLUMN: severity: [id] text" for a message with a position (the
// column left out when unknown), which editors read to jump to the fault; the
// plain form "SEVERITY: [scope id] text" for the rest. A detail (the XML
// parser's own words) follows as a note line at the same place. Every line
// ends with a line feed.
std::string editorLines(const ComMsgMgrInstance& msg);

// The plain form alone, as the library prints it on standard error.
std::string plainLines(const ComMsgMgrInstance& msg);

}  // namespace zrboard

#endif

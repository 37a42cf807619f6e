// Reads XML into an HXMLWElement tree. Failure: an empty pointer.
#ifndef ZR_COMMON_HXMLWINTERFACE_H
#define ZR_COMMON_HXMLWINTERFACE_H

#include <memory>
#include <string>

#include "HXMLWElement.h"

class HXMLWInterface {
public:
    static std::shared_ptr<HXMLWElement> readFromFile(const std::string& path);
    static std::shared_ptr<HXMLWElement> readFromBuffer(const std::string& text);
    // Parser text of the last failure on this thread, for diagnostics.
    static const std::string& lastError();
};

#endif

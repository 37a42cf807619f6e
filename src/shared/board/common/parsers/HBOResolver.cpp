#include "HBOResolver.h"

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/XMLString.hpp>

HBOResolver::HBOResolver(const std::string& path) : m_path(path) {}

HBOResolver::~HBOResolver() = default;

xercesc::InputSource* HBOResolver::resolveEntity(const XMLCh* const, const XMLCh* const) {
    m_asked = true;
    if (m_path.empty()) {
        static const XMLByte nothing[] = {0};
        return new xercesc::MemBufInputSource(nothing, 0, "");
    }
    XMLCh* path = nullptr;
    try {
        path = xercesc::XMLString::transcode(m_path.c_str());
        xercesc::InputSource* source = new xercesc::LocalFileInputSource(path);
        xercesc::XMLString::release(&path);
        return source;
    } catch (...) {
        // A grammar that cannot be opened leaves the parser to report the
        // missing external subset itself.
        if (path)
            xercesc::XMLString::release(&path);
        return nullptr;
    }
}

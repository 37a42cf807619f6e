// Reads XML into an HXMLWElement tree. Failure: an empty pointer.
#ifndef ZR_COMMON_HXMLWINTERFACE_H
#define ZR_COMMON_HXMLWINTERFACE_H

#include <cstddef>
#include <memory>
#include <string>

#include "HXMLWElement.h"

// The bounds that every XML parse of the library keeps, whichever parser runs
// it: a hostile document is refused before it can take much time or memory.
struct HXMLWLimits {
    static constexpr int kMaxDepth = 128;
    static constexpr unsigned kMaxEntityExpansions = 10000;
    // Expanded text (character data and attribute values) may reach this many
    // times the document's size, but never less than the floor.
    static constexpr std::size_t kExpansionFactor = 10;
    static constexpr std::size_t kExpansionFloor = 4u * 1024 * 1024;
    static std::size_t maxExpandedBytes(std::size_t inputBytes) {
        return inputBytes > kExpansionFloor / kExpansionFactor ? inputBytes * kExpansionFactor : kExpansionFloor;
    }
    // The names of the bounds, as the readers report them.
    static constexpr const char* kDepthBound = "element nesting depth";
    static constexpr const char* kExpansionCountBound = "entity expansion count";
    static constexpr const char* kExpansionSizeBound = "expanded text size";
};

class HXMLWInterface {
public:
    static std::shared_ptr<HXMLWElement> readFromFile(const std::string& path);
    static std::shared_ptr<HXMLWElement> readFromBuffer(const std::string& text);
    // The text of the file `path`, already read: faults are told as readFromFile tells them.
    static std::shared_ptr<HXMLWElement> readFromBuffer(const std::string& text, const std::string& path);
    // Parser text of the last failure on this thread, for diagnostics.
    static const std::string& lastError();
    // Where the last failure on this thread was found in its document,
    // 1-based; 0 when it has no place there (a file that was not read).
    static int lastErrorLine();
    static int lastErrorColumn();
    // The bound of HXMLWLimits that the last failed read on this thread broke,
    // or of the input file's kind and size; empty when it broke none.
    static const std::string& lastBound();
};

#endif

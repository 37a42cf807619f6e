// Loads a board file (board.xml, pin file, preset file) as an element tree,
// reading packed files through the stream filter.
#ifndef HBOXMLFILELOADER_H
#define HBOXMLFILELOADER_H

#include <memory>
#include <string>

class HXMLWElement;

namespace HBOXmlFileLoader {
// Throws HEXError "@49-110@%s" when a packed file cannot be opened as a
// stream, and "@49-111@%s" when no root element came out of the XML reader.
std::shared_ptr<HXMLWElement> loadRoot(const std::string& file);

// The text of a packed file, line by line, each line ended by a line feed.
// Throws HEXError "@49-110@%s" when the file cannot be opened as a stream.
std::string readPackedText(const std::string& file);
// While it lives, the next loadRoot of `file` on this thread takes `root`
// instead of reading the file again: the front door reads a board file to
// find its schema and hands the tree to the reader it chooses.
class Handover {
public:
    Handover(const std::string& file, std::shared_ptr<HXMLWElement> root);
    ~Handover();
    Handover(const Handover&) = delete;
    Handover& operator=(const Handover&) = delete;
};

}  // namespace HBOXmlFileLoader

#endif

// Loads a board file (board.xml, pin file, preset file) as an element tree,
// reading packed files through the stream filter.
#ifndef HBOXMLFILELOADER_H
#define HBOXMLFILELOADER_H

#include <memory>
#include <string>

class HXMLWElement;

class HEXError;

namespace HBOXmlFileLoader {
// Throws HEXError "@49-900@%s%s" (file, why) unless `file` is a regular file
// within the input size bound. Every reader asks this before it opens a file.
void admit(const std::string& file);

// admit, with the refusal sent rather than thrown: for readers that go on without the file.
bool admitted(const std::string& file);

// True for the errors of admit and of a broken parse bound, which the readers
// report even where they keep other errors to themselves.
bool isRefusal(const HEXError& e);

// Throws HEXError "@49-900@%s%s" for a file that admit refuses or that
// cannot be read, "@49-901@%s%s" (file, bound) when the document breaks a
// parse bound, and "@49-111@%s" when no root element came out of the XML
// reader (a packed file that does not unpack included).
std::shared_ptr<HXMLWElement> loadRoot(const std::string& file);

// The text of a packed file, line by line, each line ended by a line feed.
// Throws as admit does, "@49-110@%s" when the file cannot be opened as a
// stream, and "@49-900@%s%s" when the unpacked text passes the size bound.
std::string readPackedText(const std::string& file);

// Throws HEXError "@49-900@%s%s" (file, why) for a file that may not be read.
[[noreturn]] void refuseFile(const std::string& file, const std::string& why);

// Throws HEXError "@49-901@%s%s" for a parse of `file` stopped by `bound`.
[[noreturn]] void refuseBound(const std::string& file, const std::string& bound);
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

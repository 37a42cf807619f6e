// Small HTML pieces the site pages share: escaping, links and the page frame.
#ifndef ZRBOARD_SITEHTML_H
#define ZRBOARD_SITEHTML_H

#include <string>

namespace zrboard {
namespace site {

// Text for an element or a quoted attribute value; board files may hold any
// byte, so every markup character is replaced, quotes included.
std::string escape(const std::string& text);

// A file: URL of an absolute path, bytes outside the unreserved set encoded.
std::string fileUrl(const std::string& absolutePath);
// A relative link to a file the site wrote (blanks and the like encoded).
std::string relativeUrl(const std::string& path);

// A link only for web addresses: other schemes (script:, data:) in a board
// file must not become live links on the page.
bool isWebAddress(const std::string& url);

// Start and end of a page; `root` leads from the page back to the site's top
// ("" for the index, "../" for a board page).
std::string pageStart(const std::string& title, const std::string& root);
std::string pageEnd(const std::string& root);

// The style sheet and the script, written once beside the pages.
const char* styleSheet();
const char* script();

}  // namespace site
}  // namespace zrboard

#endif

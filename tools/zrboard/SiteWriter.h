// Writes the board site into a directory: index.html, the style sheet and
// the script, boards/<board>.html and the board images under boards/<board>/.
#ifndef ZRBOARD_SITEWRITER_H
#define ZRBOARD_SITEWRITER_H

#include <string>
#include <vector>

namespace zrboard {
namespace site {

class SiteCatalog;

struct SiteResult {
    std::size_t pages = 0;   // board pages
    std::size_t images = 0;  // image files copied
    std::vector<std::string> missingImages;  // named by a board but not found
};

// Throws std::runtime_error when a file cannot be written.
SiteResult writeSite(const SiteCatalog& catalog, const std::string& outDir, const std::string& title);

// A file name made of the text: lower case, anything but letters, digits,
// '.', '-' and '_' becomes '_', and never a leading dot.
std::string safeFileName(const std::string& text);

}  // namespace site
}  // namespace zrboard

#endif

#include "SiteWriter.h"

#include <fstream>
#include <set>
#include <stdexcept>

#include <boost/filesystem.hpp>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOImage.h"
#include "SiteCatalog.h"
#include "SiteHtml.h"
#include "SitePages.h"

namespace fs = boost::filesystem;

namespace zrboard {
namespace site {

namespace {

void writeFile(const fs::path& path, const std::string& text) {
    std::ofstream out(path.string(), std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    if (!out)
        throw std::runtime_error("cannot write '" + path.string() + "'");
}

void makeDirectory(const fs::path& dir) {
    boost::system::error_code ec;
    fs::create_directories(dir, ec);
    if (!fs::is_directory(dir, ec))
        throw std::runtime_error("cannot create the directory '" + dir.string() + "'");
}

// A name not yet in `taken`: "name", "name-2", "name-3", ... before the extension.
std::string uniqueName(const std::string& name, std::set<std::string>& taken) {
    const fs::path p(name);
    const std::string stem = p.stem().string(), ext = p.extension().string();
    std::string candidate = name;
    for (int i = 2; !taken.insert(candidate).second; ++i)
        candidate = stem + "-" + std::to_string(i) + ext;
    return candidate;
}

// Copies the images of the board and its components next to its page. Only
// the file name of an image counts: a board file must not reach out of its
// directory ("../..") through it.
void copyImages(const HBOBoard& board, const std::string& stem, const fs::path& boardsDir, SiteLinks& links,
                SiteResult& result) {
    std::vector<const HBOImage*> images(board.getImages().begin(), board.getImages().end());
    for (const auto& kv : board.getBoardComponents())
        if (kv.second)
            images.insert(images.end(), kv.second->getImages().begin(), kv.second->getImages().end());
    const fs::path source = fs::path(board.getBoardFile()).parent_path();
    std::map<std::string, std::string> copied;  // source file to link
    std::set<std::string> taken;
    for (const HBOImage* image : images) {
        if (!image || image->getName().empty())
            continue;
        const fs::path file = source / fs::path(image->getName()).filename();
        boost::system::error_code ec;
        if (!fs::is_regular_file(file, ec)) {
            result.missingImages.push_back(board.getName() + ": " + image->getName());
            continue;
        }
        auto done = copied.find(file.string());
        if (done == copied.end()) {
            const std::string name = uniqueName(safeFileName(file.filename().string()), taken);
            makeDirectory(boardsDir / stem);
            fs::copy_file(file, boardsDir / stem / name, fs::copy_options::overwrite_existing, ec);
            if (ec)
                throw std::runtime_error("cannot copy '" + file.string() + "': " + ec.message());
            ++result.images;
            done = copied.emplace(file.string(), stem + "/" + name).first;
        }
        links.images[image] = done->second;
    }
}

}  // namespace

std::string safeFileName(const std::string& text) {
    std::string out;
    for (char c : text) {
        const char l = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        const bool keep = (l >= 'a' && l <= 'z') || (l >= '0' && l <= '9') || l == '.' || l == '-' || l == '_';
        out += keep ? l : '_';
    }
    if (out.empty() || out[0] == '.')
        out.insert(0, "_");
    return out;
}

SiteResult writeSite(const SiteCatalog& catalog, const std::string& outDir, const std::string& title) {
    SiteResult result;
    const fs::path out(outDir), boardsDir = out / "boards";
    makeDirectory(boardsDir);

    SiteLinks links;
    std::set<std::string> taken;
    for (const HBOBoard* board : catalog.boards()) {
        const std::string page = uniqueName(safeFileName(board->getName()) + ".html", taken);
        links.pages[board] = page;
        copyImages(*board, page.substr(0, page.size() - 5), boardsDir, links, result);
    }

    writeFile(out / "site.css", styleSheet());
    writeFile(out / "site.js", script());
    for (const HBOBoard* board : catalog.boards()) {
        writeFile(boardsDir / links.pages[board], boardPage(catalog, links, *board, title));
        ++result.pages;
    }
    // The index last: a site with an index is a whole one.
    writeFile(out / "index.html", indexPage(catalog, links, title));
    return result;
}

}  // namespace site
}  // namespace zrboard

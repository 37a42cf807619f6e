// `zrboard site OUT [--repo DIR]... [--latest] [--title TEXT]`: writes the
// catalogue as a static web site that needs nothing but a browser.
#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "CatalogSession.h"
#include "Command.h"
#include "SiteCatalog.h"
#include "SiteWriter.h"
#include "Version.h"

namespace zrboard {

namespace {

struct SiteOptions {
    std::string out;
    std::string title = "Board catalogue";
    std::vector<std::string> repos;
    bool latest = false;
};

bool isOption(const std::string& a, const std::string& name) {
    return a == name || a.compare(0, name.size() + 1, name + "=") == 0;
}

int parseOptions(const Command& self, const std::vector<std::string>& args, SiteOptions& opts) {
    std::vector<std::string> operands;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        std::string error;
        if (a == "--latest") {
            opts.latest = true;
        } else if (isOption(a, "--repo")) {
            if (!takeRepoOption(args, i, opts.repos, error))
                return usageError(error, &self);
        } else if (a == "--title") {
            if (i + 1 >= args.size())
                return usageError("option --title needs a text", &self);
            opts.title = args[++i];
        } else if (a.compare(0, 8, "--title=") == 0) {
            opts.title = a.substr(8);
        } else if (a != "-" && !a.empty() && a[0] == '-') {
            return usageError("unknown option '" + a + "'", &self);
        } else {
            operands.push_back(a);
        }
    }
    if (operands.size() != 1)
        return usageError("site takes one output directory OUT, got " + std::to_string(operands.size()), &self);
    opts.out = operands.front();
    boost::system::error_code ec;
    if (boost::filesystem::exists(opts.out, ec) && !boost::filesystem::is_directory(opts.out, ec))
        return usageError("'" + opts.out + "' exists and is not a directory; OUT is the directory to write the site into",
                          &self);
    return kExitOk;
}

}  // namespace

int runSite(const Command& self, const std::vector<std::string>& args) {
    SiteOptions opts;
    if (int rc = parseOptions(self, args, opts))
        return rc;

    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    site::SiteCatalog catalog(opts.repos, opts.latest);
    const Clock::time_point read = Clock::now();
    const site::SiteResult result = site::writeSite(catalog, opts.out, opts.title);
    const Clock::time_point written = Clock::now();

    // Problems go to standard error as `list` reports them; the site shows them as well.
    catalog.session().reportProblems(std::cerr, self.name);
    for (const std::string& image : result.missingImages)
        std::cerr << kToolName << ": site: image not found: " << image << "\n";

    boost::system::error_code ec;
    const boost::filesystem::path index = boost::filesystem::absolute(opts.out, ec) / "index.html";
    auto seconds = [](Clock::duration d) {
        char text[32];
        std::snprintf(text, sizeof text, "%.2f s", std::chrono::duration<double>(d).count());
        return std::string(text);
    };
    std::cout << "Read the catalogue in " << seconds(read - start) << ", wrote the site in " << seconds(written - read)
              << ".\n";
    std::cout << "Wrote " << result.pages << " board page" << (result.pages == 1 ? "" : "s") << " and "
              << result.images << " image" << (result.images == 1 ? "" : "s") << "; open "
              << index.lexically_normal().string() << " in a browser.\n";
    std::cout.flush();
    if (!std::cout)
        return kExitFailure;
    // As for `list`: the site is whole, but a board that did not read or a
    // repository that is not there makes the status 1.
    return catalog.session().hadProblems() ? kExitFailure : kExitOk;
}

}  // namespace zrboard

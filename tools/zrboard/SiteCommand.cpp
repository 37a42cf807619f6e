// `zrboard site OUT [--repo DIR]... [--latest] [--title TEXT]`: writes the
// catalogue as a static web site that needs nothing but a browser.
#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

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

// Takes "--name VALUE" or "--name=VALUE" at args[i]; advances i.
bool takeValue(const std::vector<std::string>& args, std::size_t& i, const std::string& name, std::string& value,
               std::string& error) {
    const std::string& a = args[i];
    if (a.compare(0, name.size() + 1, name + "=") == 0) {
        value = a.substr(name.size() + 1);
    } else if (i + 1 < args.size()) {
        value = args[++i];
    } else {
        error = "option " + name + " needs a value";
        return false;
    }
    return true;
}

bool isOption(const std::string& a, const std::string& name) {
    return a == name || a.compare(0, name.size() + 1, name + "=") == 0;
}

int parseOptions(const Command& self, const std::vector<std::string>& args, SiteOptions& opts) {
    std::vector<std::string> operands;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        std::string error, value;
        if (a == "--latest") {
            opts.latest = true;
        } else if (isOption(a, "--repo")) {
            if (!takeValue(args, i, "--repo", value, error))
                return usageError("option --repo needs a directory", &self);
            if (value.empty())
                return usageError("option --repo needs a directory, got an empty one", &self);
            opts.repos.push_back(value);
        } else if (isOption(a, "--title")) {
            if (!takeValue(args, i, "--title", value, error))
                return usageError(error, &self);
            opts.title = value;
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

    // Problems go to standard error; the site shows them as well.
    for (const ComMsgMgrInstance& m : catalog.notices())
        std::cerr << m.getLine() << "\n";
    for (const auto& kv : catalog.unfiled())
        std::cerr << kToolName << ": site: the board file '" << kv.first
                  << "' is not in the catalogue (it did not read, or a board of its name came first; run '"
                  << kToolName << " check " << kv.first << "' for the details)\n";
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
    // A repository that is not there is a mistake on the command line.
    return catalog.notices().empty() ? kExitOk : kExitFailure;
}

}  // namespace zrboard

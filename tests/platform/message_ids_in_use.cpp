// Every message that the sources send names a catalogue id, passes the argument
// count that its format asks for, and passes that many arguments.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "placeholders.h"
#include "ComMsgMgr.h"

namespace fs = boost::filesystem;

namespace {

struct Call {
    std::string where;
    std::vector<std::string> args;  // top-level argument texts, trimmed
};

std::string trim(const std::string& s) {
    std::size_t b = s.find_first_not_of(" \t\r\n");
    if (b == std::string::npos)
        return "";
    std::size_t e = s.find_last_not_of(" \t\r\n");
    return s.substr(b, e - b + 1);
}

// Splits the argument list that starts after "eval(" at top-level commas,
// stepping over nested brackets, string and character literals and comments.
bool splitArgs(const std::string& src, std::size_t pos, std::vector<std::string>& out) {
    int depth = 0;
    std::string cur;
    for (std::size_t i = pos; i < src.size(); ++i) {
        char c = src[i];
        if (c == '"' || c == '\'') {
            std::size_t j = i + 1;
            while (j < src.size() && src[j] != c) {
                if (src[j] == '\\')
                    ++j;
                ++j;
            }
            cur.append(src, i, j - i + 1);
            i = j;
            continue;
        }
        if (c == '/' && i + 1 < src.size() && src[i + 1] == '/') {
            while (i < src.size() && src[i] != '\n')
                ++i;
            continue;
        }
        if (c == '(' || c == '[' || c == '{') {
            ++depth;
        } else if (c == ')' || c == ']' || c == '}') {
            if (depth == 0) {
                out.push_back(trim(cur));
                return true;
            }
            --depth;
        } else if (c == ',' && depth == 0) {
            out.push_back(trim(cur));
            cur.clear();
            continue;
        }
        cur += c;
    }
    return false;
}

// The text of an argument made only of adjacent string literals; false otherwise.
bool literalText(const std::string& arg, std::string& text) {
    text.clear();
    std::size_t i = 0;
    bool any = false;
    while (i < arg.size()) {
        if (arg[i] == ' ' || arg[i] == '\n' || arg[i] == '\t' || arg[i] == '\r') {
            ++i;
            continue;
        }
        if (arg[i] != '"')
            return false;
        std::size_t j = i + 1;
        while (j < arg.size() && arg[j] != '"') {
            if (arg[j] == '\\' && j + 1 < arg.size()) {
                text += arg[j + 1] == 'n' ? '\n' : arg[j + 1];
                j += 2;
                continue;
            }
            text += arg[j++];
        }
        i = j + 1;
        any = true;
    }
    return any;
}

std::vector<Call> findCalls(const fs::path& root) {
    std::vector<Call> calls;
    if (!fs::exists(root))
        return calls;
    for (fs::recursive_directory_iterator it(root), end; it != end; ++it) {
        std::string ext = it->path().extension().string();
        if (!fs::is_regular_file(it->status()) || (ext != ".cpp" && ext != ".h"))
            continue;
        std::ifstream in(it->path().string());
        std::string src((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        for (std::size_t at = src.find("::eval("); at != std::string::npos; at = src.find("::eval(", at + 1)) {
            Call call;
            std::size_t line = 1 + std::count(src.begin(), src.begin() + at, '\n');
            call.where = it->path().string() + ":" + std::to_string(line);
            if (splitArgs(src, at + 7, call.args))
                calls.push_back(call);
        }
    }
    return calls;
}

}  // namespace

TEST(MessageIdsInUse, ArgumentCountsMatchFormatsAndCatalogue) {
    fs::path repo = fs::path(ZR_TEST_DATA_DIR).parent_path();
    std::vector<Call> calls;
    for (const char* dir : {"src", "tools", "bindings"}) {
        std::vector<Call> found = findCalls(repo / dir);
        calls.insert(calls.end(), found.begin(), found.end());
    }
    int checked = 0;
    for (const Call& call : calls) {
        SCOPED_TRACE(call.where);
        // Only literal counts are checked; the declarations in the headers have none.
        if (call.args.empty() || call.args[0].empty() ||
            call.args[0].find_first_not_of("0123456789") != std::string::npos)
            continue;
        int argc = std::stoi(call.args[0]);
        // The format is the first literal after the severity mask.
        std::size_t formatAt = 0;
        std::string format;
        for (std::size_t i = 1; i < call.args.size(); ++i) {
            if (call.args[i].find("MSG_") != std::string::npos && i + 1 < call.args.size()) {
                formatAt = i + 1;
                break;
            }
        }
        if (formatAt == 0 || !literalText(call.args[formatAt], format))
            continue;
        ++checked;
        EXPECT_EQ(static_cast<int>(call.args.size() - formatAt - 1), argc) << format;
        EXPECT_EQ(static_cast<int>(placeholders(format).size()), argc) << format;
        if (format.size() > 1 && format[0] == '@') {
            std::size_t end = format.find('@', 1);
            ASSERT_NE(end, std::string::npos) << format;
            std::string id = format.substr(1, end - 1);
            const char* known = ComMsgMgr::catalogueFormat(id);
            ASSERT_NE(known, nullptr) << "id " << id << " is not in the catalogue";
            EXPECT_EQ(format.substr(end + 1), known) << "id " << id;
        }
    }
    // This test program's own sends are found, so the scan itself works.
    fs::path self = repo / "tests" / "platform";
    std::vector<Call> own = findCalls(self);
    EXPECT_GT(own.size(), 3u);
    RecordProperty("checked_calls", checked);
}

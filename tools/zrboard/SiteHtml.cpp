#include "SiteHtml.h"

namespace zrboard {
namespace site {

std::string escape(const std::string& text) {
    std::string out;
    out.reserve(text.size() + 16);
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&#39;"; break;
        default:
            // Control bytes are not allowed in HTML text; a blank keeps words apart.
            if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t')
                out += ' ';
            else
                out += c;
        }
    }
    return out;
}

namespace {

std::string percentEncode(const std::string& path) {
    static const char hex[] = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : path) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
            c == '.' || c == '~' || c == '/') {
            out += static_cast<char>(c);
        } else {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    return out;
}

}  // namespace

std::string fileUrl(const std::string& absolutePath) { return "file://" + percentEncode(absolutePath); }

std::string relativeUrl(const std::string& path) { return percentEncode(path); }

bool isWebAddress(const std::string& url) {
    return url.compare(0, 7, "http://") == 0 || url.compare(0, 8, "https://") == 0;
}

std::string pageStart(const std::string& title, const std::string& root) {
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
           escape(title) + "</title>\n<link rel=\"stylesheet\" href=\"" + root + "site.css\">\n</head>\n<body>\n";
}

std::string pageEnd(const std::string& root) {
    return "<script src=\"" + root + "site.js\"></script>\n</body>\n</html>\n";
}

const char* styleSheet() {
    return R"CSS(body { font-family: sans-serif; margin: 1.5em auto; max-width: 78em; padding: 0 1em; color: #222; }
h1 { font-size: 1.6em; margin-bottom: 0.2em; }
h2 { border-bottom: 1px solid #ccc; margin-top: 1.8em; font-size: 1.3em; }
h3 { font-size: 1.1em; margin-top: 1.4em; }
h4 { font-size: 1em; margin: 1.2em 0 0.3em; }
nav { margin-bottom: 1em; }
table { border-collapse: collapse; margin: 0.5em 0; }
th, td { border: 1px solid #ccc; padding: 0.2em 0.5em; text-align: left; vertical-align: top; }
th { background: #f0f0f0; }
th button { font: inherit; font-weight: bold; border: 0; background: none; padding: 0; cursor: pointer; }
th[aria-sort="ascending"] button::after { content: " \25B2"; }
th[aria-sort="descending"] button::after { content: " \25BC"; }
td.num { text-align: right; }
dl.fields { display: grid; grid-template-columns: max-content auto; gap: 0.2em 1em; }
dl.fields dt { font-weight: bold; }
dl.fields dd { margin: 0; }
.disabled { color: #888; }
.badge { font-size: 0.8em; border: 1px solid #999; border-radius: 0.3em; padding: 0 0.3em; margin-left: 0.4em; }
.sev-ERROR, .sev-CRITICAL_WARNING { color: #a00; }
.sev-WARNING { color: #a60; }
#search { font-size: 1.1em; padding: 0.3em; width: 24em; max-width: 100%; }
#count { margin-left: 1em; color: #555; }
figure { display: inline-block; margin: 0.5em 1em 0.5em 0; }
figure img { max-width: 24em; max-height: 18em; border: 1px solid #ccc; }
svg.diagram { max-width: 100%; height: auto; border: 1px solid #ddd; background: #fcfcfc; }
svg.diagram .box { fill: #eef4ff; stroke: #335; }
svg.diagram .fpga { fill: #ffe9c6; stroke: #a60; stroke-width: 2; }
svg.diagram .connector { fill: #e6f6e6; stroke: #363; stroke-dasharray: 6 3; }
svg.diagram .off { fill: #f2f2f2; stroke: #aaa; stroke-dasharray: 2 3; }
svg.diagram .off + text, svg.diagram text.off { fill: #999; }
svg.diagram line { stroke: #777; }
svg.diagram line.off { stroke: #bbb; stroke-dasharray: 4 4; }
svg.diagram text { font-size: 12px; font-family: sans-serif; fill: #222; }
svg.diagram text.nets { font-size: 11px; fill: #555; }
)CSS";
}

// Only search and sorting live here: the pages read the same without it.
const char* script() {
    return R"JS((function () {
  "use strict";
  var table = document.getElementById("boards");
  if (!table) return;
  var body = table.tBodies[0];
  var rows = Array.prototype.slice.call(body.rows);
  var search = document.getElementById("search");
  var count = document.getElementById("count");
  var form = document.getElementById("searchform");
  if (form) form.hidden = false;

  function cellKey(row, index) {
    var cell = row.cells[index];
    var value = cell.getAttribute("data-value");
    return value !== null ? value : cell.textContent.trim().toLowerCase();
  }

  function filter() {
    var terms = search.value.toLowerCase().split(/\s+/).filter(function (t) { return t.length > 0; });
    var shown = 0;
    rows.forEach(function (row) {
      var text = row.textContent.toLowerCase();
      var keep = terms.every(function (t) { return text.indexOf(t) >= 0; });
      row.hidden = !keep;
      if (keep) shown++;
    });
    count.textContent = shown + " of " + rows.length + " boards";
  }

  if (search) {
    search.addEventListener("input", filter);
    filter();
  }

  var heads = table.tHead.rows[0].cells;
  Array.prototype.forEach.call(heads, function (th, index) {
    var label = th.textContent;
    var button = document.createElement("button");
    button.type = "button";
    button.textContent = label;
    th.textContent = "";
    th.appendChild(button);
    button.addEventListener("click", function () {
      var ascending = th.getAttribute("aria-sort") !== "ascending";
      Array.prototype.forEach.call(heads, function (h) { h.removeAttribute("aria-sort"); });
      th.setAttribute("aria-sort", ascending ? "ascending" : "descending");
      var numeric = th.getAttribute("data-type") === "number";
      rows.sort(function (a, b) {
        var x = cellKey(a, index), y = cellKey(b, index);
        var order = numeric ? Number(x) - Number(y) : (x < y ? -1 : x > y ? 1 : 0);
        return ascending ? order : -order;
      });
      rows.forEach(function (row) { body.appendChild(row); });
    });
  });
})();
)JS";
}

}  // namespace site
}  // namespace zrboard

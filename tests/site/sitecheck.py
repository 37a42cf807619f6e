"""Shared by the site tests: runs `zrboard site` and reads the pages back
with a real HTML parser."""
import html.parser
import os
import subprocess
import urllib.parse

HERE = os.path.dirname(os.path.abspath(__file__))
SOURCE = os.path.dirname(os.path.dirname(HERE))
DATA = os.path.join(SOURCE, "data")
ODD_REPO = os.path.join(HERE, "repo")
# The display name of the odd board as its board.xml means it, entities resolved.
ODD_NAME = "Odd <b>Card</b> & \"Quotes\" 'too' <script>alert(1)</script>"


def zrboard():
    path = os.environ.get("ZRBOARD")
    if not path or not os.access(path, os.X_OK):
        raise RuntimeError("set ZRBOARD to the zrboard program (got %r)" % path)
    return path


def run_site(out, *args, global_args=()):
    env = dict(os.environ, ZR_DATA_DIRS=DATA)
    return subprocess.run([zrboard(), *global_args, "site", out, *args], env=env, capture_output=True,
                          text=True, timeout=300)


class Page(html.parser.HTMLParser):
    """Elements, links, ids and the text of each element kind of one page."""

    def __init__(self, path):
        super().__init__(convert_charrefs=True)
        self.path = path
        self.tags = []            # (tag, attrs dict) in document order
        self.ids = set()
        self.links = []           # (tag, attribute, value)
        self.text = {}            # tag -> list of texts directly inside it
        self._open = []
        self.errors = []
        with open(path, encoding="utf-8") as f:
            self.source = f.read()
        self.feed(self.source)
        self.close()

    def handle_starttag(self, tag, attrs):
        a = dict(attrs)
        self.tags.append((tag, a))
        if "id" in a:
            self.ids.add(a["id"])
        for name in ("href", "src"):
            if name in a:
                self.links.append((tag, name, a[name]))
        if tag not in ("meta", "link", "img", "input", "br", "rect", "line"):
            self._open.append(tag)

    def handle_startendtag(self, tag, attrs):
        self.handle_starttag(tag, attrs)
        if self._open and self._open[-1] == tag:
            self._open.pop()

    def handle_endtag(self, tag):
        if tag in self._open:
            while self._open.pop() != tag:
                pass
        else:
            self.errors.append("stray </%s>" % tag)

    def handle_data(self, data):
        if self._open:
            self.text.setdefault(self._open[-1], []).append(data)

    def all_text(self, tag):
        return "".join(self.text.get(tag, []))

    def count(self, tag):
        return sum(1 for t, _ in self.tags if t == tag)


def resolve(page, url):
    """The local file a link points to and its fragment; None for a web address."""
    parsed = urllib.parse.urlsplit(url)
    if parsed.scheme in ("http", "https"):
        return None, None
    if parsed.scheme == "file":
        return urllib.parse.unquote(parsed.path), parsed.fragment
    assert parsed.scheme == "", "unexpected link %r in %s" % (url, page.path)
    target = page.path if parsed.path == "" else os.path.join(os.path.dirname(page.path),
                                                              urllib.parse.unquote(parsed.path))
    return os.path.normpath(target), urllib.parse.unquote(parsed.fragment)

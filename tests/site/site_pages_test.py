"""`zrboard site` on the bundled repository and a test repository: every
page parses, every board has a page, every link resolves, and text from board
files never turns into markup."""
import glob
import os
import shutil
import tempfile
import unittest

from sitecheck import ODD_NAME, ODD_REPO, Page, resolve, run_site

BUNDLED = 10  # boards of data/ that read


class BundledSite(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tmp = tempfile.mkdtemp(prefix="zr_site_")
        cls.out = os.path.join(cls.tmp, "site")
        cls.result = run_site(cls.out, "--repo", ODD_REPO, "--title", "Test <catalogue>",
                           global_args=("--param", "board.validateXML=true"))
        cls.pages = {}
        for path in glob.glob(os.path.join(cls.out, "**", "*.html"), recursive=True):
            cls.pages[os.path.normpath(path)] = Page(path)
        cls.index = cls.pages.get(os.path.join(cls.out, "index.html"))

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.tmp)

    def page(self, name):
        return self.pages[os.path.join(self.out, "boards", name)]

    def test_run_reports_the_site_and_the_broken_board(self):
        # The broken board makes the status 1, as it does for `list`; the site is whole all the same.
        self.assertEqual(self.result.returncode, 1, self.result.stderr)
        self.assertIn("Wrote %d board pages" % (BUNDLED + 1), self.result.stdout)
        self.assertIn(os.path.join(self.out, "index.html"), self.result.stdout)
        self.assertIn("cannot read the board file '%s'" % os.path.join(ODD_REPO, "oddvend", "broken", "1.0",
                                                                         "board.xml"), self.result.stderr)
        self.assertIn("image not found", self.result.stderr)

    def test_every_page_is_well_formed_html5(self):
        for path, page in self.pages.items():
            self.assertTrue(page.source.startswith("<!DOCTYPE html>"), path)
            self.assertEqual(page.errors, [], path)
            self.assertEqual(page.count("html"), 1, path)

    def test_index_has_one_row_per_board_and_each_row_links_its_page(self):
        self.assertIsNotNone(self.index)
        self.assertEqual(self.index.all_text("title"), "Test <catalogue>")
        rows = [a["href"] for t, a in self.index.tags if t == "a" and a.get("href", "").startswith("boards/")]
        self.assertEqual(len(rows), BUNDLED + 1)
        self.assertEqual(len(set(rows)), len(rows))
        self.assertEqual(len(self.pages), len(rows) + 1)
        for href in rows:
            target, _ = resolve(self.index, href)
            self.assertIn(target, self.pages)
        # The board that did not read is named on the index with its message.
        self.assertIn("broken/1.0/board.xml", self.index.source)
        self.assertIn("49-56", self.index.source)

    def test_every_link_and_image_resolves(self):
        for path, page in self.pages.items():
            for tag, attr, url in page.links:
                target, fragment = resolve(page, url)
                if target is None:
                    continue
                self.assertTrue(os.path.exists(target), "%s: %s %s=%s" % (path, tag, attr, url))
                if fragment and target.endswith(".html"):
                    self.assertIn(fragment, self.pages[target].ids, "%s: %s" % (path, url))
                if tag == "img":
                    # Images are copies inside the site, never files elsewhere.
                    self.assertTrue(target.startswith(self.out + os.sep), url)

    def test_board_text_with_markup_stays_text(self):
        odd = self.page("oddvend_odd_1.0.html")
        self.assertEqual(odd.all_text("h1"), ODD_NAME)
        self.assertIn(ODD_NAME, odd.all_text("title"))
        # Only the site's own script, no element from the board's texts.
        self.assertEqual([a.get("src") for t, a in odd.tags if t == "script"], ["../site.js"])
        for tag in ("b", "i"):
            self.assertEqual(odd.count(tag), 0, tag)
        self.assertFalse([a for t, a in odd.tags if any(k.startswith("on") for k in a)])
        self.assertNotIn("src=\"x\"", odd.source)
        # The component's display name reaches the diagram's tooltip as text.
        self.assertIn("LEDs <i>&</i>", odd.all_text("title"))
        # A script: address from the board is shown, not linked.
        self.assertFalse([a for t, a in odd.tags if "javascript" in a.get("href", "")])
        self.assertIn("javascript:alert(2)", odd.all_text("p"))
        row = [a for t, a in self.index.tags if t == "a" and "oddvend_odd" in a.get("href", "")]
        self.assertEqual(len(row), 1)
        self.assertIn(ODD_NAME, self.index.all_text("a"))

    def test_images_are_copied_and_a_path_out_of_the_board_is_not_followed(self):
        odd = self.page("oddvend_odd_1.0.html")
        self.assertEqual([a["src"] for t, a in odd.tags if t == "img"], ["oddvend_odd_1.0/odd.svg"])
        self.assertEqual(os.listdir(os.path.join(self.out, "boards", "oddvend_odd_1.0")), ["odd.svg"])
        self.assertIn("etc/hostname is missing from the board directory", odd.source)
        tarnwick = self.page("korvelhw_tarnwick_1.2.html")
        self.assertEqual(tarnwick.count("img"), 3)

    def test_compatibility_is_linked_both_ways(self):
        tarnwick = self.page("korvelhw_tarnwick_1.2.html")
        links = [a["href"] for t, a in tarnwick.tags if t == "a"]
        for daughter in ("korvelhw_fennock_1.0.html", "korvelhw_wrenmoor_1.0.html", "korvelhw_sorrel_1.0.html",
                         "korvelhw_quillon_1.1.html"):
            self.assertTrue([h for h in links if h.startswith(daughter + "#")], daughter)
        section = tarnwick.source.split('id="compatibility"')[1].split("<h2")[0]
        fully, partly = section.split("Fits partly")[0], section.split("Fits partly")[1]
        self.assertIn("korvelhw_fennock_1.0.html", fully)
        self.assertIn("korvelhw_sorrel_1.0.html", partly.split("<h3")[0] + partly)
        self.assertNotIn("korvelhw_sorrel_1.0.html", fully)
        sorrel = self.page("korvelhw_sorrel_1.0.html")
        back = [a["href"] for t, a in sorrel.tags if t == "a" and "tarnwick" in a.get("href", "")]
        self.assertTrue(back)
        section = sorrel.source.split('id="compatibility"')[1].split("<h2")[0]
        self.assertIn("Fits fully: none", section)
        self.assertIn("korvelhw_tarnwick_1.2.html#c-fmc_lpc", section.split("Fits partly")[1])

    def test_board_page_sections(self):
        tarnwick = self.page("korvelhw_tarnwick_1.2.html")
        for section in ("description", "images", "diagram", "compatibility", "components", "connections",
                        "jumpers", "parameters", "messages"):
            self.assertIn(section, tarnwick.ids)
        self.assertEqual(tarnwick.count("svg"), 1)
        # Jumper jp7 gates the USB UART's mode and its connection.
        jumpers = tarnwick.source.split('id="jumpers"')[1].split("</table>")[0]
        self.assertIn("mode usb_uart.usb_uart when true; connection part0_usb_uart_1 when true", jumpers)
        # Pins of an interface with site and I/O standard.
        self.assertTrue([a for t, a in tarnwick.tags if t == "table" and a.get("class") == "pins"])
        self.assertIn("board_files/tarnwick/1.2/", " ".join(h for _, _, h in tarnwick.links))
        halvet = self.page("korvelhw_halvet_1.0.html")
        self.assertIn("power", halvet.ids)
        self.assertIn("data", halvet.ids)
        # Messages of the read, with their ids.
        odd = self.page("oddvend_odd_1.0.html")
        self.assertIn("49-117", odd.all_text("td"))


class CommandLine(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.mkdtemp(prefix="zr_site_")

    def tearDown(self):
        shutil.rmtree(self.tmp)

    def test_usage_errors(self):
        file = os.path.join(self.tmp, "plain")
        open(file, "w").close()
        for args, text in (((), "one output directory"), (("a", "b"), "got 2"), (("--bogus", "x"), "--bogus"),
                           (("x", "--repo"), "--repo needs a directory"), (("x", "--title"), "--title needs")):
            r = run_site(*args) if args else run_site("--latest")
            self.assertEqual(r.returncode, 2, args)
            self.assertIn(text, r.stderr, args)
            self.assertIn("Usage:", r.stderr)
        r = run_site(file)
        self.assertEqual(r.returncode, 2)
        self.assertIn("not a directory", r.stderr)

    def test_missing_repository_is_reported_and_shown(self):
        out = os.path.join(self.tmp, "site")
        r = run_site(out, "--repo", os.path.join(self.tmp, "nowhere"))
        self.assertEqual(r.returncode, 1)
        self.assertIn("49-91", r.stderr)
        self.assertIn("Repository messages", Page(os.path.join(out, "index.html")).all_text("h2"))

    def test_latest_keeps_the_newest_version_only(self):
        out = os.path.join(self.tmp, "site")
        r = run_site(out, "--latest")
        self.assertEqual(r.returncode, 0, r.stderr)
        pages = os.listdir(os.path.join(out, "boards"))
        self.assertIn("korvelhw_quillon_1.1.html", pages)
        self.assertNotIn("korvelhw_quillon_1.0.html", pages)
        # Compatibility names the newest card only, and links it.
        tarnwick = Page(os.path.join(out, "boards", "korvelhw_tarnwick_1.2.html"))
        self.assertNotIn("korvelhw:quillon:1.0", tarnwick.source)
        self.assertTrue([h for _, _, h in tarnwick.links if h.startswith("korvelhw_quillon_1.1.html#")])


if __name__ == "__main__":
    unittest.main()

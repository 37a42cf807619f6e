#!/usr/bin/env python3
"""Checks of gen_board.py: sizes follow the arguments, output is repeatable, the files hang
together the way the board reader needs, and they validate against the grammars.

Run: python3 -m unittest bench/test_gen_board.py   (xmllint, when present, checks validity)
"""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ET

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import gen_board  # noqa: E402


def read_dir(d):
    files = {}
    for name in sorted(os.listdir(d)):
        with open(os.path.join(d, name), "rb") as f:
            files[name] = f.read()
    return files


class GenBoardTest(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.mkdtemp(prefix="gen_board_")

    def tearDown(self):
        shutil.rmtree(self.tmp)

    def gen(self, sub, *args):
        out = os.path.join(self.tmp, sub)
        self.assertEqual(gen_board.main(["--out", out] + list(args)), 0)
        return out

    def parse(self, d):
        board = ET.parse(os.path.join(d, "board.xml")).getroot()
        pins = ET.parse(os.path.join(d, "part0_pins.xml")).getroot()
        presets = ET.parse(os.path.join(d, "preset.xml")).getroot()
        return board, pins, presets

    def test_sizes_follow_arguments_and_files_hang_together(self):
        for args in [("--pins", "2000", "--interfaces", "200", "--connections", "20", "--nets", "100"),
                     ("--pins", "37", "--interfaces", "13", "--connections", "3", "--nets", "5"),
                     ("--pins", "3", "--interfaces", "9", "--connections", "1", "--nets", "2")]:
            with self.subTest(args=args):
                n = dict(zip(args[::2], map(int, args[1::2])))
                d = self.gen("b%d" % n["--pins"], *args)
                board, pins, presets = self.parse(d)
                pin_list = pins.findall("pins/pin")
                self.assertEqual(len(pin_list), n["--pins"])
                names = {p.get("name"): int(p.get("index")) for p in pin_list}
                self.assertEqual(len(names), len(pin_list), "pin names unique")
                self.assertEqual(sorted(names.values()), list(range(len(pin_list))), "indices 0..N-1")
                self.assertEqual(len({p.get("loc") for p in pin_list}), len(pin_list), "sites unique")

                comps = {c.get("name"): c for c in board.findall("components/component")}
                part0 = comps["part0"]
                self.assertEqual(part0.get("part_name"), pins.get("part_name"))
                intfs = part0.findall("interfaces/interface")
                self.assertEqual(len(intfs), n["--interfaces"])
                procs = {p.get("preset_proc_name") for p in presets.findall("ip_preset")}
                for i in intfs:
                    self.assertIn(i.get("of_component"), comps)
                    self.assertIn(i.get("preset_proc"), procs)
                    self.assertEqual(len(i.get("type").split(":")), 4)
                    if "clock_rtl" in i.get("type"):
                        self.assertIn("frequency", [p.get("name") for p in i.findall("parameters/parameter")])
                    for pm in i.findall("port_maps/port_map"):
                        maps = pm.findall("pin_maps/pin_map")
                        left, right = pm.get("left"), pm.get("right")
                        width = 1 if left is None else abs(int(left) - int(right)) + 1
                        self.assertNotEqual(left is not None and left == right, True)
                        self.assertEqual(len(maps), width)
                        for m in maps:
                            self.assertIn(m.get("component_pin"), names)

                conns = board.findall("connections/connection")
                self.assertEqual(len(conns), n["--connections"])
                for c in conns:
                    (cm,) = c.findall("connection_map")
                    w1 = int(cm.get("c1_end_index")) - int(cm.get("c1_st_index"))
                    w2 = int(cm.get("c2_end_index")) - int(cm.get("c2_st_index"))
                    self.assertEqual(w1, w2)
                    self.assertEqual(w1 + 1, n["--nets"])
                    self.assertLess(int(cm.get("c1_end_index")), max(1, n["--pins"]))
                    conn = comps[c.get("component2")]
                    # A connector pin is named after the FPGA pin that its net reaches.
                    for p in conn.findall("pins/pin"):
                        fpga = int(cm.get("c1_st_index")) + int(p.get("index"))
                        self.assertEqual(names[p.get("name")], fpga)

    def test_same_arguments_give_same_files_and_seed_changes_them(self):
        args = ("--pins", "120", "--interfaces", "12", "--connections", "2", "--nets", "10")
        a = read_dir(self.gen("a", *args))
        b = read_dir(self.gen("b", *args))
        c = read_dir(self.gen("c", *args, "--seed", "7"))
        self.assertEqual(a, b)
        self.assertNotEqual(a["part0_pins.xml"], c["part0_pins.xml"])

    def test_repo_layout(self):
        out = self.gen("repo", "--repo", "--boards", "3", "--versions", "2", "--pins", "40",
                       "--interfaces", "4", "--connections", "1", "--nets", "8")
        root = os.path.join(out, "boards", "board_files")
        self.assertEqual(sorted(os.listdir(root)), ["synth_0000", "synth_0001", "synth_0002"])
        for b in os.listdir(root):
            self.assertEqual(sorted(os.listdir(os.path.join(root, b))), ["1.0", "1.1"])
            for v in ("1.0", "1.1"):
                d = os.path.join(root, b, v)
                self.assertEqual(sorted(os.listdir(d)),
                                 ["board.xml", "changelog.txt", "part0_pins.xml", "preset.xml"])
                board = ET.parse(os.path.join(d, "board.xml")).getroot()
                self.assertEqual(board.get("name"), b)
                self.assertEqual(board.findtext("file_version"), v)

    def test_pmods_and_second_versions(self):
        out = self.gen("cat", "--repo", "--boards", "4", "--second-version-every", "2", "--pins", "120",
                       "--interfaces", "6", "--connections", "1", "--nets", "40", "--pmods", "1")
        root = os.path.join(out, "boards", "board_files")
        versions = {b: sorted(os.listdir(os.path.join(root, b))) for b in os.listdir(root)}
        self.assertEqual(versions, {"synth_0000": ["1.0", "1.1"], "synth_0001": ["1.0"],
                                    "synth_0002": ["1.0", "1.1"], "synth_0003": ["1.0"]})
        board = ET.parse(os.path.join(root, "synth_0001", "1.0", "board.xml")).getroot()
        conns = [c for c in board.iter("component") if c.get("type") == "connector"]
        self.assertEqual([(c.get("sub_type"), len(c.find("pins"))) for c in conns], [("fmc_hpc", 40), ("pmod", 8)])
        # The PMOD's pins follow the FMC's on the FPGA.
        maps = [m for m in board.iter("connection_map")]
        self.assertEqual([(m.get("c1_st_index"), m.get("c1_end_index")) for m in maps], [("0", "39"), ("40", "47")])

    @unittest.skipUnless(shutil.which("xmllint"), "xmllint not installed")
    def test_files_validate_against_the_grammars(self):
        d = self.gen("v", "--pins", "300", "--interfaces", "30", "--connections", "4", "--nets", "50")
        for name in ("board.xml", "part0_pins.xml", "preset.xml"):
            r = subprocess.run(["xmllint", "--noout", "--valid", os.path.join(d, name)],
                               capture_output=True, text=True)
            self.assertEqual(r.returncode, 0, r.stderr)

    def test_bad_arguments_are_refused(self):
        for args in (["--nets", "0"], ["--pins", "-1"], ["--pins", "0", "--interfaces", "3"]):
            with self.subTest(args=args), self.assertRaises(SystemExit):
                gen_board.main(["--out", os.path.join(self.tmp, "x")] + args)


if __name__ == "__main__":
    unittest.main()

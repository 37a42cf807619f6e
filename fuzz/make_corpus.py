#!/usr/bin/env python3
"""Writes the fuzz targets' seed corpora and their dictionary.

    python3 fuzz/make_corpus.py OUT

OUT/corpus/<target>/ gets seeds made from the bundled boards (data/), the test
fixtures (tests/fixtures), a few synthetic boards and the target's regression
inputs (fuzz/regressions/<target>/); OUT/zr_board.dict gets the grammars'
element and attribute names with the XML syntax around them. A board directory
becomes one input in the bundle form of fuzz/ZrFuzzEntries.h: a switch byte,
board.xml, then "%%% NAME" lines, each beginning a side file.
"""
import hashlib
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
DATA = ROOT / "data"
FIXTURES = ROOT / "tests" / "fixtures"
REGRESSIONS = ROOT / "fuzz" / "regressions"
TARGETS = ["board_reader", "schema1_reader", "xml_tree", "preferences", "utilities", "migration_models"]

# Switch bits of a bundle's first byte.
VALIDATE, PACK_BOARD, PACK_SIDE, STRICT = 1, 2, 4, 8
MARKER = "%%% "


def bundle(switches, board, side_files):
    out = bytes([ord("0") + switches]) + board
    for name, text in side_files:
        out += ("\n" + MARKER + name + "\n").encode() + text
    return out


def board_dirs():
    """Every directory with a board.xml below data/ and the fixtures, sorted."""
    found = {p.parent for base in (DATA, FIXTURES) for p in base.rglob("*") if p.name.lower() == "board.xml"}
    return sorted(found)


def side_files(directory):
    return [(p.name, p.read_bytes()) for p in sorted(directory.iterdir())
            if p.is_file() and p.name.lower() != "board.xml" and p.suffix in (".xml", ".txt")]


def schema_of(text):
    m = re.search(rb'schema_version="([^"]*)"', text)
    return m.group(1).decode(errors="replace") if m else ""


SCHEMA1_SMALL = (b'<?xml version="1.0"?>\n<board_part vendor="v" board_name="b" board_part="part0" '
                 b'board_revision="A" version="1.0" schema_version="1.1" preset_file="preset.xml">'
                 b'<part_info part_name="p" jtag_position="1"/><ports><port name="clk" dir="in">'
                 b'<pin name="A1" iostandard="LVCMOS33"/></port></ports><interfaces>'
                 b'<interface mode="master" name="led" type="korvelhw:interface:gpio_rtl:1.0">'
                 b'<port_maps><port_map logical_port="TRI_O" physical_port="clk" dir="out"/></port_maps>'
                 b'</interface></interfaces></board_part>\n')
SCHEMA1_PRESET = (b'<?xml version="1.0"?>\n<ip_presets schema="1.0"><ip_preset preset_proc_name="p">'
                  b'<ip vendor="v" library="l" name="n" version="1.0"><user_parameters>'
                  b'<user_parameter name="CONFIG.X" value="1"/></user_parameters></ip></ip_preset></ip_presets>\n')


def synthetic_boards(tmp):
    """Two small generated schema 2 boards, when the generator is there."""
    gen = ROOT / "bench" / "gen_board.py"
    out = []
    if not gen.exists():
        return out
    for i, args in enumerate((["--pins", "8", "--interfaces", "3", "--connections", "1", "--nets", "3"],
                              ["--pins", "30", "--interfaces", "6", "--connections", "2", "--nets", "4",
                               "--pmods", "1", "--schema", "2.1"])):
        d = pathlib.Path(tmp) / f"synth{i}"
        subprocess.run([sys.executable, str(gen), "--out", str(d), "--seed", str(i + 1)] + args, check=True,
                       stdout=subprocess.DEVNULL)
        for b in d.rglob("board.xml"):
            out.append(b.parent)
    return out


def seeds(tmp):
    s = {t: [] for t in TARGETS}
    dirs = board_dirs() + synthetic_boards(tmp)
    for d in dirs:
        board = (d / "board.xml").read_bytes()
        sides = side_files(d)
        schema = schema_of(board)
        target = "schema1_reader" if schema.startswith("1") else "board_reader"
        s[target] += [bundle(0, board, sides), bundle(VALIDATE | STRICT, board, sides),
                      bundle(PACK_BOARD | PACK_SIDE, board, sides)]
        if target == "board_reader" and any(n == "part0_pins.xml" for n, _ in sides):
            s["migration_models"].append(bundle(0, board, [x for x in sides if x[0] in ("part0_pins.xml",
                                                                                        "preset.xml")]))
    s["schema1_reader"] += [bundle(0, SCHEMA1_SMALL, [("preset.xml", SCHEMA1_PRESET)]),
                            bundle(VALIDATE, SCHEMA1_SMALL, [("preset.xml", SCHEMA1_PRESET)])]
    pins = sorted(FIXTURES.rglob("pins_*.xml"))
    presets = sorted(FIXTURES.rglob("preset_*.xml"))
    for p, q in zip(pins, presets):
        s["migration_models"].append(bundle(0, b'<board><components><component name="part0"/></components></board>',
                                            [("part0_pins.xml", p.read_bytes()), ("preset.xml", q.read_bytes())]))
    for f in sorted(list(DATA.rglob("*.xml")) + list(FIXTURES.rglob("*.xml"))):
        s["xml_tree"].append(f.read_bytes())
    s["xml_tree"] += [b'<?xml version="1.0"?>\n<!DOCTYPE r [<!ENTITY e "text">]>\n<r a="&e;">&e;<c/></r>\n',
                      b'<r xmlns:x="urn:x"><x:c x:a="1"><![CDATA[c]]></x:c></r>']
    s["preferences"].append((DATA / "boards" / "board_interface_preferences.xml").read_bytes())
    versions = sorted({m.decode() for d in dirs for m in
                       re.findall(rb'(?:version|revision)="([^"]*)"', (d / "board.xml").read_bytes())})
    s["utilities"] += [f"{a}\n{b}".encode() for a, b in zip(versions, versions[1:] + versions[:1])]
    s["utilities"] += [b"korvelhw:tarnwick:part0:1.2\nkorvelhw:tarnwick:1.2",
                       b"korvelhw:interface:gpio_rtl:1.0\nv:b:c:d:e", b"{a b} c {d {e} f} {}\n1.10",
                       b"2.1\n2.10", b"1.a.3\n1.a", b"\n"]
    return s


def write_corpora(out):
    with tempfile.TemporaryDirectory() as tmp:
        all_seeds = seeds(tmp)
    for target in TARGETS:
        d = out / "corpus" / target
        d.mkdir(parents=True, exist_ok=True)
        inputs = all_seeds[target] + [p.read_bytes() for p in sorted((REGRESSIONS / target).glob("*"))
                                      if p.is_file() and (REGRESSIONS / target).exists()]
        for data in inputs:
            (d / hashlib.sha1(data).hexdigest()).write_bytes(data)
        print(f"{target}: {len(inputs)} seeds in {d}")


def dict_entry(text):
    out = ""
    for b in text.encode():
        c = chr(b)
        out += "\\" + c if c in '"\\' else c if 32 <= b < 127 else f"\\x{b:02x}"
    return f'"{out}"'


def write_dict(out):
    names, attrs = set(), set()
    for dtd in sorted((DATA / "boards" / "board_schemas").rglob("*.dtd")):
        text = dtd.read_text(errors="replace")
        names |= set(re.findall(r"<!ELEMENT\s+([\w.:-]+)", text))
        for element, body in re.findall(r"<!ATTLIST\s+([\w.:-]+)([^>]*)>", text):
            names.add(element)
            attrs |= set(re.findall(r"^\s*([\w.:-]+)\s+(?:CDATA|ID|IDREF|NMTOKEN|\()", body, re.M))
    entries = [f"<{n}" for n in sorted(names)] + [f"</{n}>" for n in sorted(names)]
    entries += [f' {a}="' for a in sorted(attrs)]
    entries += ['<?xml version="1.0" encoding="UTF-8"?>', "<!DOCTYPE", "<!ENTITY", "<!ELEMENT", "<!ATTLIST",
                "SYSTEM", "PUBLIC", "<![CDATA[", "]]>", "-->", "<!--", "&amp;", "&#x", "/>", 'schema_version="2.1"',
                'schema_version="1.1"', "\n" + MARKER + "part0_pins.xml\n", "\n" + MARKER + "preset.xml\n",
                'file="part0_pins.xml"', 'preset_file="preset.xml"', "INTF_VLNV", "{", "}", ":"]
    path = out / "zr_board.dict"
    path.write_text("".join(f"{dict_entry(e)}\n" for e in entries))
    print(f"dictionary: {len(entries)} entries in {path}")


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_corpus.py OUT")
    out = pathlib.Path(sys.argv[1])
    write_corpora(out)
    write_dict(out)


if __name__ == "__main__":
    main()

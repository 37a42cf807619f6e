#!/usr/bin/env python3
"""Writes synthetic but realistic schema 2 boards for benchmarks and stress tests.

One board (board.xml, part0_pins.xml, preset.xml) into --out, or with --repo a
repository of --boards boards laid out as a data directory:
    OUT/boards/board_files/<board>/<version>/{board.xml,part0_pins.xml,preset.xml,changelog.txt}
so that OUT can be given as a data directory and OUT/boards/board_files as a
repository path.

The size is set by --pins (FPGA pins in part0_pins.xml), --interfaces (board
interfaces on the FPGA, each with its own chip and mode and its own preset),
--connections (connections from the FPGA to connector components) and --nets
(nets of each connection). The output depends only on the arguments and
--seed. Every file carries a DOCTYPE whose system id points at the grammars of
this tree (--dtd-dir), so `xmllint --valid` checks it in place.
"""

import argparse
import math
import os
import random
import sys
from xml.sax.saxutils import escape, quoteattr

HERE = os.path.dirname(os.path.abspath(__file__))
DEFAULT_DTD_DIR = os.path.normpath(os.path.join(HERE, "..", "data", "boards", "board_schemas", "current"))
VENDOR_LIB = "korvelhw"

# Package rows skip the letters that read like digits, as ball grids do.
_ROW_LETTERS = "ABCDEFGHJKLMNPRTUVWY"


def ball_rows():
    for c in _ROW_LETTERS:
        yield c
    for a in _ROW_LETTERS:
        for b in _ROW_LETTERS:
            yield a + b


def ball_sites(count):
    """count unique package sites on a square grid, row by row."""
    if count <= 0:
        return []
    rows = len(_ROW_LETTERS) * (len(_ROW_LETTERS) + 1)
    cols = max(10, int(math.ceil(math.sqrt(count))), -(-count // rows))
    sites = []
    for row in ball_rows():
        for col in range(1, cols + 1):
            sites.append("%s%d" % (row, col))
            if len(sites) == count:
                return sites
    return sites


class Writer:
    """Streams indented XML into a list of lines."""

    def __init__(self, root, dtd_system_id):
        self.lines = ['<?xml version="1.0" encoding="UTF-8" standalone="no"?>']
        if dtd_system_id:
            self.lines.append('<!DOCTYPE %s SYSTEM "%s">' % (root, dtd_system_id))
        self.depth = 0

    @staticmethod
    def _attrs(attrs):
        return "".join(" %s=%s" % (k, quoteattr(str(v))) for k, v in attrs if v is not None)

    def open(self, tag, *attrs):
        self.lines.append("  " * self.depth + "<%s%s>" % (tag, self._attrs(attrs)))
        self.depth += 1

    def close(self, tag):
        self.depth -= 1
        self.lines.append("  " * self.depth + "</%s>" % tag)

    def empty(self, tag, *attrs):
        self.lines.append("  " * self.depth + "<%s%s/>" % (tag, self._attrs(attrs)))

    def text(self, tag, text, *attrs):
        self.lines.append("  " * self.depth + "<%s%s>%s</%s>" % (tag, self._attrs(attrs), escape(text), tag))

    def data(self):
        return "\n".join(self.lines) + "\n"


# Interface kinds: type, mode, chip sub type, IP, logical ports as (name, dir, width or None for "rest").
KINDS = {
    "gpio_out": ("interface:gpio_rtl:1.0", "master", "led", "gpio_hub:2.0", [("GPIO_O", "out", None)]),
    "gpio_in": ("interface:gpio_rtl:1.0", "master", "switch", "gpio_hub:2.0", [("GPIO_I", "in", None)]),
    "gpio_btn": ("interface:gpio_rtl:1.0", "master", "push_button", "gpio_hub:2.0", [("GPIO_I", "in", None)]),
    "diff_clock": ("interface:diff_clock_rtl:1.0", "slave", "system_clock", "clock_synth:6.0",
                   [("CLK_P", "in", 1), ("CLK_N", "in", 1)]),
    "clock": ("signal:clock_rtl:1.0", "slave", "system_clock", "clock_synth:6.0", [("CLK", "in", 1)]),
    "uart": ("interface:uart_rtl:1.0", "master", "uart", "uart_hub:2.0", [("TxD", "out", 1), ("RxD", "in", 1)]),
    "reset": ("signal:reset_rtl:1.0", "slave", "reset", "reset_hub:5.0", [("RST", "in", 1)]),
    "iic": ("interface:iic_rtl:1.0", "master", "chip", "iic_hub:2.0", [("SCL", "inout", 1), ("SDA", "inout", 1)]),
    "ddr": ("interface:ddrx_rtl:1.0", "master", "ddr", "dramhub_g7:4.2",
            [("DQ", "inout", None), ("DM", "out", 2), ("CK_P", "out", 1), ("CK_N", "out", 1), ("CKE", "out", 1)]),
}
# A PMOD connector carries eight signals; anything wider is an FMC connector.
PMOD_NETS = 8

# Most interfaces of a board are general purpose I/O; the rest follow this cycle.
KIND_CYCLE = ["gpio_out", "gpio_in", "diff_clock", "gpio_btn", "uart", "gpio_out", "clock", "reset",
              "gpio_in", "iic", "gpio_out", "ddr"]

IOSTANDARDS = {"gpio_out": "LVCMOS33", "gpio_in": "LVCMOS33", "gpio_btn": "LVCMOS18", "diff_clock": "LVDS",
               "clock": "LVCMOS18", "uart": "LVCMOS33", "reset": "LVCMOS18", "iic": "LVCMOS33", "ddr": "SSTL12",
               None: "LVCMOS18"}


class Board:
    def __init__(self, args, name, version, seed):
        self.a = args
        self.name = name
        self.version = version
        self.rng = random.Random(seed)
        self.part = "zs7x%d-kgx%d-2" % (100 + args.pins // 10, max(args.pins, 16))
        self.plan_interfaces()
        self.plan_pins()

    # -- planning -------------------------------------------------------
    def plan_interfaces(self):
        """Fixed-width ports (clocks, UART, ...) take what they need; the pins left over are
        shared out among the ports of variable width (GPIO, memory data), at most 128 each."""
        a = self.a
        kinds = [KIND_CYCLE[k % len(KIND_CYCLE)] for k in range(a.interfaces)]
        fixed = sum(w for kind in kinds for _, _, w in KINDS[kind][4] if w)
        variable = sum(1 for kind in kinds for _, _, w in KINDS[kind][4] if w is None)
        spare = max(0, a.pins - fixed)
        share, extra = divmod(spare, variable) if variable else (0, 0)
        self.interfaces = []
        nvar = 0
        for k, kind in enumerate(kinds):
            ports = []
            for logical, direction, width in KINDS[kind][4]:
                if width is None:
                    width = max(1, min(128, share + (1 if nvar < extra else 0)))
                    nvar += 1
                ports.append((logical, direction, width))
            self.interfaces.append(("%s_%03d" % (kind, k), kind, ports))

    def plan_pins(self):
        """Names the FPGA pins after the interfaces that use them, in order, then spares.
        With fewer pins than the interfaces need, later interfaces share pins cyclically."""
        a = self.a
        names, kinds = [], []
        self.port_pins = {}
        wanted = sum(w for _, _, ports in self.interfaces for _, _, w in ports)
        if a.pins and wanted > a.pins:
            sys.stderr.write("gen_board: %d interface pins wanted, %d pins: pins are shared\n" % (wanted, a.pins))
        cursor = 0
        for name, kind, ports in self.interfaces:
            for logical, _, width in ports:
                idxs = []
                for bit in range(width):
                    if len(names) < a.pins:
                        suffix = "" if width == 1 else "_%d" % bit
                        names.append(("%s_%s%s" % (name, logical, suffix)).upper())
                        kinds.append(kind)
                        idxs.append(len(names) - 1)
                    else:
                        idxs.append(cursor % a.pins)
                        cursor += 1
                self.port_pins[(name, logical)] = idxs
        while len(names) < a.pins:
            names.append("SPARE_IO_%d" % len(names))
            kinds.append(None)
        self.pin_names = names
        self.pin_kinds = kinds
        self.sites = ball_sites(a.pins)

    # -- part0_pins.xml -------------------------------------------------
    def pins_xml(self, dtd):
        w = Writer("part_info", dtd)
        w.open("part_info", ("part_name", self.part))
        banks = sorted({10 + i // 52 for i in range(len(self.pin_names))})
        w.open("design_constrs", ("part_name", self.part))
        if len(banks) > 1:
            w.empty("dci_cascade", ("master_bank_id", banks[0]), ("slave_bank_ids", ",".join(map(str, banks[1:4]))))
        for b in banks[:2]:
            w.empty("internal_vref", ("bank_id", b), ("voltage", "0.6"))
        w.close("design_constrs")
        w.open("pins")
        for i, (name, kind) in enumerate(zip(self.pin_names, self.pin_kinds)):
            std = IOSTANDARDS[kind]
            attrs = [("index", i), ("name", name), ("loc", self.sites[i]), ("iostandard", std)]
            if std.startswith("LVCMOS"):
                attrs += [("drive", self.rng.choice(["4", "8", "12"])), ("slew", self.rng.choice(["SLOW", "FAST"]))]
            elif std == "LVDS":
                attrs += [("diff_term", "TRUE")]
            elif std.startswith("SSTL"):
                attrs += [("odt", "40_ohm"), ("output_impedance", "40_ohm")]
            if kind == "iic":
                attrs.append(("pull_type", "PULLUP"))
            if i % 52 == 0:
                attrs.append(("iobank.vcco", "1.2" if std.startswith("SSTL") else "1.8"))
            w.empty("pin", *attrs)
        w.close("pins")
        w.close("part_info")
        return w.data()

    # -- board.xml ------------------------------------------------------
    def board_xml(self, dtd):
        a, V = self.a, self.a.vendor
        w = Writer("board", dtd)
        w.open("board", ("schema_version", a.schema), ("vendor", V), ("name", self.name),
               ("display_name", "Synthetic board %s" % self.name), ("url", "https://%s.example/boards/%s" % (V, self.name)),
               ("preset_file", "preset.xml"))
        w.open("compatible_board_revisions")
        w.text("revision", "Rev A", ("id", 0))
        w.text("revision", "Rev B", ("id", 1))
        w.close("compatible_board_revisions")
        w.text("file_version", self.version)
        w.text("description", "Synthetic board: %d FPGA pins, %d interfaces, %d connections of %d nets."
               % (a.pins, a.interfaces, a.connections, a.nets))
        w.open("parameters")
        w.empty("parameter", ("name", "synthetic"), ("value", "true"), ("value_type", "bool"), ("readonly", "true"))
        w.empty("parameter", ("name", "vadj"), ("value", "1.8"), ("value_type", "float"),
                ("value_min", "1.2"), ("value_max", "3.3"), ("readonly", "false"))
        w.close("parameters")
        jumpers = ["jp%d" % i for i in range(1, 5)]
        w.open("jumpers")
        for i, j in enumerate(jumpers):
            w.open("jumper", ("name", j), ("default_value", "true" if i % 2 == 0 else "false"))
            w.text("description", "Enables connector group %d." % i)
            w.close("jumper")
        w.close("jumpers")

        w.open("components")
        self.write_part0(w)
        for name, kind, ports in self.interfaces:
            typ, mode, sub, ip, _ = KINDS[kind]
            w.open("component", ("name", name), ("display_name", name.replace("_", " ").title()),
                   ("type", "chip"), ("sub_type", sub))
            w.text("description", "Synthetic %s device" % sub.replace("_", " "))
            w.open("component_modes")
            w.open("component_mode", ("name", name), ("display_name", name), ("preset_proc", name + "_preset"))
            w.open("interfaces")
            w.empty("interface", ("name", name), ("order", 0), ("optional", "false"))
            w.close("interfaces")
            w.open("preferred_ips")
            self.write_pref(w, ip, 0)
            w.close("preferred_ips")
            w.close("component_mode")
            w.close("component_modes")
            w.close("component")
        for k, (start, nets) in enumerate(self.connection_ranges()):
            sub = "pmod" if nets <= PMOD_NETS else "fmc_hpc"
            w.open("component", ("name", "conn_%02d" % k), ("display_name", "Connector %d" % k),
                   ("type", "connector"), ("sub_type", sub), ("major_group", "Connectors"))
            w.open("pins")
            for i in range(nets):
                fpga = (start + i) % a.pins if a.pins else 0
                w.empty("pin", ("index", i), ("name", self.pin_names[fpga] if a.pins else "NC_%d" % i),
                        ("loc", "P%d" % (i + 1)))
            w.close("pins")
            w.close("component")
        w.close("components")

        w.open("jtag_chains")
        w.open("jtag_chain", ("name", "chain1"))
        w.empty("position", ("name", "0"), ("component", "part0"))
        w.close("jtag_chain")
        w.close("jtag_chains")

        w.open("connections")
        for k, (start, nets) in enumerate(self.connection_ranges()):
            cname = "part0_conn_%02d" % k
            w.open("connection", ("name", cname), ("component1", "part0"), ("component2", "conn_%02d" % k))
            delay = 0.3 + self.rng.random() * 0.4
            w.open("connection_map", ("name", cname + "_1"), ("c1_st_index", start),
                   ("c1_end_index", start + nets - 1), ("c2_st_index", 0), ("c2_end_index", nets - 1),
                   ("typical_delay", "%.3f" % delay), ("min_delay", "%.3f" % (delay * 0.9)),
                   ("max_delay", "%.3f" % (delay * 1.1)))
            if k % 4 == 3:
                w.open("enablement_dependencies")
                w.open("jumpers")
                w.text("jumper", "true", ("name", jumpers[(k // 4) % len(jumpers)]))
                w.close("jumpers")
                w.close("enablement_dependencies")
            w.open("nets")
            for i in range(0, nets, max(1, nets // 4)):
                d = delay + self.rng.uniform(-0.02, 0.02)
                w.empty("net", ("index", i), ("typical_delay", "%.3f" % d), ("min_delay", "%.3f" % (d * 0.9)),
                        ("max_delay", "%.3f" % (d * 1.1)))
            w.close("nets")
            w.close("connection_map")
            w.close("connection")
        w.close("connections")
        w.close("board")
        return w.data()

    def connection_ranges(self):
        """(first FPGA pin index, nets) of each connection: --connections of --nets nets, then
        --pmods of 8, in consecutive blocks, starting over when the pins run out."""
        a = self.a
        out = []
        first = 0
        for nets in [a.nets] * a.connections + [PMOD_NETS] * a.pmods:
            start = first
            if a.pins >= nets:
                if start + nets > a.pins:
                    start = start % (a.pins - nets + 1)
            else:
                start = 0
            out.append((start, nets))
            first += nets
        return out

    def write_pref(self, w, ip, order):
        name, version = ip.split(":")
        w.empty("preferred_ip", ("vendor", VENDOR_LIB), ("library", "ip"), ("name", name),
                ("version", version), ("order", order))

    def write_part0(self, w):
        a = self.a
        w.open("component", ("name", "part0"), ("display_name", "Synthetic FPGA"), ("type", "fpga"),
               ("part_name", self.part), ("pin_map_file", "part0_pins.xml"), ("vendor", a.vendor))
        w.text("description", "FPGA part on the board")
        w.open("interfaces")
        for name, kind, ports in self.interfaces:
            typ, mode, sub, ip, _ = KINDS[kind]
            w.open("interface", ("name", name), ("type", "%s:%s" % (VENDOR_LIB, typ)), ("mode", mode),
                   ("of_component", name), ("preset_proc", name + "_preset"))
            w.text("description", "Synthetic %s interface" % kind.replace("_", " "))
            params = []
            if "clock" in kind:
                params.append(("frequency", str(self.rng.choice([25, 50, 100, 125, 156, 200, 300]) * 1000000)))
            if kind == "reset":
                params.append(("rst_polarity", self.rng.choice(["0", "1"])))
            if params:
                w.open("parameters")
                for n, v in params:
                    w.empty("parameter", ("name", n), ("value", v))
                w.close("parameters")
            w.open("preferred_ips")
            self.write_pref(w, ip, 0)
            w.close("preferred_ips")
            w.open("port_maps")
            for logical, direction, width in ports:
                vec = [("left", width - 1), ("right", 0)] if width > 1 else []
                w.open("port_map", ("logical_port", logical),
                       ("physical_port", "%s_%s" % (name, logical.lower())), ("dir", direction), *vec)
                w.open("pin_maps")
                for bit, idx in enumerate(self.port_pins[(name, logical)]):
                    w.empty("pin_map", ("port_index", bit), ("component_pin", self.pin_names[idx]))
                w.close("pin_maps")
                w.close("port_map")
            w.close("port_maps")
            w.close("interface")
        w.close("interfaces")
        w.close("component")

    # -- preset.xml -----------------------------------------------------
    def preset_xml(self, dtd):
        w = Writer("ip_presets", dtd)
        w.open("ip_presets", ("schema", "1.0"))
        for name, kind, ports in self.interfaces:
            ip_name, version = KINDS[kind][3].split(":")
            w.open("ip_preset", ("preset_proc_name", name + "_preset"))
            w.open("ip", ("vendor", VENDOR_LIB), ("library", "ip"), ("name", ip_name), ("version", version))
            w.open("user_parameters")
            width = sum(wd for _, _, wd in ports)
            w.empty("user_parameter", ("name", "CONFIG.BOARD_INTERFACE"), ("value", name))
            if kind.startswith("gpio"):
                w.empty("user_parameter", ("name", "CONFIG.WIDTH"), ("value", width))
                w.empty("user_parameter", ("name", "CONFIG.DIRECTION"), ("value", "out" if kind == "gpio_out" else "in"))
            elif kind == "uart":
                w.empty("user_parameter", ("name", "CONFIG.BAUD_RATE"), ("value", self.rng.choice([9600, 115200])))
            elif kind == "ddr":
                w.open("user_parameter", ("name", "CONFIG.MEM_TIMING"), ("value_type", "hier"))
                w.empty("user_parameter", ("name", "tCK"), ("value", "833"))
                w.empty("user_parameter", ("name", "tRCD"), ("value", "13.32"))
                w.close("user_parameter")
            w.close("user_parameters")
            w.close("ip")
            w.close("ip_preset")
        w.close("ip_presets")
        return w.data()


def system_id(dtd_dir, out_dir, name):
    if not dtd_dir:
        return None
    return os.path.relpath(os.path.join(dtd_dir, name), out_dir).replace(os.sep, "/")


def write_board(args, out_dir, name, version, seed):
    os.makedirs(out_dir, exist_ok=True)
    b = Board(args, name, version, seed)
    files = {
        "board.xml": b.board_xml(system_id(args.dtd_dir, out_dir, "board.dtd")),
        "part0_pins.xml": b.pins_xml(system_id(args.dtd_dir, out_dir, "part0_pins.dtd")),
        "preset.xml": b.preset_xml(system_id(args.dtd_dir, out_dir, "preset.dtd")),
    }
    for fname, text in files.items():
        with open(os.path.join(out_dir, fname), "w") as f:
            f.write(text)


def main(argv=None):
    p = argparse.ArgumentParser(description="Write synthetic schema 2 boards.")
    p.add_argument("--pins", type=int, default=2000, help="FPGA pins in part0_pins.xml (default 2000)")
    p.add_argument("--interfaces", type=int, default=200, help="board interfaces (default 200)")
    p.add_argument("--connections", type=int, default=20, help="connections to connectors (default 20)")
    p.add_argument("--nets", type=int, default=100, help="nets per connection (default 100)")
    p.add_argument("--out", required=True, help="output directory")
    p.add_argument("--repo", action="store_true", help="write a repository of --boards boards")
    p.add_argument("--boards", type=int, default=10, help="boards in --repo mode (default 10)")
    p.add_argument("--versions", type=int, default=1, help="versions of each board in --repo mode (default 1)")
    p.add_argument("--second-version-every", type=int, default=0, metavar="N",
                   help="in --repo mode, every N-th board (0, N, 2N, ...) gets one version more (default 0: none)")
    p.add_argument("--pmods", type=int, default=0, help="PMOD connectors of 8 nets besides --connections (default 0)")
    p.add_argument("--name", default="synth", help="board name of a single board (default synth)")
    p.add_argument("--version", default="1.0", help="file version of a single board (default 1.0)")
    p.add_argument("--vendor", default="korvelhw", help="board vendor (default korvelhw)")
    p.add_argument("--schema", default="2.2", help="schema_version of board.xml (default 2.2)")
    p.add_argument("--seed", type=int, default=1, help="random seed (default 1)")
    p.add_argument("--dtd-dir", default=DEFAULT_DTD_DIR,
                   help="directory of the grammars the DOCTYPE points at; empty for no DOCTYPE")
    args = p.parse_args(argv)

    for opt in ("pins", "interfaces", "connections", "boards", "versions", "pmods", "second_version_every"):
        if getattr(args, opt) < 0:
            p.error("--%s must not be negative" % opt.replace("_", "-"))
    if args.nets < 1:
        p.error("--nets must be at least 1")
    if args.interfaces and not args.pins:
        p.error("interfaces need pins: give --pins of at least 1")
    if args.connections and args.pins < args.nets:
        sys.stderr.write("gen_board: fewer pins than nets: connections name FPGA pins that do not exist\n")
    if args.dtd_dir:
        args.dtd_dir = os.path.abspath(args.dtd_dir)

    if not args.repo:
        write_board(args, args.out, args.name, args.version, args.seed)
        return 0
    root = os.path.join(args.out, "boards", "board_files")
    for k in range(args.boards):
        name = "%s_%04d" % (args.name, k)
        extra = 1 if args.second_version_every and k % args.second_version_every == 0 else 0
        for v in range(args.versions + extra):
            version = "1.%d" % v
            d = os.path.join(root, name, version)
            write_board(args, d, name, version, args.seed * 100003 + k * 101 + v)
            with open(os.path.join(d, "changelog.txt"), "w") as f:
                f.write("%s  Synthetic board, seed %d.\n" % (version, args.seed))
    return 0


if __name__ == "__main__":
    sys.exit(main())

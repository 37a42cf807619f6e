"""A plain python3 lists the bundled boards, walks one down to its pins,
reads every property on the way and flips a jumper with undo."""
import io
import os
import sys
import unittest
from contextlib import redirect_stdout

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import harness  # noqa: E402
import zrboard  # noqa: E402


class Catalogue(unittest.TestCase):
    def test_the_bundled_boards_are_listed(self):
        boards = zrboard.get_boards()
        names = boards.name
        self.assertIn("korvelhw:tarnwick:1.2", names)
        self.assertEqual(len(names), len(boards))
        self.assertEqual(str(zrboard.get_boards("*QUILLON*")), "['korvelhw:quillon:1.0','korvelhw:quillon:1.1']")
        self.assertEqual(str(zrboard.get_boards("*quillon*", latest=True)), "['korvelhw:quillon:1.1']")
        self.assertEqual(len(zrboard.get_boards("nothing*")), 0)

    def test_the_board_of_objects_and_the_project_board(self):
        board = zrboard.current_board("korvelhw:tarnwick:1.2")
        self.assertEqual(board.name, "korvelhw:tarnwick:1.2")
        self.assertEqual(zrboard.current_board().name, "korvelhw:tarnwick:1.2")
        pins = zrboard.get_board_component_pins(zrboard.get_board_components(board, "*part0*"), "GPIO_LED_*")
        self.assertEqual(zrboard.get_boards(of_objects=pins).name, "korvelhw:tarnwick:1.2")
        self.assertEqual(zrboard.current_board(zrboard.get_boards("*halvet*")).name, "korvelhw:halvet:1.0")
        with self.assertRaisesRegex(zrboard.Error, "current_board: .*nosuch"):
            zrboard.current_board("korvelhw:nosuch:9.9")
        with self.assertRaisesRegex(zrboard.Error, "latest and of_objects can't be given together"):
            zrboard.get_boards(latest=True, of_objects=board)
        with self.assertRaisesRegex(zrboard.Error, "takes components, interfaces, ports, pins or modes, not the board"):
            zrboard.get_boards(of_objects=board)

    def test_parameters(self):
        self.assertEqual(zrboard.get_param("board.validateXML"), "false")
        zrboard.set_param("board.validateXML", True)
        self.assertEqual(zrboard.get_param("board.validateXML"), "true")
        zrboard.set_param("board.validateXML", "false")
        with self.assertRaisesRegex(zrboard.Error, "get_param: unknown parameter 'no.such'"):
            zrboard.get_param("no.such")
        with self.assertRaisesRegex(zrboard.Error, "set_param: parameter 'board.validateXML' takes a"):
            zrboard.set_param("board.validateXML", "maybe")
        with self.assertRaises(TypeError):
            zrboard.set_param(1, 2)


class Walk(unittest.TestCase):
    def setUp(self):
        self.board = zrboard.current_board("korvelhw:tarnwick:1.2")

    def test_down_to_the_pins_with_every_property(self):
        fpga = zrboard.get_board_components(self.board, "*part0*")
        leds = zrboard.get_board_component_interfaces(fpga, "led_8bits")
        ports = zrboard.get_board_interface_ports(leds)
        pins = zrboard.get_board_component_pins(ports)
        self.assertEqual(len(pins), 8)
        self.assertEqual(pins.name, ["GPIO_LED_%d" % i for i in range(8)])
        walked = [self.board, fpga, leds, ports, pins,
                  zrboard.get_board_component_modes(zrboard.get_board_components(self.board)),
                  zrboard.get_board_jumpers(self.board),
                  zrboard.get_board_parameters(self.board), zrboard.get_board_buses(self.board),
                  zrboard.get_board_bus_nets(zrboard.get_board_buses(self.board)),
                  zrboard.get_board_ip_presets(self.board),
                  zrboard.get_board_ip_preferences(zrboard.get_board_component_interfaces(self.board))]
        for objects in walked:
            self.assertGreater(len(objects), 0)
            for one in zrboard.objects(objects):
                classes = one.CLASS
                for name in zrboard.list_property(one):
                    value = zrboard.get_property(name, one)
                    self.assertIsInstance(value, (str, bool, int, type(pins)), (classes, name))
                    if not isinstance(value, type(pins)):
                        self.assertEqual(getattr(one, name), value)
                report = zrboard.report_property(one, return_string=True)
                self.assertTrue(report.startswith("Property"), report)
                self.assertEqual(len(report.splitlines()), len(zrboard.list_property(one)) + 1)

    def test_attributes_of_several_objects_are_lists(self):
        pins = zrboard.get_board_component_pins(zrboard.get_board_components(self.board, "*part0*"), "GPIO_LED_[0-2]")
        self.assertEqual(pins.loc, [p.loc for p in zrboard.objects(pins)])
        self.assertEqual(len(pins.loc), 3)
        self.assertEqual(type(pins.iostandard), list)

    def test_bad_walks_say_what_they_take(self):
        with self.assertRaisesRegex(zrboard.Error, "get_board_jumpers: of_objects takes boards, not the board_component"):
            zrboard.get_board_jumpers(zrboard.get_board_components(self.board))
        with self.assertRaisesRegex(TypeError, "of_objects takes board objects .*, not 'part0'"):
            zrboard.get_board_components("part0")
        with self.assertRaisesRegex(TypeError, "not a container of strings"):
            zrboard.get_board_components(zrboard.list_property(self.board))
        with self.assertRaises(TypeError):
            zrboard.get_board_components()
        self.assertEqual(len(zrboard.get_board_components([])), 0)
        both = zrboard.get_board_components([self.board, self.board])
        self.assertEqual(len(both), len(zrboard.get_board_components(self.board)))

    def test_report_property_prints(self):
        out = io.StringIO()
        with redirect_stdout(out):
            self.assertIsNone(zrboard.report_property(self.board))
        self.assertIn("display_name", out.getvalue())
        with self.assertRaisesRegex(zrboard.Error, "get_property: no property 'nosuch' on board"):
            zrboard.get_property("nosuch", self.board)
        with self.assertRaisesRegex(zrboard.Error, "get_property takes one object, not 3"):
            zrboard.get_property("name", zrboard.get_board_jumpers(self.board))


class Jumpers(unittest.TestCase):
    def test_a_jumper_flips_and_undo_takes_it_back(self):
        board = harness.reference_board()
        jp9 = zrboard.get_board_jumpers(board, "jp9")
        jp7 = zrboard.get_board_jumpers(board, "jp7")
        pmod = zrboard.get_board_buses(board, "part0_pmod_ja_1")
        uart = zrboard.get_board_buses(board, "part0_usb_uart_1")
        self.assertEqual((jp9.current_value, pmod.is_enabled), (False, "false"))
        zrboard.set_property("current_value", True, jp9)
        self.assertEqual((jp9.current_value, pmod.is_enabled), (True, "true"))
        jumpers = zrboard.get_board_jumpers(board, "jp[79]")
        jumpers.current_value = 0
        self.assertEqual((uart.is_enabled, pmod.is_enabled), ("false", "false"))
        zrboard.undo()
        self.assertEqual((uart.is_enabled, pmod.is_enabled), ("true", "true"))
        zrboard.undo()
        self.assertEqual(jp9.current_value, False)
        with self.assertRaisesRegex(zrboard.Error, "undo: nothing to undo"):
            zrboard.undo()
        zrboard.redo()
        self.assertEqual(jp9.current_value, True)
        zrboard.redo()
        self.assertEqual((jp7.current_value, jp9.current_value), (False, False))
        with self.assertRaisesRegex(zrboard.Error, "redo: nothing to redo"):
            zrboard.redo()
        with self.assertRaisesRegex(zrboard.Error, "takes a boolean .*not 'maybe'"):
            zrboard.set_property("current_value", "maybe", jp9)
        with self.assertRaisesRegex(zrboard.Error, "property 'name' is read-only"):
            jp9.name = "x"


if __name__ == "__main__":
    unittest.main()

"""The module as a Python user meets it: containers from real calls, help
texts, and wrong arguments that raise Python exceptions, never crash."""
import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import __main__  # noqa: E402
import zrboard  # noqa: E402


class Containers(unittest.TestCase):
    def setUp(self):
        self.board = zrboard.current_board("korvelhw:tarnwick:1.2")
        self.names = zrboard.list_property(self.board)
        self.addCleanup(lambda: hasattr(__main__, "PyContainerResultDisplayLimit")
                        and delattr(__main__, "PyContainerResultDisplayLimit"))

    def test_indexing_at_and_assignment(self):
        n = len(self.names)
        self.assertEqual(self.names[-1], self.names[n - 1])
        self.assertEqual(self.names.at(0), self.names[0])
        self.assertIsNone(self.names[n])
        self.assertIsNone(self.names.at())
        self.assertIsNone(self.names.at(1, 2))
        self.names[0] = "changed"
        self.assertEqual(self.names[0], "board_name")
        self.assertIsInstance(self.names, zrboard.PyContainer)

    def test_two_loops_share_the_position(self):
        seen = [(a, b) for a in self.names for b in self.names]
        self.assertEqual(len(seen), len(self.names))
        self.assertEqual(list(self.names), list(self.names))

    def test_str_follows_the_limit_in_main(self):
        full = str(self.names)
        self.assertTrue(full.startswith("['board_name','class'") and full.endswith("']"))
        __main__.PyContainerResultDisplayLimit = 20
        # The limit counts the element against the text so far, before its quotes.
        self.assertEqual(str(self.names), "['board_name','class']")
        __main__.PyContainerResultDisplayLimit = -1
        self.assertEqual(str(self.names), full)
        __main__.PyContainerResultDisplayLimit = "20"
        self.assertEqual(str(self.names), full)

    def test_objects_come_apart_only_through_objects(self):
        jumpers = zrboard.get_board_jumpers(self.board)
        with self.assertRaisesRegex(TypeError, "element 0 is the board_jumper 'jp3', not a string"):
            jumpers[0]
        with self.assertRaises(TypeError):
            list(jumpers)
        self.assertEqual([j.name for j in zrboard.objects(jumpers)], ["jp3", "jp7", "jp9"])
        self.assertEqual(str(jumpers), "['jp3','jp7','jp9']")


class Help(unittest.TestCase):
    FUNCTIONS = ["get_boards", "current_board", "refresh_boards", "set_board_repo_paths", "set_param",
                 "get_param", "read_board_file", "get_board_components", "get_board_component_interfaces",
                 "get_board_component_pins", "get_board_interface_ports", "get_board_component_modes",
                 "get_board_jumpers", "get_board_parameters", "get_board_buses", "get_board_bus_nets",
                 "get_board_ip_preferences", "get_board_ip_presets", "get_property", "list_property",
                 "report_property", "set_property", "undo", "redo", "objects"]

    def test_every_function_says_how_it_is_called(self):
        for name in self.FUNCTIONS:
            doc = getattr(zrboard, name).__doc__
            self.assertTrue(doc and doc.startswith(name + "("), name)
        self.assertIn("PyContainer", zrboard.__doc__)
        self.assertTrue(issubclass(zrboard.Error, RuntimeError))


class BadArguments(unittest.TestCase):
    def test_wrong_types_raise(self):
        board = zrboard.current_board("korvelhw:tarnwick:1.2")
        for call in [lambda: zrboard.get_boards(5), lambda: zrboard.get_boards(latest=1, of_objects=5),
                     lambda: zrboard.get_property(None, board), lambda: zrboard.get_property("name", 3),
                     lambda: zrboard.get_board_components(of_objects=[board, "x"]),
                     lambda: zrboard.set_board_repo_paths([1, 2]), lambda: zrboard.set_board_repo_paths(None),
                     lambda: zrboard.current_board(3), lambda: zrboard.objects(zrboard.list_property(board)),
                     lambda: zrboard.PyContainer(nativeObjPtr=board).name]:
            with self.assertRaises((TypeError, zrboard.Error, AttributeError)):
                call()
        with self.assertRaisesRegex(zrboard.Error, "current_board: takes a board or a board name, not the board_jumper"):
            zrboard.current_board(zrboard.get_board_jumpers(board, "jp3"))


if __name__ == "__main__":
    unittest.main()

"""A Python handle whose object was deleted raises zrboard.Error when used,
however the script kept it: a catalogue refresh deletes every user board,
and a board file read again replaces the board read before."""
import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import harness  # noqa: E402
import zrboard  # noqa: E402

GONE = "no longer exists"


class Handles(unittest.TestCase):
    def test_a_refresh_invalidates_the_objects_of_user_boards(self):
        repo = harness.user_repository(self)
        zrboard.set_board_repo_paths([repo])
        self.addCleanup(zrboard.set_board_repo_paths, [])
        board = zrboard.get_boards("*tarnwick:1.3")
        self.assertEqual(board.name, "korvelhw:tarnwick:1.3")
        fpga = zrboard.get_board_components(board, "*part0*")
        pins = zrboard.get_board_component_pins(fpga, "GPIO_LED_*")
        singles = zrboard.objects(pins)
        jumper = zrboard.get_board_jumpers(board, "jp3")
        installed = zrboard.get_boards("*tarnwick:1.2")
        zrboard.set_property("current_value", False, jumper)

        zrboard.refresh_boards()
        with self.assertRaisesRegex(zrboard.Error, "board 'korvelhw:tarnwick:1.3' " + GONE):
            board.name
        with self.assertRaisesRegex(zrboard.Error, "board_component 'korvelhw:tarnwick:part0:1.3' " + GONE):
            zrboard.get_property("name", fpga)
        with self.assertRaisesRegex(zrboard.Error, "board_component_pin 'GPIO_LED_3' " + GONE):
            singles[3].loc
        with self.assertRaisesRegex(zrboard.Error, "board_component_pin 'GPIO_LED_0' " + GONE):
            pins.loc
        with self.assertRaisesRegex(zrboard.Error, GONE):
            zrboard.get_board_jumpers(board)
        with self.assertRaisesRegex(zrboard.Error, GONE):
            jumper.current_value = True
        with self.assertRaisesRegex(zrboard.Error, GONE):
            zrboard.list_property(board)
        # The dead still print, by the names they had.
        self.assertEqual(str(board), "['korvelhw:tarnwick:1.3']")
        with self.assertRaisesRegex(zrboard.Error, "nothing to undo"):
            zrboard.undo()
        self.assertEqual(installed.name, "korvelhw:tarnwick:1.2")
        fresh = zrboard.get_boards("*tarnwick:1.3")
        self.assertEqual(zrboard.get_board_jumpers(fresh, "jp3").name, "jp3")
        with self.assertRaisesRegex(zrboard.Error, GONE):
            board.name

        zrboard.set_board_repo_paths([])
        self.assertEqual(len(zrboard.get_boards("*tarnwick:1.3")), 0)
        with self.assertRaisesRegex(zrboard.Error, GONE):
            fresh.name

    def test_a_board_file_read_again_replaces_the_first(self):
        first = harness.reference_board()
        jp9 = zrboard.get_board_jumpers(first, "jp9")
        second = harness.reference_board()
        with self.assertRaisesRegex(zrboard.Error, "board_jumper 'jp9' " + GONE):
            jp9.name
        self.assertEqual(zrboard.get_board_jumpers(second, "jp9").name, "jp9")
        with self.assertRaisesRegex(zrboard.Error, "read_board_file: could not read the board file"):
            zrboard.read_board_file(os.path.join(harness.DATA, "nowhere", "board.xml"))

    def test_the_project_board_is_chosen_again_after_a_refresh(self):
        repo = harness.user_repository(self)
        zrboard.set_board_repo_paths([repo])
        self.addCleanup(zrboard.set_board_repo_paths, [])
        before = zrboard.current_board("korvelhw:tarnwick:1.3")
        zrboard.refresh_boards()
        with self.assertRaisesRegex(zrboard.Error, GONE):
            before.name
        self.assertEqual(zrboard.current_board().name, "korvelhw:tarnwick:1.3")
        zrboard.current_board("")
        self.assertIsNone(zrboard.current_board())


if __name__ == "__main__":
    unittest.main()

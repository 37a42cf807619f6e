"""What the module's script tests share: the bundled data, the reference
board read from its file, and a user repository with a copy of it."""
import os
import shutil
import tempfile

import zrboard

DATA = os.environ["ZR_DATA_DIRS"].split(":")[0]
REFERENCE = os.path.join(DATA, "boards", "board_files", "tarnwick", "1.2")


def reference_board():
    return zrboard.read_board_file(os.path.join(REFERENCE, "board.xml"))


def user_repository(test):
    """A fresh repository holding the reference board as file version 1.3,
    beside the installed 1.2; removed when the test ends."""
    repo = tempfile.mkdtemp(prefix="zrboard-py-repo-")
    test.addCleanup(shutil.rmtree, repo, True)
    target = os.path.join(repo, "tarnwick", "1.3")
    shutil.copytree(REFERENCE, target)
    path = os.path.join(target, "board.xml")
    with open(path, encoding="utf-8") as f:
        text = f.read()
    with open(path, "w", encoding="utf-8") as f:
        f.write(text.replace("<file_version>1.2</file_version>", "<file_version>1.3</file_version>"))
    return repo

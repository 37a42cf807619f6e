// PyContainer as Python code meets it: indexing and at, the store that does
// nothing, one iteration position for every loop, str and its display limit,
// construction by a script, and attributes that are the elements' properties.
#include "py_fixture.h"

#include "../properties/model_objects.h"

using namespace py_fixture;
using namespace model_objects;

TEST_F(PythonTest, IndexingCountsFromTheEndAndAnswersNoneOutside) {
    bind("c", makePyContainer(strings({"a", "b", "c"})));
    EXPECT_EQ(eval("(len(c), c[0], c[-1], c[-3], c.at(1), c.at(-2))"), "(3, 'a', 'c', 'a', 'b', 'b')");
    clearMessages();
    EXPECT_EQ(eval("(c[3], c[-4], c.at(100))"), "(None, None, None)");
    EXPECT_EQ(ids(), (std::vector<std::string>{"17-2520", "17-2520", "17-2520"}));
    EXPECT_EQ(messages()[0].getMask(), ComMsgMgr::MSG_ERROR);
    EXPECT_EQ(messages()[0].getScope(), "common");
    EXPECT_EQ(eval("c['x']"), "raised TypeError: an integer is required");
}

TEST_F(PythonTest, AtTakesExactlyOnePosition) {
    bind("c", makePyContainer(strings({"a", "b"})));
    clearMessages();
    EXPECT_EQ(eval("(c.at(), c.at(0, 1))"), "(None, None)");
    EXPECT_EQ(ids(), (std::vector<std::string>{"17-2519", "17-2519"}));
    EXPECT_EQ(messages()[0].getMask(), ComMsgMgr::MSG_NOTE);
    EXPECT_EQ(eval("c.at.__doc__"), "'Get element at position'");
}

TEST_F(PythonTest, AssignmentAndDeletionDoNothingAndSayNothing) {
    bind("c", makePyContainer(strings({"a", "b"})));
    clearMessages();
    EXPECT_EQ(run("c[0] = 'x'\nc[5] = 'y'\ndel c[1]"), "ok");
    EXPECT_EQ(eval("(len(c), c[0], c[1])"), "(2, 'a', 'b')");
    EXPECT_TRUE(messages().empty());
}

TEST_F(PythonTest, EveryLoopOverOneContainerSharesItsPosition) {
    bind("c", makePyContainer(strings({"a", "b", "c"})));
    // The inner loop starts over and runs the shared position to the end, so
    // the outer loop ends after its first element.
    EXPECT_EQ(run("out = []\nfor x in c:\n    for y in c:\n        out.append(x + y)"), "ok");
    EXPECT_EQ(eval("out"), "['aa', 'ab', 'ac']");
    EXPECT_EQ(eval("(list(c), list(c))"), "(['a', 'b', 'c'], ['a', 'b', 'c'])");
    EXPECT_EQ(eval("iter(c) is c"), "True");
}

TEST_F(PythonTest, StrStopsAtTheLimitWithoutAMark) {
    bind("c", makePyContainer(strings(std::vector<std::string>(400, "x"))));
    bind("e", makePyContainer(strings({})));
    bind("q", makePyContainer(strings({"it's", "a,b"})));
    // Each element adds ",'x'"; the element that would meet 300 characters is the first left out.
    const std::string shown = "['x'" + [] {
        std::string rest;
        for (int i = 1; i < 75; ++i)
            rest += ",'x'";
        return rest;
    }() + "]";
    EXPECT_EQ(eval("str(c)"), "\"" + shown + "\"");
    EXPECT_EQ(eval("(len(str(c)), str(e), str(q))"), "(301, '[]', \"['it's','a,b']\")");

    PyObject* main = PyImport_AddModule("__main__");
    PyObject_SetAttrString(main, "PyContainerResultDisplayLimit", PyLong_FromLong(10));
    // The limit is met before the quotes are counted.
    EXPECT_EQ(eval("str(c)"), "\"['x','x','x']\"");
    PyObject_SetAttrString(main, "PyContainerResultDisplayLimit", PyLong_FromLong(0));
    EXPECT_EQ(eval("str(q)"), "'[]'");
    clearMessages();
    // Negative, not an int at all, or too big for one: the default, and a note only for the last.
    for (const char* value : {"-5", "'12'", "True", "12.0"}) {
        ASSERT_EQ(run(std::string("import __main__\n__main__.PyContainerResultDisplayLimit = ") + value), "ok");
        EXPECT_EQ(eval("len(str(c))"), "301") << value;
    }
    EXPECT_TRUE(messages().empty());
    ASSERT_EQ(run("import __main__\n__main__.PyContainerResultDisplayLimit = 2 ** 40"), "ok");
    EXPECT_EQ(eval("len(str(c))"), "301");
    EXPECT_EQ(ids(), std::vector<std::string>{"17-3635"});
    EXPECT_EQ(messages()[0].getMask(), ComMsgMgr::MSG_NOTE);
}

TEST_F(PythonTest, AScriptThatBuildsAContainerGetsAnEmptyOne) {
    ASSERT_EQ(run("import zrtest\nPC = zrtest.PyContainer"), "ok");
    clearMessages();
    EXPECT_EQ(eval("[(len(x), str(x), x[0]) for x in (PC(), PC(a=1, b=2), PC(1))]"),
              "[(0, '[]', None), (0, '[]', None), (0, '[]', None)]");
    EXPECT_EQ(ids(), (std::vector<std::string>{"17-2518", "17-2518", "17-2518", "17-2520", "17-2520", "17-2520"}));
    clearMessages();
    // The one keyword, but with anything but a capsule of ours: empty, silently.
    EXPECT_EQ(eval("len(PC(nativeObjPtr=5))"), "0");
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ(eval("(PC.__name__, PC.__doc__, PC.__flags__ & 0x40400)"), "('PyContainer', 'PyContainer object', 263168)");
    EXPECT_EQ(eval("type(PC('x'))"), "<class 'PyContainer'>");
}

TEST_F(PythonTest, AttributesAreThePropertiesOfTheElements) {
    HBOBoard& b = reference();
    PyObjectCollection jumpers;
    for (HBOJumper* j : b.getJumpers())
        jumpers.append(zrc::tcltasks::tclany(j));
    bind("jumpers", makePyContainer(jumpers));
    bind("board", makePyContainer(&b));
    bind("fpga", makePyContainer(component(b, "part0")));
    EXPECT_EQ(eval("(board.name, board.NAME, board.vendor_name)"),
              "('korvelhw:tarnwick:1.2', 'korvelhw:tarnwick:1.2', 'korvelhw')");
    EXPECT_EQ(eval("jumpers.name"), "['jp3', 'jp7', 'jp9']");
    EXPECT_EQ(eval("(jumpers.current_value, fpga.is_enabled)"), "([True, True, False], 'true')");
    // A dynamic name, and a list property as a container of strings.
    EXPECT_EQ(eval("(fpga.schema_version, type(board.compatible_board_revisions).__name__)"),
              "('2.2', 'PyContainer')");
    EXPECT_EQ(eval("board.no_such_property"),
              "raised AttributeError: 'PyContainer' object has no attribute 'no_such_property'");
    EXPECT_EQ(eval("getattr(board, 'at')(0)"),
              "raised TypeError: element 0 is the board 'korvelhw:tarnwick:1.2', not a string: pass the container "
              "to a zrboard function, or take it apart with zrboard.objects()");

    EXPECT_EQ(run("jumpers.current_value = False"), "ok");
    EXPECT_EQ(eval("jumpers.current_value"), "[False, False, False]");
    ASSERT_TRUE(HCPProperty::undo());
    EXPECT_EQ(eval("jumpers.current_value"), "[True, True, False]");
    clearMessages();
    EXPECT_EQ(run("board.name = 'x'"), "raised Error: property 'name' is read-only");
    EXPECT_EQ(run("jumpers.current_value = 'maybe'"),
              "raised Error: property 'current_value' takes a boolean (true, false, 1, 0), not 'maybe'");
    EXPECT_EQ(run("del jumpers.current_value"), "raised Error: property 'current_value' can't be deleted");
    EXPECT_EQ(ids(), (std::vector<std::string>{"17-2525", "17-2525", "17-2525"}));
    EXPECT_EQ(run("board.plain = 1"), "raised AttributeError: 'PyContainer' object has no attribute 'plain'");
    EXPECT_EQ(eval("getattr(board, 'bad\\0name')"), "raised Error: Conversion failed");
}

TEST_F(PythonTest, PropertyReadsInPythonModeLeaveAPythonResult) {
    HBOBoard& b = reference();
    HATAttrAny value;
    Py_CLEAR(zrc::pyinfra::py_manager::py_result);
    ASSERT_TRUE(HCPProperty::getProperty(nullptr, zrc::tcltasks::tclany(&b), "display_name", value));
    PyObject* r = zrc::pyinfra::py_manager::py_result;
    ASSERT_NE(r, nullptr);
    EXPECT_STREQ(PyUnicode_AsUTF8(r), "Tarnwick K160T Reference Board");
    ASSERT_TRUE(HCPProperty::getProperty(nullptr, zrc::tcltasks::tclany(jumper(b, "jp3")), "current_value", value));
    EXPECT_EQ(zrc::pyinfra::py_manager::py_result, Py_True);
    // A Tcl read leaves the Python result alone.
    ASSERT_TRUE(HCPProperty::getProperty(s_interp, zrc::tcltasks::tclany(&b), "display_name", value));
    EXPECT_EQ(zrc::pyinfra::py_manager::py_result, Py_True);
}

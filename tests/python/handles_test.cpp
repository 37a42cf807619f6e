// Python handles of board objects: deleting an object invalidates its Python
// handles after its Tcl ones, a corrupt map is reported and the removal goes
// on, nothing is touched at exit, and a migration pin keeps its handles.
#include "py_fixture.h"

#include <set>

#include "../properties/model_objects.h"
#include "HBMPin.h"
#include "HBONativeCaches.h"
#include "native_handle.h"
#include "py_handle.h"

using namespace py_fixture;
using namespace model_objects;
using zrc::pyinfra::py_handle;
using zrc::pyinfra::py_native_cache;
using zrc::pyinfra::py_native_cache_base;
using zrc::tcltasks::native_cache;
using zrc::tcltasks::native_handle;

namespace {

Tcl_Obj* tclHandleOf(HBOPinProps* pin) {
    Tcl_Obj* h = native_handle::make(typeid(HBOPinProps*), pin, pin->getName());
    Tcl_IncrRefCount(h);
    native_cache<HBOPinProps*>::add(pin, h);
    return h;
}

// What the Python marker saw of the watched object's handles: whether its Tcl handle was dead already.
Tcl_Obj* g_watchedTcl = nullptr;
std::set<PyObject*> g_watchedPython;
std::vector<bool> g_tclDeadAtPythonMark;
void recordingMarker(PyObject* obj) {
    if (g_watchedPython.count(obj))
        g_tclDeadAtPythonMark.push_back(native_handle::is_invalid(g_watchedTcl));
    py_handle::mark_invalid(obj);
}

}  // namespace

TEST_F(PythonTest, DeletingABoardInvalidatesItsTclAndPythonHandlesTogether) {
    HBOBoard* b = &reference();
    HBOBoardComponent* fpga = component(*b, "part0");
    HBOPinProps* reset = fpga->findPin("CPU_RESET");
    PyObjectCollection pins;
    for (const auto& e : fpga->getPins())
        pins.append(zrc::tcltasks::tclany(e.second));
    bind("pins", makePyContainer(pins));
    bind("board", makePyContainer(b));
    bind("again", makePyContainer(b));
    bind("first", makePyContainer(reset));
    Tcl_Obj* tcl = tclHandleOf(reset);
    EXPECT_EQ(py_native_cache<HBOBoard*>::get_n2py_cache().count(b), 2u);
    EXPECT_EQ(py_native_cache<HBOPinProps*>::get_n2py_cache().count(reset), 2u);
    EXPECT_EQ(eval("(board.name, first.name, len(pins))"), "('korvelhw:tarnwick:1.2', 'CPU_RESET', 97)");

    g_watchedTcl = tcl;
    g_watchedPython.clear();
    for (const auto& e : py_native_cache<HBOPinProps*>::get_n2py_cache())
        if (e.first == reset)
            g_watchedPython.insert(e.second);
    g_tclDeadAtPythonMark.clear();
    py_native_cache_base::set_marker(recordingMarker);
    delete m_board;
    m_board = nullptr;
    py_native_cache_base::set_marker(py_handle::mark_invalid);

    // Both Python handles of the pin were marked, each after the Tcl handle.
    EXPECT_EQ(g_tclDeadAtPythonMark, (std::vector<bool>{true, true}));
    EXPECT_TRUE(native_handle::is_invalid(tcl));
    EXPECT_EQ(eval("board.name"), "raised Error: board 'korvelhw:tarnwick:1.2' no longer exists");
    EXPECT_EQ(eval("again.display_name"), "raised Error: board 'korvelhw:tarnwick:1.2' no longer exists");
    EXPECT_EQ(eval("first.loc"), "raised Error: board_component_pin 'CPU_RESET' no longer exists");
    EXPECT_EQ(eval("(len(pins), str(pins)[:25])"), "(97, \"['CPU_RESET','DDR3_ADDR0'\")");
    EXPECT_EQ(eval("pins[0]"), "raised Error: board_component_pin 'CPU_RESET' no longer exists");
    EXPECT_EQ(run("pins.loc = 'x'"), "raised Error: board_component_pin 'CPU_RESET' no longer exists");
    EXPECT_TRUE(py_native_cache<HBOBoard*>::get_n2py_cache().empty());
    EXPECT_TRUE(py_native_cache<HBOBoard*>::get_py2n_cache().empty());
    EXPECT_TRUE(py_native_cache<HBOPinProps*>::get_n2py_cache().empty());
    EXPECT_TRUE(py_native_cache<HBOPinProps*>::get_py2n_cache().empty());
    EXPECT_TRUE(py_native_cache<HBOBoardComponent*>::get_py2n_cache().empty());
    Tcl_DecrRefCount(tcl);
}

TEST_F(PythonTest, AMissingWayBackIsReportedAndTheRemovalGoesOn) {
    HBOParameter* p = new HBOParameter("x", "1", "", "", "", "");
    PyObjectCollection twice;
    twice.append(zrc::tcltasks::tclany(p));
    twice.append(zrc::tcltasks::tclany(p));
    bind("c", makePyContainer(twice));
    auto& py2n = py_native_cache<HBOParameter*>::get_py2n_cache();
    ASSERT_EQ(py2n.size(), 2u);
    py2n.erase(py2n.begin());
    clearMessages();
    delete p;
    ASSERT_EQ(messages().size(), 1u);
    EXPECT_EQ(messages()[0].getText(), "py_native_cache<> corrupt");
    EXPECT_EQ(messages()[0].getMask(), ComMsgMgr::MSG_ERROR);
    EXPECT_EQ(eval("(c.name, c.value)"), "raised Error: board_parameter 'x' no longer exists");
    EXPECT_EQ(run("c.at(1)"), "raised Error: board_parameter 'x' no longer exists");
    EXPECT_TRUE(py_native_cache<HBOParameter*>::get_n2py_cache().empty());
    EXPECT_TRUE(py2n.empty());
}

// A failing Tcl remover must not keep the Python handles alive.
TEST_F(PythonTest, ThePythonRemoverRunsWhenTheTclOneFails) {
    HBOPinProps* pin = new HBOPinProps;
    Tcl_Obj* tcl = tclHandleOf(pin);
    native_cache<HBOPinProps*>::get_t2n_cache().erase(tcl);
    bind("c", makePyContainer(pin));
    int thrower = ComMsgMgr::addListener([](const ComMsgMgrInstance& m) {
        if (m.getText() == "native_cache<> corrupt")
            throw std::runtime_error("a listener failed");
    });
    delete pin;
    ComMsgMgr::removeListener(thrower);
    EXPECT_EQ(eval("c.name"), "raised Error: board_component_pin '' no longer exists");
    EXPECT_TRUE(py_native_cache<HBOPinProps*>::get_n2py_cache().empty());
    native_cache<HBOPinProps*>::get_n2t_cache().clear();
    Tcl_DecrRefCount(tcl);
    Tcl_DecrRefCount(tcl);
}

TEST_F(PythonTest, AtExitTheMapsAreLeftAloneAndTheObserversCleared) {
    HBOJumper* j = new HBOJumper;
    bind("c", makePyContainer(j));
    ASSERT_TRUE(py_native_cache<HBOJumper*>::observers());
    py_native_cache_base::set_py_exiting(true);
    delete j;
    EXPECT_FALSE(py_native_cache<HBOJumper*>::observers());
    py_native_cache_base::set_py_exiting(false);
    EXPECT_EQ(py_native_cache<HBOJumper*>::get_py2n_cache().size(), 1u);
    EXPECT_EQ(py_native_cache<HBOJumper*>::get_n2py_cache().size(), 1u);
    // The handle wasn't told; forget it by hand, as its object is gone.
    py_native_cache<HBOJumper*>::get_n2py_cache().clear();
    py_native_cache<HBOJumper*>::get_py2n_cache().clear();
}

TEST_F(PythonTest, AMigrationPinKeepsItsHandlesWhenDeleted) {
    HBMPin* pin = new HBMPin("GPIO_LED_0", "4", "E19", {});
    bind("c", makePyContainer(pin));
    EXPECT_TRUE(py_native_cache<HBMPin*>::observers());
    ASSERT_EQ(py_native_cache<HBMPin*>::get_n2py_cache().count(pin), 1u);
    PyObject* handle = py_native_cache<HBMPin*>::get_n2py_cache().find(pin)->second;
    EXPECT_EQ(py_native_cache<HBMPin*>::get_py2n_cache().at(handle), pin);
    delete pin;
    EXPECT_FALSE(py_handle::is_invalid(handle));
    EXPECT_EQ(py_native_cache<HBMPin*>::get_n2py_cache().size(), 1u);
    py_native_cache<HBMPin*>::get_n2py_cache().clear();
    py_native_cache<HBMPin*>::get_py2n_cache().clear();
}

// Script handles of model objects: every handle of an object turns invalid
// when the object is deleted, the maps are left clean, a corrupt map is
// reported without stopping the removal, and nothing is touched at exit.
#include "model_objects.h"
#include "property_fixture.h"

#include "HBMPin.h"
#include "HBOImage.h"
#include "HBONativeCaches.h"
#include "native_handle.h"

using namespace property_fixture;
using namespace model_objects;
using zrc::tcltasks::native_cache;
using zrc::tcltasks::native_cache_base;
using zrc::tcltasks::native_handle;

namespace {

// A handle as the Tcl layer makes one; the test keeps a reference of its own.
template <class T>
Tcl_Obj* handleOf(T* object, const std::string& text) {
    Tcl_Obj* h = native_handle::make(typeid(T*), object, text);
    Tcl_IncrRefCount(h);
    native_cache<T*>::add(object, h);
    return h;
}

template <class T>
bool cached(const T* object) {
    return native_cache<T*>::get_n2t_cache().count(object) != 0;
}

// Both maps of every board type are empty.
bool allEmpty() {
    return native_cache<HBOBoard*>::get_t2n_cache().empty() && native_cache<HBOBoardComponent*>::get_t2n_cache().empty() &&
           native_cache<HBOBusIf*>::get_t2n_cache().empty() && native_cache<HBOModelPort*>::get_t2n_cache().empty() &&
           native_cache<HBOPinProps*>::get_t2n_cache().empty() && native_cache<HBOJumper*>::get_t2n_cache().empty() &&
           native_cache<HBOBoardBusNet*>::get_t2n_cache().empty() &&
           native_cache<HBOBoard*>::get_n2t_cache().empty() && native_cache<HBOJumper*>::get_n2t_cache().empty();
}

}  // namespace

TEST_F(PropertyTest, DeletingABoardInvalidatesTheHandlesOfEverythingInIt) {
    HBOBoard* b = &reference();
    HBOBoardComponent* fpga = component(*b, "part0");
    HBOBusIf* ddr = busIf(*b, "ddr3_sdram");
    HBOModelPort* addr = ddr->getPortMaps().at("ddr3_addr");
    HBOPinProps* pin = fpga->findPin("CPU_RESET");
    HBOBoardBusNet* net = bus(*b, "part0_fmc_lpc_1")->getBoardBusNets().at(0);
    HBOJumper* jp3 = jumper(*b, "jp3");
    // The board with two handles: both must go.
    std::vector<Tcl_Obj*> handles = {handleOf(b, "korvelhw:tarnwick:1.2"), handleOf(b, "again"),
                                     handleOf(fpga, "part0"),  handleOf(ddr, "ddr3_sdram"),
                                     handleOf(addr, "ddr3_addr"), handleOf(pin, "CPU_RESET"),
                                     handleOf(net, "net0"),   handleOf(jp3, "jp3")};
    for (Tcl_Obj* h : handles)
        EXPECT_NE(native_handle::native(h), nullptr);
    EXPECT_EQ(native_cache<HBOBoard*>::get_n2t_cache().count(b), 2u);
    EXPECT_EQ(handles[0]->refCount, 2);

    // A write leaves history that names the board's jumpers; it can't outlive them.
    HCPProperty::Setter::Objects one;
    one.append(zrc::tcltasks::tclany(jp3));
    HCPProperty::setProperty(nullptr, one, "current_value", HATAttr("0"));
    ASSERT_TRUE(HCPProperty::canUndo());

    delete m_board;
    m_board = nullptr;
    for (Tcl_Obj* h : handles) {
        EXPECT_TRUE(native_handle::is_invalid(h)) << Tcl_GetString(h);
        EXPECT_EQ(h->refCount, 1) << Tcl_GetString(h);
        Tcl_DecrRefCount(h);
    }
    EXPECT_TRUE(allEmpty());
    EXPECT_FALSE(HCPProperty::canUndo());
}

TEST_F(PropertyTest, AMissingWayBackIsReportedAndTheRemovalGoesOn) {
    HBOParameter* p = new HBOParameter("x", "1", "", "", "", "");
    Tcl_Obj* lost = handleOf(p, "x");
    Tcl_Obj* kept = handleOf(p, "x");
    native_cache<HBOParameter*>::get_t2n_cache().erase(lost);
    clearMessages();
    delete p;
    ASSERT_EQ(messages().size(), 1u);
    EXPECT_EQ(messages()[0].getText(), "native_cache<> corrupt");
    EXPECT_EQ(messages()[0].getMask(), ComMsgMgr::MSG_ERROR);
    EXPECT_TRUE(native_handle::is_invalid(lost));
    EXPECT_TRUE(native_handle::is_invalid(kept));
    EXPECT_TRUE(native_cache<HBOParameter*>::get_n2t_cache().empty());
    EXPECT_TRUE(native_cache<HBOParameter*>::get_t2n_cache().empty());
    Tcl_DecrRefCount(lost);
    Tcl_DecrRefCount(kept);
}

TEST_F(PropertyTest, AtExitTheMapsAreLeftAloneAndTheObserversCleared) {
    HBOJumper* j = new HBOJumper;
    Tcl_Obj* h = handleOf(j, "j");
    ASSERT_TRUE(native_cache<HBOJumper*>::observers());
    native_cache_base::set_tcl_exiting(true);
    delete j;
    native_cache_base::set_tcl_exiting(false);
    EXPECT_FALSE(native_cache<HBOJumper*>::observers());
    EXPECT_FALSE(native_handle::is_invalid(h));
    EXPECT_EQ(native_cache<HBOJumper*>::get_t2n_cache().size(), 1u);
    // The next use of the cache makes it trusted again; clean up by hand.
    native_cache<HBOJumper*>::get_n2t_cache().clear();
    native_cache<HBOJumper*>::get_t2n_cache().clear();
    Tcl_DecrRefCount(h);
    Tcl_DecrRefCount(h);
}

TEST_F(PropertyTest, AHandleThatScriptsReshapeIsLeftAloneOnRemoval) {
    HBOImage* image = new HBOImage;
    Tcl_Obj* h = handleOf(image, "a b");
    int n = 0;
    // Used as a list, the handle becomes a list: no longer a handle at all.
    ASSERT_EQ(Tcl_ListObjLength(nullptr, h, &n), TCL_OK);
    EXPECT_FALSE(native_handle::is_handle(h));
    Tcl_Obj* copy = Tcl_DuplicateObj(handleOf(image, "c"));
    EXPECT_FALSE(native_handle::is_handle(copy));
    delete image;
    EXPECT_TRUE(native_cache<HBOImage*>::get_n2t_cache().empty());
    EXPECT_EQ(std::string(Tcl_GetString(h)), "a b");
    Tcl_DecrRefCount(h);
    Tcl_DecrRefCount(copy);
}

// The migration tool's pins have a cache of their own, but deleting a pin
// leaves it alone: the tool's pins are never deleted under a script.
TEST_F(PropertyTest, AMigrationPinKeepsItsHandlesWhenDeleted) {
    HBMPin* pin = new HBMPin("GPIO_LED_0", "4", "E19", {});
    Tcl_Obj* h = handleOf(pin, "GPIO_LED_0");
    EXPECT_TRUE(native_cache<HBMPin*>::observers());
    EXPECT_EQ(native_cache<HBMPin*>::get_t2n_cache().at(h), pin);
    delete pin;
    EXPECT_FALSE(native_handle::is_invalid(h));
    EXPECT_EQ(native_cache<HBMPin*>::get_n2t_cache().size(), 1u);
    native_cache<HBMPin*>::get_n2t_cache().clear();
    native_cache<HBMPin*>::get_t2n_cache().clear();
    Tcl_DecrRefCount(h);
    Tcl_DecrRefCount(h);
}

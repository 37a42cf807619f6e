// Invented boards built in code, and the small helpers the model tests share.
//
// The evaluation board:
//   fpga1 (fpga)  --fpga1_ddr  {j1 true}-->  ddr_chip (memory, mode ddr_mode {J1 true})
//                 --fpga1_leds {j2 true}-->  leds     (chip,   mode led_mode, no dependency)
//                 --fpga1_fmc1 (none)   -->  fmc1     (connector fmc_hpc)
//   spare (chip): no connection; jumpers j1 = true, j2 = false
// fpga1 carries the interfaces ddr_mem (of ddr_chip), user_leds (of leds) and
// ref_clock (of nothing); fmc1 carries fmc_gpio. The board does not own its
// jumpers, images and presets, so the fixture keeps them and frees them after it.
#ifndef BOARD_FIXTURE_H
#define BOARD_FIXTURE_H

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOComponentMode.h"
#include "HBOImage.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBOModelPort.h"
#include "HBOParameter.h"
#include "HBOPinProps.h"
#include "HBOPortMap.h"

namespace board_fixture {

typedef std::vector<std::string> Names;

// "v:l:n:r" as four fields, missing ones empty.
inline Names vlnvParts(const std::string& vlnv) {
    Names parts;
    boost::algorithm::split(parts, vlnv, boost::algorithm::is_any_of(":"));
    parts.resize(4);
    return parts;
}

template <class T>
Names namesOf(const std::vector<T*>& objects) {
    Names out;
    for (const T* o : objects)
        out.push_back(o->getName());
    return out;
}

// What `f` writes to standard error.
template <class F>
std::string stderrOf(F f) {
    testing::internal::CaptureStderr();
    f();
    return testing::internal::GetCapturedStderr();
}

// Records every delivered message while alive and keeps them off standard error;
// a debug channel named here is switched on for the time.
struct MessageRecorder {
    explicit MessageRecorder(const std::string& channel = "") : channel(channel), print(ComMsgMgr::printToStderr()) {
        ComMsgMgr::setPrintToStderr(false);
        ComMsgMgr::enableScope(channel, !channel.empty());
        handle = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) { messages.push_back(m); });
    }
    ~MessageRecorder() {
        ComMsgMgr::removeListener(handle);
        ComMsgMgr::enableScope(channel, false);
        ComMsgMgr::setPrintToStderr(print);
    }
    // The messages of one id, and the first arguments of the lines of the channel.
    std::vector<ComMsgMgrInstance> withId(const std::string& id) const {
        std::vector<ComMsgMgrInstance> out;
        for (const ComMsgMgrInstance& m : messages)
            if (m.getId() == id)
                out.push_back(m);
        return out;
    }
    Names channelLines() const {
        Names out;
        for (const ComMsgMgrInstance& m : messages)
            if (m.getChannel() == channel && !m.getArgs().empty())
                out.push_back(m.getArgs()[0]);
        return out;
    }
    const std::string channel;
    const bool print;
    int handle = 0;
    std::vector<ComMsgMgrInstance> messages;
};

inline HBOPinProps* makePin(const std::string& name, int index) {
    HBOPinProps* p = new HBOPinProps();
    p->setName(name);
    p->setPinIndex(index);
    return p;
}

inline HBOBusIf* makeBusIf(const std::string& name, const std::string& vlnv) {
    HBOBusIf* b = new HBOBusIf();
    b->setName(name);
    const Names f = vlnvParts(vlnv);
    b->setAbstractTypeVendor(f[0]);
    b->setAbstractTypeLibrary(f[1]);
    b->setAbstractTypeName(f[2]);
    b->setAbstractTypeVersion(f[3]);
    return b;
}

struct FixtureBoard {
    // Declared before the board so that they outlive it.
    std::vector<std::unique_ptr<HBOJumper>> jumpers;
    std::vector<std::unique_ptr<HBOImage>> images;
    std::vector<std::unique_ptr<HBOIpPreset>> presets;
    std::unique_ptr<HBOBoard> board;

    HBOBoard& operator*() const { return *board; }
    HBOBoard* operator->() const { return board.get(); }
    HBOBoard* get() const { return board.get(); }

    HBOJumper* addJumper(const std::string& name, bool value) {
        jumpers.emplace_back(new HBOJumper());
        HBOJumper* j = jumpers.back().get();
        j->setName(name);
        j->setDefaultValue(value);
        j->setOwner(board.get());
        j->setDescription("jumper " + name);
        board->addJumper(j);
        return j;
    }

    HBOIpPreset* makePreset(const std::string& vlnv, const std::string& ipInterface) {
        presets.emplace_back(new HBOIpPreset());
        HBOIpPreset* p = presets.back().get();
        const Names parts = vlnvParts(vlnv);
        p->setVendor(parts[0]);
        p->setLibrary(parts[1]);
        p->setName(parts[2]);
        p->setVersion(parts[3]);
        p->setIpInterface(ipInterface);
        p->setOwner(board.get());
        return p;
    }
};

// A component of `board`, named after the board's identity when it has one.
inline HBOBoardComponent* addComponent(HBOBoard& board, const std::string& name, const std::string& type,
                                       const std::string& subType = std::string()) {
    HBOBoardComponent* c = new HBOBoardComponent();
    c->setComponentName(name);
    c->setType(type);
    c->setSubType(subType);
    if (!board.getVendor().empty())
        c->setName(board.getVendor(), board.getBoardName(), name, board.getVersion());
    c->setBoard(&board);
    board.addBoardComponent(c);
    return c;
}

inline HBOBusIf* addInterface(HBOBoardComponent* c, const std::string& name, const std::string& ofComponent) {
    HBOBusIf* i = makeBusIf(name, "korvelhw:interface:" + name + "_rtl:1.0");
    i->setOfComponent(ofComponent);
    i->setOwnerComponent(c);
    c->setBusIf(name, i);
    return i;
}

// A port of `busIf` whose pins are the component pins named in `pins`, by position.
inline HBOModelPort* addPort(HBOBusIf* busIf, const std::string& name, const Names& pins) {
    HBOModelPort* port = new HBOModelPort();
    port->setName(name);
    port->setOwner(busIf);
    port->setOwnerBusIf(busIf->getName(), name);
    for (std::size_t i = 0; i < pins.size(); ++i)
        port->addPinPortMap(std::to_string(i), pins[i]);
    busIf->addPort(port);
    return port;
}

inline HBOPinProps* addPin(HBOBoardComponent* c, const std::string& name, int index) {
    HBOPinProps* p = makePin(name, index);
    p->setOwner(c);
    c->addPin(p);
    return p;
}

inline HBOBoardBusNet* addNet(HBOBoardBus& bus, const std::string& name, int c1, int c2) {
    HBOBoardBusNet* n = new HBOBoardBusNet();
    n->setName(name);
    n->setBoardBus(bus.getName());
    n->setC1PinIndex(c1);
    n->setC2PinIndex(c2);
    n->setOwner(&bus);
    bus.addBoardBusNet(n);
    return n;
}

// A connection whose nets join pins of equal index, 0 to nets - 1.
inline HBOBoardBus* addConnection(HBOBoard& board, const std::string& name, const std::string& comp1,
                                  const std::string& comp2, const std::string& dependency, int nets) {
    HBOBoardBus* b = new HBOBoardBus();
    b->setName(name);
    b->setConnectionName(name);
    b->setComp1(comp1);
    b->setComp2(comp2);
    b->setEnablementDependency(dependency);
    b->setOwner(&board);
    b->setStopIndexComp1(nets - 1);
    b->setStopIndexComp2(nets - 1);
    for (int i = 0; i < nets; ++i)
        addNet(*b, name + "_" + std::to_string(i), i, i);
    board.addBus(b);
    return b;
}

inline HBOComponentMode* addMode(HBOBoardComponent* c, const std::string& name, const std::string& dependency) {
    HBOComponentMode* m = new HBOComponentMode();
    m->setName(name);
    m->setEnablementDependency(dependency);
    m->setOwnerComponent(c);
    c->addComponentMode(m);
    return m;
}

inline FixtureBoard makeEmptyBoard(const std::string& vendor = "Acme", const std::string& name = "Lynx_Eval",
                                   const std::string& version = "1.2") {
    FixtureBoard f;
    f.board.reset(new HBOBoard());
    f.board->setName(vendor, name, version);
    return f;
}

// The evaluation board drawn at the top of this file.
inline FixtureBoard makeEvalBoard() {
    FixtureBoard f = makeEmptyBoard();
    HBOBoard& b = *f.board;
    b.setDescription("An invented evaluation board");
    b.setBoardFile("/repo/acme/lynx_eval/1.2/board.xml");
    b.addParameter(new HBOParameter("heat_sink", "passive", "string", "", "", "true"));
    b.addParameter(new HBOParameter("fan", "none", "string", "", "", "false"));
    f.addJumper("j1", true);
    f.addJumper("j2", false);

    HBOBoardComponent* fpga = addComponent(b, "fpga1", "fpga");
    fpga->setPartName("zr5100-pk324-1");
    fpga->addAdditionalSupportedPart("zr5200-pk484-2");
    fpga->setVLNV("Acme", "Lynx_Lib", "Lynx_Eval", "Rev_B");
    addInterface(fpga, "ddr_mem", "ddr_chip");
    addInterface(fpga, "user_leds", "leds");
    addInterface(fpga, "ref_clock", "");
    for (int i = 0; i < 4; ++i)
        addPin(fpga, "P" + std::to_string(i), i);
    addMode(addComponent(b, "ddr_chip", "memory"), "ddr_mode", "{J1 true}");
    addMode(addComponent(b, "leds", "chip"), "led_mode", "");
    addInterface(addComponent(b, "fmc1", "connector", "fmc_hpc"), "fmc_gpio", "");
    addComponent(b, "spare", "chip");

    addConnection(b, "fpga1_ddr", "fpga1", "ddr_chip", "{j1 true}", 2);
    addConnection(b, "fpga1_leds", "fpga1", "leds", "{j2 true}", 1);
    addConnection(b, "fpga1_fmc1", "fpga1", "fmc1", "", 1);

    HBOIpPreset* preset = f.makePreset("korvelhw:ip:memctl:2.1", "");
    preset->setPresetProcName("ddr_preset");
    preset->setParam("CONFIG.XML_INPUT_FILE", "memctl.prj");
    b.setIpPreset("ddr_preset", {preset});
    HBOIpPreset* assoc = f.makePreset("korvelhw:ip:gpio:2.0", "GPIO");
    assoc->setPresetorAssocIntf("assoc_intf");
    assoc->setParam("user_leds", "0");
    assoc->setParam("fmc_gpio", "1");
    b.setIpAssociatedInterface("gpio_rule", {assoc});
    return f;
}

// A reference board for joining: fpga1 with pins F0, F1, F7; fmc1 (fmc_hpc)
// whose pins 0 and 1 are wired to F0 and F1; fmc2 (fmc_hpc) with pins 0, 1
// and 9 wired to F0, F1 and F7; pmod1 (pmod) with pin 0 wired to F0.
// Connections fpga1-fmc1 and fmc1-fmc2.
inline FixtureBoard makeCarrierBoard() {
    FixtureBoard f = makeEmptyBoard("Acme", "Carrier", "1.0");
    HBOBoard& b = *f.board;
    b.setBoardSchemaVersion("2.0");
    HBOBoardComponent* fpga = addComponent(b, "fpga1", "fpga");
    fpga->setPartName("zr5100-pk324-1");
    for (const char* pin : {"F0", "F1", "F7"})
        addPin(fpga, pin, 100 + pin[1] - '0');
    HBOBoardComponent* fmc1 = addComponent(b, "fmc1", "connector", "fmc_hpc");
    addPin(fmc1, "F0", 0);
    addPin(fmc1, "F1", 1);
    HBOBoardComponent* fmc2 = addComponent(b, "fmc2", "connector", "fmc_hpc");
    addPin(fmc2, "F0", 0);
    addPin(fmc2, "F1", 1);
    addPin(fmc2, "F7", 9);
    addPin(addComponent(b, "pmod1", "connector", "pmod"), "F0", 0);
    addConnection(b, "fpga1_fmc1", "fpga1", "fmc1", "", 1);
    addConnection(b, "fmc1_fmc2", "fmc1", "fmc2", "", 1);
    return f;
}

// A daughter board: connector j1 (fmc_lpc) with pins D0, D1, D9 at indices 0,
// 1, 9; interface gpio on D0 and D1, interface aux on D9; a chip "led" wired
// to j1 by a connection that needs jumper jd on.
inline FixtureBoard makeCardBoard(const std::string& version = "1.0") {
    FixtureBoard f = makeEmptyBoard("Acme", "Card", version);
    HBOBoard& b = *f.board;
    b.setBoardSchemaVersion("2.0");
    HBOBoardComponent* j1 = addComponent(b, "j1", "connector", "fmc_lpc");
    addPin(j1, "D0", 0)->setPinIOStandard("LVCMOS18");
    addPin(j1, "D1", 1);
    addPin(j1, "D9", 9);
    addPort(addInterface(j1, "gpio", ""), "gpio_io", {"D0", "D1"});
    addPort(addInterface(j1, "aux", ""), "aux_io", {"D9"});
    addComponent(b, "led", "chip");
    f.addJumper("jd", true);
    addConnection(b, "j1_led", "j1", "led", "{jd true}", 1);
    return f;
}

}  // namespace board_fixture

#endif

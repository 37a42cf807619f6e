// Deep and rebased copies of a component, its ownership, its display, and the fill of
// pins from an XML constraints file.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardCompMuxPosition.h"
#include "HBOBoardComponent.h"
#include "HBOBoardComponentDriver.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOImage.h"
#include "HBOModelPort.h"
#include "HBOParameter.h"
#include "HBOPinProps.h"
#include "HBOPortMap.h"

namespace fs = boost::filesystem;

namespace {

HBOPinProps* makePin(const std::string& name, int index) {
    HBOPinProps* p = new HBOPinProps();
    p->setName(name);
    p->setPinIndex(index);
    return p;
}

// A connector of a daughter board carrying one interface, a mode, pins and the rest.
struct CopyFixture : ::testing::Test {
    HBOBoard daughter;
    HBOBoard merged;
    HBOBoardComponent* conn = nullptr;
    HBOModelPort dq;

    void SetUp() override {
        daughter.setName("acme", "dtr", "1.0");
        merged.setName("Acme", "Base", "2.0B");
        conn = new HBOBoardComponent();
        daughter.addBoardComponent(conn);
        conn->setBoard(&daughter);
        conn->setComponentName("fmc");
        conn->setName("acme:dtr:fmc:1.0");
        conn->setDisplayName("FMC Card");
        conn->setType("connector");
        conn->setSubType("fmc_hpc");
        conn->setPartName("card-1");
        conn->setPinMapFile("part0_pins.xml");
        conn->setIsEnabled("false");
        conn->setUserDefinedFlag(true);
        conn->setRtlFileParseStatus(true);
        conn->addAdditionalSupportedPart("card-2");
        conn->addParameter(new HBOParameter("connects_with", "fmc_hpc0", "string", "", "", "true"));
        conn->addImage(new HBOImage("top", "Top view", "picture", "640x480", "photo"));
        conn->addJtagPosition("chain1", "1");
        conn->addIICPosition(2, new HBOBoardCompMuxPosition());
        conn->addIICPosition(2, new HBOBoardCompMuxPosition());  // replaces and frees the first
        conn->addDriver(new HBOBoardComponentDriver());
        HBOBoardComponent::DciCascadeConstr dci;
        dci.masterBank = 44;
        dci.slaveBanks = {45, 46};
        HBOBoardComponent::InternalVrefConstr vref;
        vref.bank = 65;
        vref.voltage = 0.84f;
        conn->setDesignConstrs({dci, vref});

        HBOComponentMode* mode = new HBOComponentMode();
        mode->setName("ddr_mode");
        mode->setOwnerComponent(conn);
        mode->addInterface(0, "ddr", false);
        mode->addPreferredIp(new HBOBusIfPreference());
        conn->addComponentMode(mode);

        HBOBusIf* ddr = new HBOBusIf();
        ddr->setName("ddr");
        ddr->setDisplayName("DDR");
        ddr->setOwnerComponent(conn);
        dq.setName("ddr_dq");
        dq.setOwner(ddr);
        ddr->populatePortMap(new HBOPortMap("DQ", "ddr_dq"));
        ddr->addPort(&dq);
        conn->setBusIf("ddr", ddr);
        conn->setModelPort("ddr_dq", &dq);

        HBOPinProps* p1 = makePin("fmc_1", 1);
        p1->setOwner(conn);
        p1->setPinIOStandard("LVCMOS18");
        conn->addPin(p1);
        conn->addPin(makePin("fmc_2", 2));
    }
};

}  // namespace

TEST_F(CopyFixture, RebaseRenamesForTheMergedBoard) {
    HBOBoardComponent* copy = new HBOBoardComponent(*conn, &merged, "FMC0");
    EXPECT_EQ("fmc0_fmc", copy->getComponentName());
    EXPECT_EQ("FMC Card (FMC0)", copy->getDisplayName());
    EXPECT_EQ("acme:base:fmc0_fmc:2.0b", copy->getName());
    EXPECT_EQ(&merged, copy->getBoard());
    EXPECT_EQ("fmc_hpc", copy->getSubType());
    EXPECT_EQ("card-1", copy->getPartName());
    EXPECT_EQ("false", copy->getIsEnabled());
    EXPECT_TRUE(copy->isUserDefined());
    EXPECT_TRUE(copy->getRtlFileParseStatus());
    EXPECT_EQ("1", copy->getJtagPosition("chain1"));
    EXPECT_TRUE(copy->isPartNameSupported("card-2"));

    ASSERT_EQ(1u, copy->getParameters().size());
    EXPECT_NE(conn->getParameters()[0], copy->getParameters()[0]);
    EXPECT_EQ("connects_with", copy->getParameters()[0]->getName());
    ASSERT_EQ(1u, copy->getImages().size());
    EXPECT_EQ("640x480", copy->getImages()[0]->getResolution());
    EXPECT_EQ("top", copy->getImages()[0]->getName());

    ASSERT_EQ(1u, copy->getComponentModes().size());
    const HBOComponentMode* mode = copy->getComponentModes()[0];
    EXPECT_EQ("FMC0_ddr_mode", mode->getName());
    EXPECT_EQ(copy, mode->getOwnerComponent());
    EXPECT_EQ(&merged, mode->getPreferredIps()[0]->getOwner());

    HBOBusIf* ddr = copy->getBusIfByName("fmc0_ddr");
    ASSERT_NE(nullptr, ddr);
    EXPECT_EQ(copy, ddr->getOwnerComponent());
    EXPECT_EQ("DDR (FMC0)", ddr->getDisplayName());
    EXPECT_EQ(1u, ddr->getPortMaps().count("FMC0_ddr_dq"));
    EXPECT_EQ(nullptr, copy->getBusIfByName("ddr"));

    // Not carried over: model ports, positions, drivers, design constraints.
    ASSERT_EQ(2u, conn->getDesignConstrs().size());
    EXPECT_EQ(44, boost::get<HBOBoardComponent::DciCascadeConstr>(conn->getDesignConstrs()[0]).masterBank);
    EXPECT_TRUE(copy->getModelPorts().empty());
    EXPECT_TRUE(copy->getIICPositions().empty());
    EXPECT_TRUE(copy->getDrivers().empty());
    EXPECT_TRUE(copy->getDesignConstrs().empty());

    // Pins are cloned into the map, but the table still shows the source's pins.
    HBOPinProps* clone = copy->findPin("fmc_1");
    ASSERT_NE(nullptr, clone);
    EXPECT_NE(conn->findPin("fmc_1"), clone);
    EXPECT_EQ(copy, clone->getOwner());
    EXPECT_EQ("LVCMOS18", clone->getPinIOStandard());
    EXPECT_EQ(conn->findPin("fmc_1"), copy->getPinByIndex(1));
    EXPECT_EQ(2u, copy->getPins().size());

    // Adding a pin of a cloned name replaces the clone only; the source keeps its own.
    copy->addPin(makePin("fmc_1", 1));
    EXPECT_EQ(1, conn->findPin("fmc_1")->getPinIndex());
    EXPECT_EQ(copy->findPin("fmc_1"), copy->getPinByIndex(1));
    delete copy;
}

TEST_F(CopyFixture, EmptyPrefixKeepsAllNames) {
    HBOBoardComponent copy(*conn, &merged, "");
    EXPECT_EQ("fmc", copy.getComponentName());
    EXPECT_EQ("FMC Card", copy.getDisplayName());
    EXPECT_EQ("acme:dtr:fmc:1.0", copy.getName());
    EXPECT_NE(nullptr, copy.getBusIfByName("DDR"));
    EXPECT_EQ("ddr_mode", copy.getComponentModes()[0]->getName());
}

// A component frees the ports it adopted, each once; a copy adopts the ports of its
// interface copies and leaves the source's ports alone.
TEST_F(CopyFixture, PortsAreAdoptedOnceAndCopiesOwnTheirClones) {
    EXPECT_FALSE(conn->adoptModelPort(nullptr));
    HBOModelPort* extra = new HBOModelPort();
    EXPECT_TRUE(conn->adoptModelPort(extra));
    EXPECT_FALSE(conn->adoptModelPort(extra));

    HBOBoardComponent* copy = new HBOBoardComponent(*conn, &merged, "");
    const auto& ports = copy->getBusIfByName("ddr")->getPortMaps();
    ASSERT_EQ(1u, ports.size());
    HBOModelPort* clone = ports.begin()->second;
    EXPECT_NE(&dq, clone);
    EXPECT_FALSE(copy->adoptModelPort(clone));  // already the copy's
    delete copy;
    EXPECT_EQ("ddr_dq", dq.getName());
    EXPECT_EQ(&dq, conn->getBusIfByName("ddr")->getPortMaps().begin()->second);
}

TEST_F(CopyFixture, DisplayPrintsTheSectionsInOrder) {
    testing::internal::CaptureStderr();
    conn->display(1);
    const std::string text = testing::internal::GetCapturedStderr();
    EXPECT_EQ(0u, text.find("-Component - name:acme:dtr:fmc:1.0, mode:connector, vlnv:fmc_hpc, "
                            "preferred IP:card-1, of_component:part0_pins.xml \n---Parameters:\n"));
    const size_t modes = text.find("\n---Component modes:\n");
    const size_t intfs = text.find("\n---Interfaces:\n");
    const size_t ports = text.find("\n---Model Ports:\n");
    const size_t pins = text.find("\n-Pins:\nPin - index:1, name:fmc_1, iostd:LVCMOS18\n");
    EXPECT_NE(std::string::npos, modes);
    EXPECT_LT(modes, intfs);
    EXPECT_LT(intfs, ports);
    EXPECT_LT(ports, pins);
    EXPECT_NE(std::string::npos, pins);
}

namespace {

// A constraints file in a scratch directory, and a component with three model ports.
struct ConstraintsFixture : ::testing::Test {
    fs::path dir;
    HBOBoardComponent part;
    HBOModelPort down;   // 7 downto 0
    HBOModelPort up;     // 0 to 7
    HBOModelPort high;   // 15 downto 8
    HBOModelPort clk;    // scalar
    std::vector<std::string> errors;
    int listener = 0;

    void SetUp() override {
        dir = fs::temp_directory_path() / fs::unique_path("zr_constr_%%%%-%%%%");
        fs::create_directories(dir);
        vector(down, "data", 7, 0);
        vector(up, "addr", 0, 7);
        vector(high, "hi", 15, 8);
        clk.setName("clk");
        clk.setIsVector(false);
        clk.populatePinProps();
        part.setModelPort("clk", &clk);
        listener = ComMsgMgr::addListener([this](const ComMsgMgrInstance& m) {
            if (!m.getId().empty())
                errors.push_back(m.getId() + ":" + (m.getArgs().empty() ? "" : m.getArgs()[0]));
        });
    }
    void TearDown() override {
        ComMsgMgr::removeListener(listener);
        boost::system::error_code ec;
        fs::remove_all(dir, ec);
    }
    void vector(HBOModelPort& port, const std::string& name, int left, int right) {
        port.setName(name);
        port.setIsVector(true);
        port.setRange(left, right);
        port.populatePinProps();
        part.setModelPort(name, &port);
    }
    std::string write(const std::string& body) {
        const std::string path = (dir / "constraints.xml").string();
        std::ofstream(path) << "<?xml version=\"1.0\"?>\n<CONSTRAINTS>\n" << body << "</CONSTRAINTS>\n";
        return path;
    }
    const HBOPinProps* pinOf(const HBOModelPort& port, size_t i) {
        std::vector<HBOPinProps*> pins;
        port.getPortPropsSeq(pins);
        return i < pins.size() ? pins[i] : nullptr;
    }
};

}  // namespace

TEST_F(ConstraintsFixture, PinsAreFilledByPositionInThePort) {
    part.setConstraintsFile(write(
        "<PIN NAME=\"DATA\" INDEX=\"3\" LOC=\"b12\" IOSTANDARD=\"LVCMOS18\" DRIVE=\"8\" ODT=\"RTT_40\"/>\n"
        "<PIN NAME=\"addr\" INDEX=\"3\" LOC=\"c4\" SLEW=\"FAST\"/>\n"
        "<PIN NAME=\"hi\" INDEX=\"3\" LOC=\"d1\"/>\n"
        "<PIN NAME=\"clk\" LOC=\"e3\" DIFF_TERM=\"TRUE\"/>\n"
        "<PIN NAME=\"nosuchport\" LOC=\"f1\"/>\n"
        "<FOO NAME=\"clk\"/>\n"));
    EXPECT_EQ(0, part.populateConstraintsData("ignored.xml"));
    EXPECT_TRUE(part.isConstraintsDataPopulated());

    const HBOPinProps* d3 = pinOf(down, 3);
    ASSERT_NE(nullptr, d3);
    EXPECT_EQ("B12", d3->getPinLoc());
    EXPECT_EQ("data[3]", d3->getName());
    EXPECT_EQ(3, d3->getPinIndex());
    EXPECT_EQ("LVCMOS18", d3->getPinIOStandard());
    EXPECT_EQ("8", d3->getPinDrive());
    EXPECT_EQ("", d3->getPinOdt());  // only seven attributes are honoured
    EXPECT_EQ(&down, d3->getOwnerPort());

    EXPECT_EQ("C4", pinOf(up, 3)->getPinLoc());
    EXPECT_EQ("FAST", pinOf(up, 3)->getPinSlew());
    for (size_t i = 0; i < 8; ++i)
        EXPECT_EQ("", pinOf(high, i)->getPinLoc()) << i;
    EXPECT_EQ("E3", pinOf(clk, 0)->getPinLoc());
    EXPECT_EQ("clk", pinOf(clk, 0)->getName());
    EXPECT_EQ(0, pinOf(clk, 0)->getPinIndex());
    EXPECT_EQ((std::vector<std::string>{"49-43:FOO"}), errors);

    // Once filled, the file is not read again.
    part.setConstraintsFile(write("<PIN NAME=\"clk\" LOC=\"z9\"/>\n"));
    EXPECT_EQ(0, part.populateConstraintsData(""));
    EXPECT_EQ("E3", pinOf(clk, 0)->getPinLoc());
}

TEST_F(ConstraintsFixture, MissingOrEmptyFiles) {
    EXPECT_EQ(0, part.populateConstraintsData((dir / "x.xml").string()));
    EXPECT_FALSE(part.isConstraintsDataPopulated());
    part.setConstraintsFile((dir / "missing.xml").string());
    EXPECT_EQ(0, part.populateConstraintsData(""));
    EXPECT_FALSE(part.isConstraintsDataPopulated());

    // An unreadable document leaves the flag unset, so that a later call tries again.
    const std::string path = (dir / "broken.xml").string();
    std::ofstream(path) << "<CONSTRAINTS><PIN";
    part.setConstraintsFile(path);
    EXPECT_EQ(0, part.populateConstraintsData(""));
    EXPECT_FALSE(part.isConstraintsDataPopulated());

    part.setConstraintsFile(write(""));
    EXPECT_EQ(0, part.populateConstraintsData(""));
    EXPECT_TRUE(part.isConstraintsDataPopulated());
}

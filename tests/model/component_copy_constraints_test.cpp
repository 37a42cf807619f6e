// Deep and rebased copies of a component, its ownership, its display, and the fill of
// pins from an XML constraints file.

#include <fstream>

#include <boost/filesystem.hpp>

#include "HBOBoardCompMuxPosition.h"
#include "HBOBoardComponentDriver.h"
#include "HBOBusIfPreference.h"
#include "board_fixture.h"

using namespace board_fixture;
namespace fs = boost::filesystem;

namespace {

// A connector of a daughter board carrying one interface, a mode, pins and the rest.
struct CopyFixture : ::testing::Test {
    HBOBoard daughter;
    HBOBoard merged;
    HBOBoardComponent* conn = nullptr;
    HBOModelPort dq;
    void SetUp() override {
        daughter.setName("acme", "dtr", "1.0");
        merged.setName("Acme", "Base", "2.0B");
        conn = addComponent(daughter, "fmc", "connector", "fmc_hpc");
        conn->setDisplayName("FMC Card");
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
        conn->setDesignConstrs({HBOBoardComponent::DciCascadeConstr(), HBOBoardComponent::InternalVrefConstr()});
        HBOComponentMode* mode = addMode(conn, "ddr_mode", "");
        mode->addInterface(0, "ddr", false);
        mode->addPreferredIp(new HBOBusIfPreference());
        HBOBusIf* ddr = addInterface(conn, "ddr", "");
        ddr->setDisplayName("DDR");
        dq.setName("ddr_dq");
        dq.setOwner(ddr);
        ddr->populatePortMap(new HBOPortMap("DQ", "ddr_dq"));
        ddr->addPort(&dq);
        conn->setModelPort("ddr_dq", &dq);
        addPin(conn, "fmc_1", 1)->setPinIOStandard("LVCMOS18");
        conn->addPin(makePin("fmc_2", 2));
    }
};

}  // namespace

TEST_F(CopyFixture, RebaseRenamesForTheMergedBoard) {
    HBOBoardComponent* copy = new HBOBoardComponent(*conn, &merged, "FMC0");
    EXPECT_EQ((Names{"fmc0_fmc", "FMC Card (FMC0)", "acme:base:fmc0_fmc:2.0b", "fmc_hpc", "card-1", "false", "1"}),
              (Names{copy->getComponentName(), copy->getDisplayName(), copy->getName(), copy->getSubType(),
                     copy->getPartName(), copy->getIsEnabled(), copy->getJtagPosition("chain1")}));
    EXPECT_EQ(&merged, copy->getBoard());
    EXPECT_TRUE(copy->isUserDefined());
    EXPECT_TRUE(copy->getRtlFileParseStatus());
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

    // An empty prefix keeps every name.
    HBOBoardComponent same(*conn, &merged, "");
    EXPECT_EQ((Names{"fmc", "FMC Card", "acme:dtr:fmc:1.0", "ddr_mode"}),
              (Names{same.getComponentName(), same.getDisplayName(), same.getName(),
                     same.getComponentModes()[0]->getName()}));
    EXPECT_NE(nullptr, same.getBusIfByName("DDR"));
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
    const std::string text = stderrOf([&] { conn->display(1); });
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

// A constraints file in a scratch directory, and a component with model ports
// data (7 downto 0), addr (0 to 7), hi (15 downto 8) and the scalar clk.
struct ConstraintsFixture : ::testing::Test {
    fs::path dir = fs::temp_directory_path() / fs::unique_path("zr_constr_%%%%-%%%%");
    HBOBoardComponent part;
    HBOModelPort down, up, high, clk;
    void SetUp() override {
        fs::create_directories(dir);
        port(down, "data", true, 7, 0);
        port(up, "addr", true, 0, 7);
        port(high, "hi", true, 15, 8);
        port(clk, "clk", false, -1, -1);
    }
    void TearDown() override {
        boost::system::error_code ec;
        fs::remove_all(dir, ec);
    }
    void port(HBOModelPort& p, const std::string& name, bool isVector, int left, int right) {
        p.setName(name);
        p.setIsVector(isVector);
        if (isVector)
            p.setRange(left, right);
        p.populatePinProps();
        part.setModelPort(name, &p);
    }
    std::string write(const std::string& body) {
        const std::string path = (dir / "constraints.xml").string();
        std::ofstream(path) << "<?xml version=\"1.0\"?>\n<CONSTRAINTS>\n" << body << "</CONSTRAINTS>\n";
        return path;
    }
    const HBOPinProps* pinOf(const HBOModelPort& p, size_t i) {
        std::vector<HBOPinProps*> pins;
        p.getPortPropsSeq(pins);
        return i < pins.size() ? pins[i] : nullptr;
    }
};

}  // namespace

TEST_F(ConstraintsFixture, PinsAreFilledByPositionInThePort) {
    MessageRecorder recorder;
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
    EXPECT_EQ((Names{"B12", "data[3]", "LVCMOS18", "8", ""}),  // only seven attributes are honoured: no ODT
              (Names{d3->getPinLoc(), d3->getName(), d3->getPinIOStandard(), d3->getPinDrive(), d3->getPinOdt()}));
    EXPECT_EQ(3, d3->getPinIndex());
    EXPECT_EQ(&down, d3->getOwnerPort());
    EXPECT_EQ("C4", pinOf(up, 3)->getPinLoc());
    EXPECT_EQ("FAST", pinOf(up, 3)->getPinSlew());
    for (size_t i = 0; i < 8; ++i)
        EXPECT_EQ("", pinOf(high, i)->getPinLoc()) << i;
    EXPECT_EQ("E3", pinOf(clk, 0)->getPinLoc());
    EXPECT_EQ("clk", pinOf(clk, 0)->getName());
    EXPECT_EQ(0, pinOf(clk, 0)->getPinIndex());
    Names errors;
    for (const ComMsgMgrInstance& m : recorder.messages)
        if (!m.getId().empty())
            errors.push_back(m.getId() + ":" + (m.getArgs().empty() ? "" : m.getArgs()[0]));
    EXPECT_EQ((Names{"49-43:FOO"}), errors);

    // Once filled, the file is not read again.
    part.setConstraintsFile(write("<PIN NAME=\"clk\" LOC=\"z9\"/>\n"));
    EXPECT_EQ(0, part.populateConstraintsData(""));
    EXPECT_EQ("E3", pinOf(clk, 0)->getPinLoc());
}

TEST_F(ConstraintsFixture, MissingBrokenOrEmptyFiles) {
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

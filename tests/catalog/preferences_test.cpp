// Interface preferences of the installation and how boards receive them.
#include <sys/stat.h>

#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "catalog_fixture.h"

namespace {

const char* const kGpio =
    "<interface name=\"led\" type=\"korvelhw:interface:gpio_rtl:1.0\" mode=\"master\" of_component=\"led\"/>";
const char* const kOwnPreference =
    "<interface name=\"btn\" type=\"korvelhw:interface:gpio_rtl:1.0\" mode=\"master\" of_component=\"led\">"
    "<preferred_ips><preferred_ip vendor=\"korvelhw\" library=\"ip\" name=\"own_ip\" version=\"1.0\" order=\"0\"/>"
    "</preferred_ips></interface>";
const char* const kUart =
    "<interface name=\"uart\" type=\"KorvelHW:Interface:UART_rtl:1.0\" mode=\"Slave\" of_component=\"led\"/>";
const char* const kLed = "<component name=\"led\" display_name=\"LED\" type=\"chip\" sub_type=\"led\"/>";

std::string preferences(const std::string& entries) {
    return "<?xml version=\"1.0\"?>\n<prefs>\n" + entries + "\n</prefs>\n";
}

std::string entry(const std::string& element, const std::string& value, const std::string& mode,
                  const std::string& group) {
    return "<" + element + " value=\"" + value + "\" mode=\"" + mode + "\" major_group=\"" + group +
           "\" minor_group=\"minor\" default_ip_vlnv=\"v:l:" + group + ":1.0\"/>";
}

}  // namespace

class CatalogPreferences : public CatalogFixture {
protected:
    void SetUp() override {
        CatalogFixture::SetUp();
        BoardSpec b;
        b.interfaces = std::string(kGpio) + kOwnPreference + kUart;
        b.extra = kLed;
        installed("d1", "boards/board_files", "b1", b);
    }

    // "group" of the interface's preference, or "-" without one.
    std::string group(const std::string& interface) {
        HBOBoard* b = catalogue()->getInfoForBoard("acme:b1:1.0");
        HBOBusIf* busIf = b ? b->getBusIfByName(interface) : nullptr;
        if (!busIf)
            return "no interface";
        return busIf->getPreference() ? busIf->getPreference()->getMajorGroup() : "-";
    }
};

// Matching ignores case on both sides; a version in "value" never matches;
// a later entry of a key wins; other elements are skipped.
TEST_F(CatalogPreferences, KeysAndMatching) {
    write("d1/boards/board_interface_preferences.xml",
          preferences(entry("INTF_VLNV", "korvelhw:interface:gpio_rtl", "master", "first") +
                      entry("intf_vlnv", "KORVELHW:interface:gpio_rtl", "MASTER", "gpio") +
                      entry("other", "korvelhw:interface:uart_rtl", "slave", "other") +
                      entry("Intf_Vlnv", "korvelhw:interface:uart_rtl:1.0", "slave", "versioned")));
    useDataDirs({"d1"});
    EXPECT_EQ(group("led"), "gpio");
    EXPECT_EQ(group("uart"), "-");
    // An interface with a preference of its own keeps it.
    EXPECT_EQ(catalogue()->getInfoForBoard("acme:b1:1.0")->getBusIfByName("btn")->getPreference()
                  ->getDefaultIpVlnv(),
              "korvelhw:ip:own_ip:1.0");

    write("d1/boards/board_interface_preferences.xml", "");
    EXPECT_FALSE(catalogue()->populatePreferenceData(nullptr));
}

TEST_F(CatalogPreferences, OnlyTheFirstDataDirectoryWithAFileCounts) {
    write("d0/boards/unrelated.txt", "");
    write("d2/boards/board_interface_preferences.xml",
          preferences(entry("INTF_VLNV", "korvelhw:interface:uart_rtl", "slave", "second dir")));
    write("d1/boards/board_interface_preferences.xml",
          preferences(entry("INTF_VLNV", "korvelhw:interface:gpio_rtl", "master", "first dir")));
    useDataDirs({"d0", "d1", "d2"});
    EXPECT_EQ(group("led"), "first dir");
    EXPECT_EQ(group("uart"), "-");
}

TEST_F(CatalogPreferences, NoFileOrABrokenOneLeavesBoardsAlone) {
    useDataDirs({"d1"});
    EXPECT_EQ(group("led"), "-");
    dropCatalogue();
    write("d1/boards/board_interface_preferences.xml", "<prefs><INTF_VLNV value=");
    useDataDirs({"d1"});
    EXPECT_EQ(group("led"), "-");
    // A named pipe in its place is refused unopened; the catalogue goes on.
    dropCatalogue();
    const std::string pipe = path("d1/boards/board_interface_preferences.xml");
    boost::filesystem::remove(pipe);
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    useDataDirs({"d1"});
    EXPECT_EQ(group("led"), "-");
    EXPECT_EQ(count("49-900"), 1);
}

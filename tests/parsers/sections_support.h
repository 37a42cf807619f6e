// Board pieces shared by the section reader tests, and a fixture that reports
// the deferred findings so that each one can be seen.
#ifndef ZR_TEST_SECTIONS_SUPPORT_H
#define ZR_TEST_SECTIONS_SUPPORT_H

#include <string>

#include "parser_fixture.h"

#include "HBOBoardComponent.h"
#include "HBOBusIf.h"

class SectionsFixture : public ParserFixture {
protected:
    void SetUp() override {
        ParserFixture::SetUp();
        setParam("board.validateXML", "true");
    }

    // A pin file for the FPGA: pins P0..P<n-1> at A0.., each with the given I/O standard.
    std::string writePins(const std::string& name, int n, const std::string& iostandard = "LVCMOS18") {
        std::string pins;
        for (int i = 0; i < n; ++i)
            pins += "<pin index=\"" + std::to_string(i) + "\" name=\"P" + std::to_string(i) + "\" loc=\"A" +
                    std::to_string(i) + "\" iostandard=\"" + iostandard + "\"/>\n";
        return write(name, "<?xml version=\"1.0\"?>\n<part_info part_name=\"xcz1\">\n<pins>\n" + pins +
                               "</pins>\n</part_info>\n");
    }

    // <components> holding an FPGA "part0" (pins from part0_pins.xml when asked) with `fpgaBody`, then `others`.
    static std::string components(const std::string& fpgaBody, const std::string& others = "",
                                  bool withPinFile = false) {
        return "<components>\n<component name=\"part0\" type=\"fpga\" part_name=\"xcz1\"" +
               std::string(withPinFile ? " pin_map_file=\"part0_pins.xml\"" : "") + ">\n" + fpgaBody +
               "</component>\n" + others + "</components>\n";
    }

    // One interface of mode master, served to `ofComponent`, with `body` inside.
    static std::string intf(const std::string& name, const std::string& type, const std::string& body = "",
                            const std::string& extraAttrs = "", const std::string& ofComponent = "part0") {
        return "<interface name=\"" + name + "\" type=\"" + type + "\" mode=\"master\" of_component=\"" +
               ofComponent + "\" " + extraAttrs + ">" + body + "</interface>\n";
    }

    HBOBoardComponent* comp(const std::string& name) { return board().findBoardComponent(name); }
    HBOBusIf* busIf(const std::string& component, const std::string& name) {
        return comp(component) ? comp(component)->getBusIfByName(name) : nullptr;
    }
};

#endif

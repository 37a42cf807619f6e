// What a host runs when it sets up scripting: every class's init, then the
// three initV2Props, which replace what init made.
#ifndef HBOPROPERTYSETUP_H
#define HBOPROPERTYSETUP_H

#include "HBOCPropertyInit.h"

namespace HBOPropertySetup {
inline void registerAll() {
    using namespace HBOCPropertyInit;
    board::init();
    board_bus::init();
    board_bus_net::init();
    board_component::init();
    board_component_mode::init();
    board_interface_port::init();
    board_ip_preset::init();
    board_jumper::init();
    board_parameter::init();
    board_part_interface::init();
    board_part_pin::init();
    board_user_preference::init();
    board_component::initV2Props();
    board_part_interface::initV2Props();
    board_part_pin::initV2Props();
}
}  // namespace HBOPropertySetup

#endif

// Registration of the scripted classes' properties with the host's property
// service. The host calls init of each class once when it sets up scripting,
// and initV2Props (of the three classes that have it) after init.
#ifndef HBOCPROPERTYINIT_H
#define HBOCPROPERTYINIT_H

namespace HBOCPropertyInit {
namespace board { void init(); }
namespace board_bus { void init(); }
namespace board_bus_net { void init(); }
namespace board_component { void init(); void initV2Props(); }
namespace board_component_mode { void init(); }
namespace board_interface_port { void init(); }
namespace board_ip_preset { void init(); }
namespace board_jumper { void init(); }
namespace board_parameter { void init(); }
namespace board_part_interface { void init(); void initV2Props(); }
namespace board_part_pin { void init(); void initV2Props(); }
namespace board_user_preference { void init(); }
}  // namespace HBOCPropertyInit

#endif

# Walking the reference board from the board down to its pins.
source [file join [file dirname [info script]] harness.tcl]

set board [reference_board]
check "board prints as its name" {set board} korvelhw:tarnwick:1.2
check "component count" {llength [get_board_components -of_objects $board]} 13
set fpga [get_board_components -of_objects $board *PART0*]
check "pattern ignores case" {set fpga} korvelhw:tarnwick:part0:1.2
check "interfaces of a component by pattern" {
    get_board_component_interfaces -of_objects $fpga dip*
} dip_switches_4bits
set dip [get_board_component_interfaces -of_objects $fpga dip*]
set port [get_board_interface_ports -of_objects $dip]
check "ports of an interface" {set port} dip_switches_4bits_gpio_i
check "pins of a port" {get_board_component_pins -of_objects $port} \
    {GPIO_DIP_SW0 GPIO_DIP_SW1 GPIO_DIP_SW2 GPIO_DIP_SW3}
check "pins of a component" {llength [get_board_component_pins -of_objects $fpga GPIO_LED_*]} 8
check "modes" {get_board_component_modes -of_objects [get_board_components -of_objects $board *ddr3*]} ddr3_sdram
check "jumpers" {get_board_jumpers -of_objects $board} {jp3 jp7 jp9}
check "parameters" {get_board_parameters -of_objects $board *vadj} fmc_vadj
check "buses of a component" {
    get_board_buses -of_objects [get_board_components -of_objects $board *usb_uart*]
} part0_usb_uart_1
check "nets of a bus" {llength [get_board_bus_nets -of_objects [get_board_buses -of_objects $board *fmc*]]} 16
check "preferences of an interface" {
    get_board_ip_preferences -of_objects [get_board_component_interfaces -of_objects $fpga led_8bits]
} {korvelhw:ip:gpio_hub:2.0 korvelhw:ip:gpio_lite:1.1}
check "presets of an interface" {
    llength [get_board_ip_presets -of_objects [get_board_component_interfaces -of_objects $fpga led_8bits]]
} 2
check "the same object comes back as the same handle" {
    expr {[get_board_jumpers -of_objects $board jp3] eq [lindex [get_board_jumpers -of_objects $board] 0]}
} 1
check "objects of several parents, each once" {
    llength [get_board_jumpers -of_objects [list $board $board]]
} 3

# Mistakes get the reason and the usage line.
check "missing -of_objects" {error_of {get_board_jumpers}} "-of_objects is required"
check "usage line" {usage_of {get_board_jumpers}} "usage: get_board_jumpers -of_objects OBJECTS ?PATTERN?"
check "wrong kind of object" {error_of {get_board_jumpers -of_objects $fpga}} \
    "-of_objects takes boards, not the board_component 'korvelhw:tarnwick:part0:1.2'"
check "no object at all" {error_of {get_board_jumpers -of_objects nothing}} "'nothing' is not a board object"
check "unknown option" {error_of {get_board_jumpers -of $board}} "unknown option '-of'"
finish

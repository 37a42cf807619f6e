# Reading, listing and reporting the properties of the reference board's objects.
source [file join [file dirname [info script]] harness.tcl]

set board [reference_board]
set fpga [get_board_components -of_objects $board *part0*]
set leds [get_board_component_interfaces -of_objects $fpga led_8bits]

check "a string property" {get_property board_name $board} tarnwick
check "names ignore case" {get_property BOARD_NAME $board} tarnwick
check "a list property is a Tcl list" {llength [get_property Compatible_board_revisions $board]} 3
check "a boolean published on a string property" {get_property supports_ced $board} 1
check "a dynamic name" {get_property PARAM.fmc_vadj $board} 2.5
check "class names after the second registration" {
    list [get_property class $fpga] [get_property class $leds] \
        [get_property class [lindex [get_board_component_pins -of_objects $fpga] 0]]
} {board_component board_component_interface board_component_pin}
check "hidden but readable" {get_property is_enabled $fpga} true
check "hidden is not listed" {lsearch [list_property $fpga] is_enabled} -1
check "interface listing keeps registration order" {lrange [list_property $leds] 0 4} \
    {class name VLNV PRESET_FILE MODE}
check "board listing is sorted" {lrange [list_property $board] 0 2} {board_name class Compatible_board_revisions}
check "an integer property" {
    get_property order [lindex [get_board_ip_preferences -of_objects $leds] 1]
} 1
check "a preset's BOARD_INTERFACES" {
    get_property board_interfaces [get_board_ip_presets -of_objects $board clock_synth_inputs*]
} {sys_diff_clock user_clock}

set report [report_property [get_board_jumpers -of_objects $board jp9]]
check "report header" {lindex [split $report \n] 0} "Property       Type    Read-only  Value"
check "report row of the writable property" {lindex [split $report \n] 2} \
    "current_value  bool    false      0"
check "report rows" {llength [split $report \n]} 5

check "unknown property" {error_of {get_property nonsense $board}} \
    "no property 'nonsense' on board 'korvelhw:tarnwick:1.2'"
check "its usage line" {usage_of {get_property nonsense $board}} "usage: get_property NAME OBJECT"
check "two objects where one is wanted" {error_of {get_property name [get_board_jumpers -of_objects $board]}} \
    "expected one object, got 3"
check "wrong argument count" {error_of {list_property}} "wrong number of arguments"
finish

# A handle whose object is gone says so, however the script kept it.
source [file join [file dirname [info script]] harness.tcl]

set board [reference_board]
set again $board
set fpga [get_board_components -of_objects $board *part0*]
set pins [get_board_component_pins -of_objects $fpga GPIO_LED_*]
set jumper [get_board_jumpers -of_objects $board jp3]
set_property current_value 0 $jumper

delete_board $board
check "the board" {error_of {get_property name $board}} "object 'korvelhw:tarnwick:1.2' no longer exists"
check "its second holder" {error_of {list_property $again}} "object 'korvelhw:tarnwick:1.2' no longer exists"
check "a component" {error_of {get_property name $fpga}} "object 'korvelhw:tarnwick:part0:1.2' no longer exists"
check "pins in a list" {error_of {get_property name [lindex $pins 3]}} "object 'GPIO_LED_3' no longer exists"
check "walks refuse it" {error_of {get_board_jumpers -of_objects $board}} \
    "object 'korvelhw:tarnwick:1.2' no longer exists"
check "the undo history went with the board" {error_of undo} "nothing to undo"
check "deleted twice" {error_of {delete_board $board}} "object 'korvelhw:tarnwick:1.2' no longer exists"

# A fresh read gives fresh handles.
set board [reference_board]
check "read again" {get_property name [get_board_jumpers -of_objects $board jp3]} jp3
finish

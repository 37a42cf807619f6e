# A handle whose object is gone says so, however the script kept it: a
# catalogue refresh deletes every user board, and a board file read again
# replaces the board read before.
source [file join [file dirname [info script]] harness.tcl]

set repo [user_repository]
set_board_repo_paths [list $repo]
set board [get_boards *tarnwick:1.3]
check "the user board is in the catalogue" {set board} korvelhw:tarnwick:1.3
set again $board
set fpga [get_board_components -of_objects $board *part0*]
set pins [get_board_component_pins -of_objects $fpga GPIO_LED_*]
set jumper [get_board_jumpers -of_objects $board jp3]
set installed [get_boards *tarnwick:1.2]
set_property current_value 0 $jumper

# An object with two handles: the first stops being a handle when the script
# uses it as a list, so asking again makes a second one.
set port [lindex [get_board_interface_ports -of_objects [get_board_component_interfaces -of_objects $fpga led_8bits]] 0]
llength $port
set port2 [get_board_interface_ports -of_objects [get_board_component_interfaces -of_objects $fpga led_8bits]]

refresh_boards
check "the board" {error_of {get_property name $board}} "object 'korvelhw:tarnwick:1.3' no longer exists"
check "its second holder" {error_of {list_property $again}} "object 'korvelhw:tarnwick:1.3' no longer exists"
check "a component" {error_of {get_property name $fpga}} "object 'korvelhw:tarnwick:part0:1.3' no longer exists"
check "pins in a list" {error_of {get_property name [lindex $pins 3]}} "object 'GPIO_LED_3' no longer exists"
check "walks refuse it" {error_of {get_board_jumpers -of_objects $board}} \
    "object 'korvelhw:tarnwick:1.3' no longer exists"
check "the second handle of a port" {error_of {get_property name $port2}} \
    "object 'led_8bits_gpio_o' no longer exists"
check "the first one, now plain text, names no live object" {error_of {get_property name $port}} \
    "'led_8bits_gpio_o' is not a board object"
check "the undo history went with the board" {error_of undo} "nothing to undo"
check "an installed board outlives the refresh" {get_property name $installed} korvelhw:tarnwick:1.2

# The refresh read the repository anew: a fresh board with fresh handles.
set board [get_boards *tarnwick:1.3]
check "read again" {get_property name [get_board_jumpers -of_objects $board jp3]} jp3
check "the old handle stays dead" {error_of {get_property name $again}} \
    "object 'korvelhw:tarnwick:1.3' no longer exists"

# Dropping the repository drops its boards.
set_board_repo_paths {}
check "repository gone" {list [get_boards *tarnwick:1.3] [error_of {get_property name $board}]} \
    {{} {object 'korvelhw:tarnwick:1.3' no longer exists}}

# A board file read a second time replaces the first board.
set first [reference_board]
set jp9 [get_board_jumpers -of_objects $first jp9]
set second [reference_board]
check "the earlier read is gone" {error_of {get_property name $jp9}} "object 'jp9' no longer exists"
check "the new read is there" {get_property name [get_board_jumpers -of_objects $second jp9]} jp9
check "an unreadable file" {usage_of {read_board_file [file join $repo nowhere board.xml]}} \
    "usage: read_board_file PATH"

file delete -force $repo
finish

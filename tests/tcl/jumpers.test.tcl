# Flipping jumpers: the connections that depend on them follow, and undo and
# redo go back and forth.
source [file join [file dirname [info script]] harness.tcl]

set board [reference_board]
set pmod [get_board_buses -of_objects $board part0_pmod_ja_1]
set uart [get_board_buses -of_objects $board part0_usb_uart_1]
set jp7 [get_board_jumpers -of_objects $board jp7]
set jp9 [get_board_jumpers -of_objects $board jp9]

check "start" {list [get_property current_value $jp9] [get_property is_enabled $pmod]} {0 false}
set_property current_value true $jp9
check "jp9 closed" {list [get_property current_value $jp9] [get_property is_enabled $pmod]} {1 true}
set_property CURRENT_VALUE 0 [list $jp7 $jp9]
check "two at once" {list [get_property is_enabled $uart] [get_property is_enabled $pmod]} {false false}
check "the component follows" {
    get_property is_enabled [get_board_components -of_objects $board *usb_uart*]
} false
undo
check "undo" {list [get_property is_enabled $uart] [get_property is_enabled $pmod]} {true true}
undo
check "undo again" {get_property current_value $jp9} 0
check "nothing left to undo" {error_of undo} "nothing to undo"
redo
redo
check "redo twice" {list [get_property current_value $jp7] [get_property current_value $jp9]} {0 0}
check "nothing left to redo" {error_of redo} "nothing to redo"

check "not a boolean" {error_of {set_property current_value maybe $jp9}} \
    "property 'current_value' takes a boolean (true, false, 1, 0), not 'maybe'"
check "read-only" {error_of {set_property name x $jp9}} "property 'name' is read-only"
check "usage" {usage_of {set_property name x $jp9}} "usage: set_property NAME VALUE OBJECTS"
finish

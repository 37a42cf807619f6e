# Shows the Tcl package at work on the installed boards: the catalogue, one
# board walked down to a pin with every property of each object on the way,
# and a jumper flipped and taken back.
package require zrboard

puts "installed boards:"
foreach b [get_boards] {
    puts [format "  %-26s %s" $b [get_property display_name $b]]
}
set board [current_board korvelhw:tarnwick:1.2]
puts "\nproject board: $board"
foreach component [get_board_components -of_objects $board] {
    puts [format "  %-42s %-10s %s" $component [get_property type $component] \
        [get_board_component_interfaces -of_objects $component]]
}

set fpga [get_board_components -of_objects $board *part0*]
set leds [get_board_component_interfaces -of_objects $fpga led_8bits]
set port [get_board_interface_ports -of_objects $leds]
set pin [lindex [get_board_component_pins -of_objects $port] 0]
foreach object [list $board $fpga $leds $port $pin] {
    puts "\n[get_property class $object] $object:"
    puts [report_property $object]
}

set jp9 [get_board_jumpers -of_objects $board jp9]
set pmod [get_board_buses -of_objects $board part0_pmod_ja_1]
puts "\njp9 [get_property current_value $jp9]: $pmod enabled [get_property is_enabled $pmod]"
set_property current_value 1 $jp9
puts "jp9 [get_property current_value $jp9]: $pmod enabled [get_property is_enabled $pmod]"
undo
puts "undo: jp9 [get_property current_value $jp9], $pmod enabled [get_property is_enabled $pmod]"

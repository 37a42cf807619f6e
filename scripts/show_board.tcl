# Shows the Tcl package at work on the reference board: a walk down to the
# pins, some properties, and a jumper flipped and put back.
package require zrboard

set data [lindex [split $env(ZR_DATA_DIRS) :] 0]
set board [read_board_file [file join $data boards board_files tarnwick 1.2 board.xml]]
puts "board [get_property display_name $board] ($board)"
foreach component [get_board_components -of_objects $board] {
    set interfaces [get_board_component_interfaces -of_objects $component]
    puts [format "  %-42s %-10s %s" $component [get_property type $component] $interfaces]
}
set leds [get_board_component_interfaces -of_objects [get_board_components -of_objects $board *part0*] led_8bits]
set port [get_board_interface_ports -of_objects $leds]
puts "pins of $port: [get_board_component_pins -of_objects $port]"
puts [report_property [lindex [get_board_component_pins -of_objects $port] 0]]
set jp9 [get_board_jumpers -of_objects $board jp9]
set pmod [get_board_buses -of_objects $board part0_pmod_ja_1]
puts "jp9 [get_property current_value $jp9]: $pmod enabled [get_property is_enabled $pmod]"
set_property current_value 1 $jp9
puts "jp9 [get_property current_value $jp9]: $pmod enabled [get_property is_enabled $pmod]"
undo
puts "undo: $pmod enabled [get_property is_enabled $pmod]"

# The catalogue, the project's board and the parameters from a script.
source [file join [file dirname [info script]] harness.tcl]

check "every installed board, by name" {llength [get_boards]} 10
check "latest versions only" {get_boards -latest korvelhw:quillon:*} korvelhw:quillon:1.1
check "every version" {get_boards KORVELHW:QUILLON:*} {korvelhw:quillon:1.0 korvelhw:quillon:1.1}
set tarnwick [get_boards *tarnwick*]
set fpga [get_board_components -of_objects $tarnwick *part0*]
set leds [get_board_component_interfaces -of_objects $fpga led_8bits]
set port [get_board_interface_ports -of_objects $leds]
check "the board of a component, an interface, a port and a pin, each once" {
    get_boards -of_objects [list $fpga $leds $port [lindex [get_board_component_pins -of_objects $port] 2]]
} korvelhw:tarnwick:1.2
check "the boards of components of two boards" {
    get_boards -of_objects [list $fpga [lindex [get_board_components -of_objects [get_boards *fennock*]] 0]]
} {korvelhw:tarnwick:1.2 korvelhw:fennock:1.0}
check "a catalogue board is the same handle each time" {expr {[get_boards *tarnwick*] eq $tarnwick}} 1

check "no board chosen yet" {current_board} {}
check "choose by name, any case" {current_board KORVELHW:Tarnwick:1.2} korvelhw:tarnwick:1.2
check "it is the catalogue's board" {expr {[current_board] eq $tarnwick}} 1
check "choose by handle" {current_board [get_boards *fennock*]} korvelhw:fennock:1.0
check "an unknown board keeps the choice" {list [error_of {current_board korvelhw:nothing:1.0}] [current_board]} \
    [list "ERROR: \[board 49-71\] The board 'korvelhw:nothing:1.0' cannot be set on the project.\
 It was not found in the board repositories ''." korvelhw:fennock:1.0]
check "an empty name lets go" {current_board {}} {}

# A user board chosen for the project survives a refresh as the board read anew.
set repo [user_repository]
set_board_repo_paths [list $repo]
check "the parameter holds the list" {get_param board.repoPaths} [list $repo]
check "latest now is the user's copy" {get_boards -latest *tarnwick*} korvelhw:tarnwick:1.3
set user [current_board korvelhw:tarnwick:1.3]
refresh_boards
check "chosen again after the refresh" {get_property name [current_board]} korvelhw:tarnwick:1.3
check "as a new object" {error_of {get_property name $user}} "object 'korvelhw:tarnwick:1.3' no longer exists"
set_param board.repoPaths {}
check "its repository gone, no board is left chosen" {current_board} {}
file delete -force $repo

check "a boolean parameter" {set_param board.validateXML true; get_param board.validateXML} true
check "a bad boolean" {error_of {set_param board.validateXML maybe}} \
    "parameter 'board.validateXML' takes a bool value, not 'maybe'"
check "an unknown parameter" {error_of {get_param board.nothing}} "unknown parameter 'board.nothing'"
check "its usage line" {usage_of {set_param board.nothing 1}} "usage: set_param NAME VALUE"
check "not a list of paths" {error_of {set_board_repo_paths "\{"}} "PATHS must be a list, not '\{'"
check "get_boards usage" {usage_of {get_boards -of_objects $tarnwick}} \
    "usage: get_boards ?-latest? ?-of_objects OBJECTS? ?PATTERN?"
check "boards have no board" {error_of {get_boards -of_objects $tarnwick}} \
    "-of_objects takes components, interfaces, ports, pins or modes, not the board 'korvelhw:tarnwick:1.2'"
check "an unknown option" {error_of {get_boards -all}} "unknown option '-all'"
check "too many arguments" {error_of {current_board a b}} "wrong number of arguments"
finish

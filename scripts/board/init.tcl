# Board start-up script: a project runs it once, in this directory, before its
# board is first used; installations put their board-wide Tcl set-up here.
set ::zr_board_script_dir [pwd]
puts "zr_board: board start-up script ran in $::zr_board_script_dir"

# A small harness for the package's script tests: each check compares what a
# script gives with what it should, and the run exits non-zero on any failure.
package require zrboard

set failures 0

proc check {title script expected} {
    global failures
    if {[catch {uplevel 1 $script} got]} {
        set got "ERROR: $got"
    }
    if {$got ne $expected} {
        incr failures
        puts stderr "FAILED $title\n  expected: $expected\n  got:      $got"
    }
}

# The error text of script, first line only; "no error" when it succeeds.
proc error_of {script} {
    if {[catch {uplevel 1 $script} message]} {
        return [lindex [split $message \n] 0]
    }
    return "no error"
}

proc usage_of {script} {
    catch {uplevel 1 $script} message
    return [lindex [split $message \n] end]
}

proc reference_board {} {
    set data [lindex [split $::env(ZR_DATA_DIRS) :] 0]
    return [read_board_file [file join $data boards board_files tarnwick 1.2 board.xml]]
}

# A user repository in a fresh temporary directory holding a copy of the
# reference board as file version 1.3, so that it sits beside the installed one.
proc user_repository {} {
    set data [lindex [split $::env(ZR_DATA_DIRS) :] 0]
    set repo [file join [expr {[info exists ::env(TMPDIR)] ? $::env(TMPDIR) : "/tmp"}] \
        zrboard-repo-[pid]-[clock clicks]]
    file mkdir [file join $repo tarnwick]
    file copy [file join $data boards board_files tarnwick 1.2] [file join $repo tarnwick 1.3]
    set path [file join $repo tarnwick 1.3 board.xml]
    set f [open $path]
    set text [read $f]
    close $f
    set f [open $path w]
    puts -nonewline $f [string map {<file_version>1.2</file_version> <file_version>1.3</file_version>} $text]
    close $f
    return $repo
}

proc finish {} {
    global failures
    if {$failures} {
        puts stderr "$failures check(s) failed"
        exit 1
    }
    exit 0
}

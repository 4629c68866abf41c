# A small harness for Tcl script tests run through `surfpath`.
#   source $env(SURFPATH_TESTLIB)
#   check "what is checked" {expr {$x == 3}}
#   checkError "what is checked" {command that must fail} "text the error contains"
#   finish   ;# prints the summary, exits 1 if anything failed
namespace eval testlib {
    variable passed 0
    variable failed 0
}

proc check {what script} {
    if {[catch {uplevel 1 $script} ok] || !$ok} {
        puts "FAILED: $what ($ok)"
        incr testlib::failed
    } else {
        incr testlib::passed
    }
}

proc checkEqual {what script expected} {
    if {[catch {uplevel 1 $script} got]} {
        puts "FAILED: $what: error $got"
        incr testlib::failed
    } elseif {$got ne $expected} {
        puts "FAILED: $what: got {$got}, expected {$expected}"
        incr testlib::failed
    } else {
        incr testlib::passed
    }
}

proc checkError {what script contains} {
    if {![catch {uplevel 1 $script} message]} {
        puts "FAILED: $what: no error"
        incr testlib::failed
    } elseif {[string first $contains $message] < 0} {
        puts "FAILED: $what: error {$message} lacks {$contains}"
        incr testlib::failed
    } else {
        incr testlib::passed
    }
}

proc finish {} {
    puts "$testlib::passed passed, $testlib::failed failed"
    exit [expr {$testlib::failed > 0}]
}

# A flat n x n grid of points (point x + n*y at (x, y, 0)), each square cut along its diagonal
# from point a to a + n + 1; loaded as a surface, whose name is returned.
proc loadGrid {n} {
    close [file tempfile off .off]
    set f [open $off w]
    puts $f "OFF\n[expr {$n * $n}] [expr {2 * ($n - 1) * ($n - 1)}] 0"
    for {set y 0} {$y < $n} {incr y} { for {set x 0} {$x < $n} {incr x} { puts $f "$x $y 0" } }
    for {set y 0} {$y < $n - 1} {incr y} {
        for {set x 0} {$x < $n - 1} {incr x} {
            set a [expr {$x + $n * $y}]
            puts $f "3 $a [expr {$a + 1}] [expr {$a + $n + 1}]\n3 $a [expr {$a + $n + 1}] [expr {$a + $n}]"
        }
    }
    close $f
    set surface [load $off]
    file delete $off
    return $surface
}

proc pathSetOn {surface} {
    set ps [create HxSurfacePathSet paths]
    $ps surface connect $surface
    return $ps
}

# Starts the editor of menu entry `type` on the path set as a user does; returns the editor
# module, whose command the start renames.
proc startEditor {ps type} {
    set ed [create HxSurfacePathEditor]
    $ed attach $ps
    $ed portEditorTypes setIndex $type
    $ed portStartEditor hit 0
    $ed fire
    return [lindex [all HxSurfacePathEditor] end]
}

# Presses button i of a port as a user does: the module sees it on its next update.
proc press {module port i} {
    $module $port hit $i
    $module fire
}

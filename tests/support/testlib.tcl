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

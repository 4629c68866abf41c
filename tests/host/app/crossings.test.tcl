# Crossing paths through the vertex editor's commands and buttons, on a 4 x 4 grid of points
# (point x + 4y at (x, y, 0)): a row and a column of vertices crossing at point 5 are
# entangled, untangled, split, and then cut the grid into patches.
source $env(SURFPATH_TESTLIB)

close [file tempfile tmp]
file delete $tmp
file mkdir $tmp.d
set off [file join $tmp.d grid.off]
set f [open $off w]
puts $f "OFF\n16 18 0"
for {set y 0} {$y < 4} {incr y} { for {set x 0} {$x < 4} {incr x} { puts $f "$x $y 0" } }
for {set y 0} {$y < 3} {incr y} {
    for {set x 0} {$x < 3} {incr x} {
        set a [expr {$x + 4 * $y}]
        puts $f "3 $a [expr {$a + 1}] [expr {$a + 5}]\n3 $a [expr {$a + 5}] [expr {$a + 4}]"
    }
}
close $f

set grid [load $off]
set ps [create HxSurfacePathSet paths]
$ps surface connect $grid
$ps addPath v:4 v:5 v:6 v:7
$ps addPath v:1 v:5 v:9 v:13
set ed [create HxSurfacePathEditor]
$ed attach $ps
$ed portEditorTypes setIndex 0
$ed portStartEditor hit 0
$ed fire
set ed [all HxSurfacePathEditor]

proc sharedAtCrossing {} { expr {[lindex [$::ps getPath 0] 1] == [lindex [$::ps getPath 1] 1]} }
# entangle and untangle leave the ports as they were; a fire brings the Undo button up to date.
proc undo {} {
    $::ed fire
    $::ed action hit 0
    $::ed fire
}
checkEqual "each path starts with a node of its own at the crossing" sharedAtCrossing 0
$ed entangle
checkEqual "entangle makes them share it" sharedAtCrossing 1
$ed untangle
checkEqual "untangle gives each its own again" sharedAtCrossing 0
undo
checkEqual "undo shares it again" sharedAtCrossing 1

$ed splitPathsAtIntersections 0.01 x
checkEqual "a split with a stray word does nothing" {$ps getNumPaths} 2
$ed splitPathsAtIntersections 0.01
checkEqual "the split ends four paths at the crossing" {$ps getNumPaths} 4
check "all of them" {expr {[llength [lsort -unique [list [lindex [$ps getPath 0] end] [lindex [$ps getPath 1] 0] \
                                       [lindex [$ps getPath 2] 0] [lindex [$ps getPath 3] 0]]]] == 1}}
checkEqual "the split set is consistent" {$ps isConsistent} 1

# The cross cuts the grid into four patches; their borders and the boundary come back as
# contours, cut at the five points where three or more of them meet.
$ed surfaceOperations hit 1
$ed fire
$ed surfaceOperations hit 0
$ed fire
checkEqual "contours of the patchified grid" {$ps getNumPaths} 12
undo
undo
checkEqual "undo takes back the contours, then the patches" {$ps getNumPaths} 4
$ed surfaceOperations hit 0
$ed fire
checkEqual "one patch again: only the boundary loop comes back" {$ps getNumPaths} 5
check "closed" {$ps isClosed 4}
file delete -force $tmp.d
finish

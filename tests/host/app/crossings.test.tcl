# Crossing paths through the vertex editor's commands and buttons, on a 4 x 4 grid of points
# (point x + 4y at (x, y, 0)): a row and a column of vertices crossing at point 5 are
# entangled, untangled, split, and then cut the grid into patches.
source $env(SURFPATH_TESTLIB)

set ps [pathSetOn [loadGrid 4]]
$ps addPath v:4 v:5 v:6 v:7
$ps addPath v:1 v:5 v:9 v:13
set ed [startEditor $ps 0]

proc sharedAtCrossing {} { expr {[lindex [$::ps getPath 0] 1] == [lindex [$::ps getPath 1] 1]} }
# entangle and untangle leave the ports as they were; a fire brings the Undo button up to date.
proc undo {} {
    $::ed fire
    press $::ed action 0
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
press $ed surfaceOperations 1
press $ed surfaceOperations 0
checkEqual "contours of the patchified grid" {$ps getNumPaths} 12
undo
undo
checkEqual "undo takes back the contours, then the patches" {$ps getNumPaths} 4
press $ed surfaceOperations 0
checkEqual "one patch again: only the boundary loop comes back" {$ps getNumPaths} 5
check "closed" {$ps isClosed 4}
finish

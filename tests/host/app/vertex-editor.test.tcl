# The vertex editor as a user drives it, through scripted viewer events on the elephant:
# two paths by Shift+clicks, selection by clicks, a control point deleted with the Delete key,
# the deletion undone with the middle button, and a free-hand stroke.
source $env(SURFPATH_TESTLIB)

set elephant [load [file join $env(SURFPATH_MESH_DIR) elephant.off]]
set ps [pathSetOn $elephant]
set ed [startEditor $ps 0]
checkEqual "the module's new name" {set ed} SurfacePathEditor
check "the editor's ports replace menu and button" {expr {"action" in [$ed getPorts] && ![$ed portStartEditor isVisible]}}
checkEqual "started through fire: free-hand drawing is off" {$ed freeHandDrawing getLabel 0} Enable
checkEqual "an empty set says how to begin" {$ed info getText} "To create a new path, Shift+Click onto the surface."

viewer 0 setSize 800 600
viewer 0 setViewing 0
viewer 0 viewAll

proc click {sx sy args} {
    viewer 0 mouse press 1 $sx $sy {*}$args
    viewer 0 mouse release 1 $sx $sy {*}$args
}
proc screenOf {node} { viewer 0 project {*}[lrange [$::ps getNode $node] end-2 end] }

# Screen points on the elephant seen from the side (checked by picking).
set back {320 260}; set trunk {490 510}; set hind {350 110}; set front {450 110}; set belly {400 200}
foreach p [list $back $trunk $hind $front $belly] {
    check "$p lies on the surface" {dict exists [viewer 0 pick {*}$p] triangle}
}

click {*}$back -shift
checkEqual "Shift+click on the surface starts a path" {$ps getNumPaths} 1
checkEqual "and selects it" {$ps getSelection} {0 -1}
click {*}$trunk -shift
check "a second Shift+click joins a control point along the surface" {expr {[llength [$ps getPath 0]] > 2}}
check "the info line describes it" {string match "Active 0: nPoints *, nCPs 2 " [$ed info getText]}
checkEqual "Undo is possible, Redo not" {list [$ed action isSensitive 0] [$ed action isSensitive 1]} {1 0}

click {*}$belly
checkEqual "a plain click on the surface deselects" {$ps getSelection} {{} -1}
click {*}$hind -shift
click {*}$front -shift
checkEqual "a second path" {$ps getNumPaths} 2

# Select path 0 by one of its control points, then that control point.
set last [lindex [$ps getPath 0] end]
click {*}[screenOf $last]
checkEqual "a click on a control point selects its path" {$ps getSelection} {0 -1}
click {*}[screenOf $last]
checkEqual "a second click makes it the active control point" {$ps getSelection} [list 0 $last]
set nodes [llength [$ps getPath 0]]
viewer 0 key press DELETE
checkEqual "holding Delete deletes nothing" {llength [$ps getPath 0]} $nodes
viewer 0 key release DELETE
checkEqual "releasing it deletes the control point and its stretch" {llength [$ps getPath 0]} 1
viewer 0 mouse press 2 {*}$belly
viewer 0 mouse release 2 {*}$belly
checkEqual "the middle button undoes the deletion" {llength [$ps getPath 0]} $nodes

# Free-hand: switched on through its port, then one stroke over the body.
press $ed freeHandDrawing 0
checkEqual "the toggle relabels its button" {$ed freeHandDrawing getLabel 0} disable
set paths [$ps getNumPaths]
viewer 0 mouse press 1 {*}$back
foreach {x y} {330 250 340 240 350 230 360 220 370 215 380 210 390 205 400 200} { viewer 0 mouseMove $x $y }
viewer 0 mouse release 1 400 200
check "the stroke became a new path" {expr {[$ps getNumPaths] > $paths}}
check "along the surface" {expr {[llength [$ps getPath $paths]] > 2}}
checkEqual "the stroke's path is selected" {lindex [$ps getSelection] 0} $paths
finish

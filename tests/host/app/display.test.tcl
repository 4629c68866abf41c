# Displays from a script: `show` makes a display once and finds it again, a path set's show
# also shows its surface, picks reach the displays, `hide` and removing the data take the
# pictures away.
source $env(SURFPATH_TESTLIB)

set elephant [load [file join $env(SURFPATH_MESH_DIR) elephant.off]]
checkEqual "a surface's display is named after it" {$elephant show} elephant.off-display
checkEqual "showing again finds the same display" {$elephant show} elephant.off-display
checkEqual "one display" {all HxDisplaySurface} elephant.off-display
checkError "show takes no arguments" {$elephant show 1} "wrong # args"
$elephant hide
checkEqual "hide removes the display" {all HxDisplaySurface} {}

set ps [pathSetOn $elephant]
$ps addPath v:0 v:1000
$ps connect 0 0 1 Dijkstra
checkEqual "nothing is selected without a display" {$ps getSelection} {{} -1}
checkEqual "a path set's display" {$ps show} paths-display
checkEqual "it shows the surface too" {all HxDisplaySurface} elephant.off-display
checkEqual "the surface drawn outlined" {elephant.off-display drawStyle setValue 3; elephant.off-display fire} {}

viewer 0 setSize 400 300
viewer 0 viewAll
set xyz [lrange [$ps getNode [lindex [$ps getPath 0] 0]] end-2 end]
set hit [viewer 0 pick {*}[viewer 0 project {*}$xyz]]
checkEqual "the first node's marker is picked" {lrange $hit 0 1} {object paths-display}
checkEqual "it names the control point" {lrange $hit end-3 end} {controlPoint 0 path 0}
set centre [viewer 0 pick 200 150]
check "the middle of the view is the surface" {expr {[lindex $centre 1] eq "elephant.off-display" && [dict exists $centre triangle]}}

$ps hide
checkEqual "hide removes the path set's display only" {all} {elephant.off paths elephant.off-display}
checkEqual "the picture has no markers left" {lindex [viewer 0 pick {*}[viewer 0 project {*}$xyz]] 1} elephant.off-display

remove $elephant
checkEqual "a display without data stays" {all} {paths elephant.off-display}
checkEqual "and shows nothing" {viewer 0 pick 200 150} {}
set display [create HxDisplaySurface]
checkError "a display takes surfaces only" {$display data connect paths} "needs an object of class HxSurface"
finish

# The demo: paths drawn on the bundled elephant the way a user draws them, through the path
# editor and scripted mouse events in the offscreen viewer: two paths by Shift+clicks, one
# closed, a step undone and redone, a free-hand stroke; then the set is saved, exported,
# loaded back and photographed.
#   surfpath examples/demo.tcl MESH_DIR OUTPUT_DIR
set meshDir [lindex $argv 0]
set outDir [expr {[llength $argv] > 1 ? [lindex $argv 1] : "demo-output"}]
file mkdir $outDir

set surface [load [file join $meshDir elephant.off]]
puts "Loaded $surface: [$surface getNumPoints] points, [$surface getNumTriangles] triangles"
set paths [create HxSurfacePathSet paths]
$paths surface connect $surface

# The editor module on the path set; starting the vertex editor renames the module.
set editor [create HxSurfacePathEditor]
$editor attach $paths
$editor portEditorTypes setIndex 0
$editor portStartEditor hit 0
$editor fire
set editor [all HxSurfacePathEditor]
puts "Started the [$editor portEditorTypes getLabel 0 0] as module $editor"

# The elephant seen from its side, in a window of 800 x 600 (screen origin bottom left).
viewer 0 setSize 800 600
viewer 0 setViewing 0
viewer 0 viewAll

proc click {x y args} {
    viewer 0 mouse press 1 $x $y {*}$args
    viewer 0 mouse release 1 $x $y {*}$args
}
proc report {what} {
    global paths editor
    puts [format "%-44s %d path(s), %4d nodes; %s" $what [$paths getNumPaths] [$paths getNumNodes] [$editor info getText]]
}

click 320 260 -shift
report "Shift+click on the back: a new path"
click 490 510 -shift
report "Shift+click on the trunk: joined by Dijkstra"
click 430 330 -shift
report "Shift+click on the head: a third point"
$editor pathOperations1 hit 0
$editor fire
report "Close: the path becomes a loop"

click 400 200
report "Click on the belly: nothing selected"
click 350 110 -shift
click 450 110 -shift
report "Shift+clicks on two legs: a second path"

viewer 0 mouse press 2 400 200
viewer 0 mouse release 2 400 200
report "Middle click: the last point undone"
$editor action hit 1
$editor fire
report "Redo: it is back"

# Free-hand: switch it on, then press, drag over the side of the body and release. (The
# vertex editor samples vertices: samples closer than a triangle apart merge into the next.)
$editor freeHandDrawing hit 0
$editor fire
viewer 0 mouse press 1 290 180
for {set x 290} {$x <= 470} {incr x 40} { viewer 0 mouseMove $x [expr {180 + ($x - 290) / 3}] }
viewer 0 mouse release 1 470 240
report "A free-hand stroke along the side"

$paths save [file join $outDir paths.json]
$paths export [file join $outDir paths.obj]
$paths export [file join $outDir paths.vtk]
viewer 0 snapshot [file join $outDir demo.png]

# Detaching the editor leaves the paths; loading the file back gives the same set.
$editor detach
set reloaded [load [file join $outDir paths.json]]
puts "Reloaded [file join $outDir paths.json]: [$reloaded getNumPaths] path(s),\
      [$reloaded getNumNodes] nodes, consistent: [$reloaded isConsistent]"
puts "Wrote paths.json, paths.obj, paths.vtk and demo.png to $outDir"

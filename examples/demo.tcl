# The demo: the path editor on the bundled elephant, driven the way a user drives it, through
# the editor's buttons and scripted mouse events in the offscreen viewer. A loop by
# Shift+clicks joined by geodesics, a free-hand stroke across it, the crossings split,
# smoothing and snapping, the surface retriangulated along the paths (undone and redone) and
# cut into patches; then the path set, its polylines and the new surface are saved, and
# pictures taken before and after the retriangulation.
#   surfpath examples/demo.tcl MESH_DIR OUTPUT_DIR
set meshDir [lindex $argv 0]
set outDir [expr {[llength $argv] > 1 ? [lindex $argv 1] : "demo-output"}]
file mkdir $outDir

set surface [load [file join $meshDir elephant.off]]
puts "Loaded $surface: [$surface getNumPoints] points, [$surface getNumTriangles] triangles"
set paths [create HxSurfacePathSet paths]
$paths surface connect $surface

# The editor module on the path set; starting an editor renames the module.
set editor [create HxSurfacePathEditor]
$editor attach $paths
$editor portEditorTypes setIndex 1
$editor portStartEditor hit 0
$editor fire
set editor [all HxSurfacePathEditor]
puts "Started the [$editor portEditorTypes getLabel 0 1] as module $editor"

proc press {port button} {
    global editor
    $editor $port hit $button
    $editor fire
}
proc click {x y args} {
    viewer 0 mouse press 1 $x $y {*}$args
    viewer 0 mouse release 1 $x $y {*}$args
}
proc report {what} {
    global paths surface
    puts [format "%-46s %2d path(s), %4d nodes; surface %d triangles, %d patch(es)" $what \
              [$paths getNumPaths] [$paths getNumNodes] [$surface getNumTriangles] [$surface getNumPatches]]
}

# New segments follow geodesics; new control points lie inside the triangles clicked.
$editor port connector setIndex 0 [lsearch -exact [lmap i {0 1 2} {$editor port connector getLabel 0 $i}] Geodesic]
$editor fire
puts "Connector: [$editor connector getName]; control points: [$editor controlPointType getLabel [$editor controlPointType getValue]]"

# The elephant seen from its side, in a window of 800 x 600 (screen origin bottom left).
viewer 0 setSize 800 600
viewer 0 setViewing 0
viewer 0 viewAll

click 310 280 -shift
report "Shift+click on the back: a new path"
click 420 275 -shift
report "Shift+click further along: a geodesic to it"
click 415 185 -shift
click 305 175 -shift
report "Two more on the flank"
press pathOperations1 0
report "Close: the path becomes a loop"

# Free-hand: switched on, a stroke along the body across both sides of the loop, switched
# off again.
press freeHandDrawing 0
viewer 0 mouse press 1 280 225
for {set x 290} {$x <= 460} {incr x 20} { viewer 0 mouseMove $x [expr {225 + ($x - 280) / 12}] }
viewer 0 mouse release 1 460 240
press freeHandDrawing 0
report "A free-hand stroke across the loop"

$editor splitPathsAtIntersections
report "Split at intersections"
press pathSelection 0
press pathOperations3 0
report "Select all, Smooth path"
$editor SnapEpsilon setValue 0.1
press pathOperations3 1
report "Snap path to edges (barycentric 0.1)"
$paths save [file join $outDir paths.json]
$paths export [file join $outDir paths.obj]
$paths export [file join $outDir paths.vtk]

# Pictures: the whole elephant, then a close view of a crossing with the triangles outlined.
viewer 0 snapshot [file join $outDir demo.png]
set display [lindex [all HxDisplaySurface] 0]
$display drawStyle setValue 3
$display fire
set crossing [dict get [viewer 0 pick 418 236] point]
viewer 0 camera heightAngle 0.12
viewer 0 camera pointAt {*}$crossing
viewer 0 snapshot [file join $outDir before.png]

set triangles [$surface getNumTriangles]
$editor SnapEpsilon setValue 0.02
press retriangulate 0
report "Retriangulate ([$editor retriangulate getLabel 0])"
press action 0
report "Undo: the old triangles are back"
press action 1
report "Redo: retriangulated again"
press surfaceOperations 1
report "Patchify Surface along the paths"
viewer 0 snapshot [file join $outDir after.png]
$surface save [file join $outDir retriangulated.off]

# Detaching the editor leaves the paths; loading the file back gives the same set.
$editor detach
set reloaded [load [file join $outDir paths.json]]
puts "Reloaded [file join $outDir paths.json]: [$reloaded getNumPaths] path(s),\
      [$reloaded getNumNodes] nodes, consistent: [$reloaded isConsistent]"
puts "Wrote paths.json, paths.obj, paths.vtk, retriangulated.off, demo.png, before.png and after.png to $outDir"

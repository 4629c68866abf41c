# The demo: a path drawn on the bundled elephant with the Dijkstra connector, saved as a path
# set, loaded back and exported as polylines.
#   surfpath examples/demo.tcl MESH_DIR OUTPUT_DIR
set meshDir [lindex $argv 0]
set outDir [expr {[llength $argv] > 1 ? [lindex $argv 1] : "demo-output"}]
file mkdir $outDir

set surface [load [file join $meshDir elephant.off]]
puts "Loaded $surface: [$surface getNumPoints] points, [$surface getNumTriangles] triangles"

set paths [create HxSurfacePathSet paths]
$paths surface connect $surface

# A path between two control points, the stretch between them filled in along mesh edges.
$paths addPath v:0 v:1000
$paths connect 0 0 1 Dijkstra
puts "Path 0: [llength [$paths getPath 0]] nodes, length [format %.4f [$paths getLength 0]]"

$paths save [file join $outDir paths.json]
$paths export [file join $outDir paths.obj]
$paths export [file join $outDir paths.vtk]
remove $paths
set reloaded [load [file join $outDir paths.json]]
puts "Reloaded [file join $outDir paths.json]: [$reloaded getNumPaths] path(s),\
      [$reloaded getNumNodes] nodes, consistent: [$reloaded isConsistent]"
puts "Wrote paths.json, paths.obj and paths.vtk to $outDir"

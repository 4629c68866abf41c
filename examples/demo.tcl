# The demo: paths drawn on the bundled elephant with the Dijkstra connector between points
# picked in the viewer, saved as a path set, loaded back, exported as polylines and
# photographed.
#   surfpath examples/demo.tcl MESH_DIR OUTPUT_DIR
set meshDir [lindex $argv 0]
set outDir [expr {[llength $argv] > 1 ? [lindex $argv 1] : "demo-output"}]
file mkdir $outDir

set surface [load [file join $meshDir elephant.off]]
puts "Loaded $surface: [$surface getNumPoints] points, [$surface getNumTriangles] triangles"

# The viewer draws offscreen: frame the elephant from its side.
$surface show
viewer 0 setSize 800 600
viewer 0 viewAll

# A vertex of the triangle under a screen point, as a click there would find it.
proc vertexAt {sx sy} {
    set hit [viewer 0 pick $sx $sy]
    if {![dict exists $hit triangle]} { error "nothing under the screen point $sx $sy" }
    set surface [dict get $hit object]
    return [lindex [[lindex [$surface data source] 0] getTriangle [dict get $hit triangle]] 0]
}

set paths [create HxSurfacePathSet paths]
$paths surface connect $surface

# Two paths between picked points, the stretches between them filled in along mesh edges:
# from the back over the body to the tip of the trunk, and from a hind leg to a front leg.
foreach {name from to} {"back to trunk" {320 260} {490 510} "hind leg to front leg" {350 110} {450 110}} {
    set path [$paths addPath v:[vertexAt {*}$from] v:[vertexAt {*}$to]]
    $paths connect $path 0 1 Dijkstra
    puts "Path $path ($name): [llength [$paths getPath $path]] nodes, length [format %.4f [$paths getLength $path]]"
}

$paths save [file join $outDir paths.json]
$paths export [file join $outDir paths.obj]
$paths export [file join $outDir paths.vtk]
remove $paths
set reloaded [load [file join $outDir paths.json]]
puts "Reloaded [file join $outDir paths.json]: [$reloaded getNumPaths] path(s),\
      [$reloaded getNumNodes] nodes, consistent: [$reloaded isConsistent]"

# A picture of the reloaded paths on the surface.
$reloaded show
viewer 0 snapshot [file join $outDir demo.png]

# What lies under the middle node of the first path, as a click there would see it.
set nodes [$reloaded getPath 0]
set k [expr {[llength $nodes] / 2}]
set hit [viewer 0 pick {*}[viewer 0 project {*}[lrange [$reloaded getNode [lindex $nodes $k]] end-2 end]]]
if {[dict exists $hit path]} {
    puts "Under node $k of path 0: [dict get $hit object], path [dict get $hit path], segment [dict get $hit segment]"
}
puts "Wrote paths.json, paths.obj, paths.vtk and demo.png to $outDir"

# Geodesic and triangle-strip connections from a script on the elephant: the geodesic is
# shorter than the edge path and runs through edge nodes; the strip joins nearby triangle nodes.
source $env(SURFPATH_TESTLIB)

set elephant [load [file join $env(SURFPATH_MESH_DIR) elephant.off]]
set ps [pathSetOn $elephant]

$ps addPath v:0 v:1000
$ps connect 0 0 1 Dijkstra
$ps addPath v:0 v:1000
set count [$ps connect 1 0 1 Geodesic]
check "the geodesic is shorter than the edge path" {expr {[$ps getLength 1] < [$ps getLength 0]}}
set kinds {}
foreach node [lrange [$ps getPath 1] 1 end-1] { lappend kinds [lindex [$ps getNode $node] 0] }
check "its nodes between are edge nodes" {expr {[llength $kinds] > 0 && [lsearch -exact $kinds Triangle] < 0 && [lsearch -exact $kinds Edge] >= 0}}
checkEqual "the set stays consistent" {$ps isConsistent} 1

$ps addPath t:100:0.3:0.3 t:104:0.2:0.5
set count [$ps connect 2 0 1 TriangleStrip]
check "the strip joins two nearby triangle nodes" {expr {$count >= 2}}
checkEqual "still consistent" {$ps isConsistent} 1
checkError "an unknown connector is named" {$ps connect 2 0 1 Wormhole} "there is no path connector named \"Wormhole\""

finish

# The generic path editor on the elephant as a user drives it: Shift+clicks with the geodesic
# connector make triangle control points, addCP adds edge and triangle nodes, then smoothing
# (button and command), snapping in both tolerance modes, both retriangulations with undo, and
# patchify of the retriangulated surface.
source $env(SURFPATH_TESTLIB)

set elephant [load [file join $env(SURFPATH_MESH_DIR) elephant.off]]
set ps [pathSetOn $elephant]
set ed [startEditor $ps 1]
set triangles [$elephant getNumTriangles]

checkEqual "the switch settings" {list $hxsurfacepathedit::refine $hxsurfacepathedit::refineConforming} {pzQ pqzS10Q}
checkEqual "its own connectors" {lmap i {0 1 2} {$ed port connector getLabel 0 $i}} {Dijkstra Geodesic TriangleStrip}
checkEqual "a triangulator button each" {lmap i {0 1} {$ed retriangulate getLabel $i}} {{Constrained Delaunay} {Quality Delaunay}}
checkEqual "no path: the new rows are insensitive" \
    {list [$ed pathOperations3 isSensitive 0] [$ed pathOperations3 isSensitive 1] [$ed retriangulate isSensitive 0]} {0 0 0}
checkEqual "the tolerance ports wait for the advanced options" {list [$ed SnapEpsilon isVisible] [$ed controlPointType isVisible]} {0 1}
$ed advancedOptions setValue 0 1
$ed fire
checkEqual "barycentric tolerance, at most 0.5" {list [$ed SnapEpsilon isVisible] [$ed snapEpsilonMode getValue] [$ed SnapEpsilon getMinMax]} {1 1 {0 0.5}}

$ed port connector setIndex 0 1
$ed fire
checkEqual "the menu chooses the geodesic connector" {$ed connector getName} Geodesic

viewer 0 setSize 800 600
viewer 0 setViewing 0
viewer 0 viewAll
foreach {x y} {320 260 490 510} {
    viewer 0 mouse press 1 $x $y -shift
    viewer 0 mouse release 1 $x $y -shift
}
proc kinds {path} { lmap node [$::ps getPath $path] {lindex [$::ps getNode $node] 0} }
set k [kinds 0]
checkEqual "Shift+clicks make triangle control points" {list [lindex $k 0] [lindex $k end]} {Triangle Triangle}
check "joined through edge nodes" {expr {[llength $k] > 3 && [lsearch -exact $k Edge] > 0}}
checkEqual "both rows sensitive once a path exists" {list [$ed pathOperations3 isSensitive 1] [$ed retriangulate isSensitive 1]} {1 1}

$ed controlPointType setValue 0
$ed fire
viewer 0 mouse press 1 430 330 -shift
viewer 0 mouse release 1 430 330 -shift
checkEqual "with control point type Vertex a click appends a vertex node" {lindex [kinds 0] end} Vertex
press $ed freeHandDrawing 0
checkEqual "free-hand drawing hides the rows that would interrupt a stroke" \
    {lmap p {action surfaceOperations pathOperations3 retriangulate} {$ed $p isVisible}} {0 0 0 0}
press $ed freeHandDrawing 0
checkEqual "and shows them again" {lmap p {action pathOperations3 retriangulate} {$ed $p isVisible}} {1 1 1}
$ed addCP 1 100
$ed addCP 1 300 0.4
$ed addCP 1 900 0.2 0.3
checkEqual "addCP starts a path at a vertex, then an edge and a triangle node" {lindex [kinds 1] end} Triangle
check "the second path is consistent" {$ps isConsistent}

# Smoothing from the command: no entry in the history; from the button: one.
set before [$ps getPath 0]
$ed smooth 0.5 3
check "the command moved the paths" {expr {[$ps getPath 0] ne $before}}
checkError "smooth takes a factor and a count" {$ed smooth 0.5} "bad value: smooth"
set nodes [llength [$ps getPath 1]]
press $ed action 0
check "undo after the command takes back the last addCP, not the smoothing" {expr {[llength [$ps getPath 1]] < $nodes}}
press $ed action 1
set smoothed [$ps getPath 0]
press $ed pathOperations3 0
check "the Smooth path button changes the paths" {expr {[$ps getPath 0] ne $smoothed}}
press $ed action 0
checkEqual "and is undone" {$ps getPath 0} $smoothed

press $ed pathSelection 0
set before [list [$ps getPath 0] [$ps getPath 1]]
press $ed pathOperations2 2
checkEqual "Entangle of the selected paths keeps the set consistent" {$ps isConsistent} 1
press $ed action 0
checkEqual "and is one undoable step" {list [$ps getPath 0] [$ps getPath 1]} $before

# Snapping: a large barycentric tolerance makes every node a vertex; world mode keeps the range.
$ed SnapEpsilon setValue 0.5
press $ed pathOperations3 1
checkEqual "the active path snapped to vertices" {lsort -unique [kinds 0]} Vertex
press $ed action 0
$ed snapEpsilonMode setValue 0
$ed fire
checkEqual "world mode keeps the barycentric range" {$ed SnapEpsilon getMinMax} {0 0.5}
$ed SnapEpsilon setValue 0
press $ed pathOperations3 1
check "a zero world tolerance snaps nothing" {expr {[lsearch -exact [kinds 0] Edge] >= 0}}

# Retriangulation along the paths, undone, then the quality mode and patchify.
$ed SnapEpsilon setValue 0.01
press $ed retriangulate 0
set split [$elephant getNumTriangles]
check "the paths' triangles were split" {expr {$split > $triangles}}
checkEqual "every path node is a vertex now" {lsort -unique [concat [kinds 0] [kinds 1]]} Vertex
press $ed action 0
checkEqual "undo brings the old triangles back" {$elephant getNumTriangles} $triangles
check "and the paths' edge nodes" {expr {[lsearch -exact [kinds 0] Edge] >= 0}}
press $ed retriangulate 1
check "the quality mode adds points beyond the plain split" {expr {[$elephant getNumTriangles] > $split}}
$ed port connector setIndex 0 0
$ed selectPath setValue 1
$ed fire
press $ed pathOperations1 0
press $ed surfaceOperations 1
check "the closed path cuts the retriangulated surface into patches" {expr {[$elephant getNumPatches] > 1}}
checkEqual "the set stays consistent" {$ps isConsistent} 1
finish

# Path sets in a script: a path on a real mesh joined by the Dijkstra connector, its queries,
# saving and loading it back, and refusing a broken file without changing anything.
source $env(SURFPATH_TESTLIB)

set elephant [load [file join $env(SURFPATH_MESH_DIR) elephant.off]]
set ps [create HxSurfacePathSet paths]
checkEqual "a new set is empty" {$ps getNumPaths} 0
checkError "nodes need a surface" {$ps addPath v:0 v:100} "paths has no surface"
$ps surface connect $elephant
checkEqual "connected through its port" {$ps surface source} $elephant

checkEqual "a two-vertex path" {$ps addPath v:0 v:1000} 0
set count [$ps connect 0 0 1 Dijkstra]
check "the connector added nodes in between" {expr {$count > 2}}
checkEqual "the path holds them all" {llength [$ps getPath 0]} $count
checkEqual "the new nodes are in the table" {$ps getNumNodes} $count

set first [$ps getNode [lindex [$ps getPath 0] 0]]
set last [$ps getNode [lindex [$ps getPath 0] end]]
set middle [$ps getNode [lindex [$ps getPath 0] 1]]
checkEqual "the start is vertex 0, a control point" {lrange $first 0 4} {Vertex 0 0.0 0.0 1}
checkEqual "the end is vertex 1000, a control point" {lrange $last 0 4} {Vertex 1000 0.0 0.0 1}
checkEqual "intermediate nodes are plain vertices" {lindex $middle 4} 0
checkEqual "the node's position is the vertex's point" {lrange $first 5 7} [$elephant getPoint 0]

proc dist {a b} {
    expr {sqrt(pow([lindex $a 0] - [lindex $b 0], 2) + pow([lindex $a 1] - [lindex $b 1], 2) + pow([lindex $a 2] - [lindex $b 2], 2))}
}
set length [$ps getLength 0]
check "the path is no shorter than the straight line" {expr {$length >= [dist [lrange $first 5 7] [lrange $last 5 7]]}}
set sum 0
set previous {}
foreach node [$ps getPath 0] {
    set p [lrange [$ps getNode $node] 5 7]
    if {$previous ne {}} { set sum [expr {$sum + [dist $previous $p]}] }
    set previous $p
}
check "the length is the sum of its segments" {expr {abs($sum - $length) < 1e-4 * $length}}
checkEqual "an open path" {$ps isClosed 0} 0
checkEqual "consistent" {$ps isConsistent} 1
checkEqual "nothing selected without a display" {$ps getSelection} {{} -1}

close [file tempfile tmp]
file delete $tmp
file mkdir $tmp.d
set saved [file join $tmp.d paths.json]
$ps save $saved
set path [$ps getPath 0]
remove $ps
set loaded [load $saved]
checkEqual "loaded under the file's name" {set loaded} paths.json
checkEqual "on the surface already loaded" {$loaded surface source} $elephant
checkEqual "no second surface" {all HxSurface} $elephant
checkEqual "the same path" {$loaded getPath 0} $path
checkEqual "the same length" {$loaded getLength 0} $length
checkEqual "the same end node" {$loaded getNode [lindex $path end]} $last

set broken [file join $tmp.d broken.json]
set f [open $broken w]
puts $f "\{\"format\": \"surfpath path set\", \"version\": 1, \"surface\": \"elephant.off\", \"nodes\": \["
close $f
set before [all]
checkError "a broken file" {load $broken} "cannot load \"$broken\": not a valid JSON file: parse error"
checkEqual "nothing was added" {all} $before
checkEqual "the loaded set is unchanged" {$loaded getPath 0} $path
# Fuzzing once brought the program down with an empty name.
checkError "saving needs a file name" {$loaded save ""} "no file name was given"

$loaded export [file join $tmp.d paths.obj]
set f [open [file join $tmp.d paths.obj]]
set obj [read $f]
close $f
checkEqual "one polyline in the export" {regexp -all -line {^l } $obj} 1
file delete -force $tmp.d
finish

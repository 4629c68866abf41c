# The viewer from a script: a Dijkstra path on the elephant shown, framed and photographed;
# picks at the projected path nodes name the path and the segment; clear errors.
source $env(SURFPATH_TESTLIB)

set elephant [load [file join $env(SURFPATH_MESH_DIR) elephant.off]]
set ps [pathSetOn $elephant]
$ps addPath v:0 v:1000
$ps connect 0 0 1 Dijkstra
set display [$ps show]
$elephant show
viewer 0 setSize 400 300
viewer 0 setViewing 0
viewer 0 viewAll

set png [file join [expr {[info exists env(TMPDIR)] ? $env(TMPDIR) : "/tmp"}] viewer-test-[pid].png]
viewer 0 snapshot $png
check "the snapshot is a PNG file" {expr {[file size $png] > 1000}}
file delete $png
checkError "a folder that does not exist" {viewer 0 snapshot /no/such/folder/x.png} "/no/such/folder/x.png"

# Every pick at a projected node of the path that hits the path names path 0 and a segment
# next to that node, or, at the ends, the control point there; the surface hides nodes on
# the far side, but most are in view.
set nodes [$ps getPath 0]
set onPath 0
set wrong {}
for {set k 0} {$k < [llength $nodes]} {incr k} {
    set xyz [lrange [$ps getNode [lindex $nodes $k]] end-2 end]
    set hit [viewer 0 pick {*}[viewer 0 project {*}$xyz]]
    if {![dict exists $hit path]} continue
    incr onPath
    if {[dict get $hit object] ne $display || [dict get $hit path] != 0} {
        lappend wrong "node $k: $hit"
    } elseif {[dict exists $hit controlPoint]} {
        if {[dict get $hit controlPoint] != [lindex $nodes $k]} { lappend wrong "node $k: $hit" }
    } elseif {[dict get $hit segment] < $k - 1 || [dict get $hit segment] > $k} {
        lappend wrong "node $k: $hit"
    }
}
checkEqual "picks on the path name its segments" {set wrong} {}
check "most nodes of the path are in view" {expr {$onPath > [llength $nodes] / 3}}

# A click with no editor listening is not handled, and viewing mode switches with Esc.
set xyz [lrange [$ps getNode [lindex $nodes 0]] end-2 end]
checkEqual "an unhandled click" {viewer 0 mouse release 1 {*}[viewer 0 project {*}$xyz] -shift} 0
viewer 0 key press ESCAPE
checkEqual "Esc switches to viewing" {viewer 0 isViewing} 1

remove $display
set hit [viewer 0 pick {*}[viewer 0 project {*}$xyz]]
check "without the display no path is picked" {expr {![dict exists $hit path]}}
checkError "a point behind the camera" {viewer 0 project {*}[lrange [lindex [viewer 0 camera] 1] 0 2]} "behind the camera"
finish

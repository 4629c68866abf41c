# Surfaces in a script: loading a real mesh, querying it, saving it in every format and
# reading it back, and refusing broken files.
source $env(SURFPATH_TESTLIB)

set elephant [load [file join $env(SURFPATH_MESH_DIR) elephant.off]]
checkEqual "the object is named after the file" {set elephant} elephant.off
checkEqual "its class" {$elephant getTypeId} HxSurface
checkEqual "points" {$elephant getNumPoints} 2775
checkEqual "triangles" {$elephant getNumTriangles} 5558
checkEqual "edges of a closed surface" {$elephant getNumEdges} [expr {5558 * 3 / 2}]
checkEqual "listed among the surfaces" {all HxSurface} elephant.off

set box [$elephant getBoundingBox]
checkEqual "the box has a minimum and a maximum corner" {llength $box} 6
foreach axis {0 1 2} {
    check "the box is not flat along axis $axis" {expr {[lindex $box $axis] < [lindex $box [expr {$axis + 3}]]}}
}
set inside 1
foreach corner [$elephant getTriangle 100] {
    foreach c [$elephant getPoint $corner] lo [lrange $box 0 2] hi [lrange $box 3 5] {
        if {$c < $lo || $c > $hi} { set inside 0 }
    }
}
check "triangle corners are points inside the box" {set inside}
checkError "a point past the end" {$elephant getPoint 2775} "point index 2775 is out of range"
checkError "a triangle index that is no number" {$elephant getTriangle first} "expected integer"

close [file tempfile tmp]
file delete $tmp
set dir $tmp.d
file mkdir $dir

foreach ext {off obj ply stl} {
    set file [file join $dir copy.$ext]
    $elephant save $file
    set copy [load $file]
    checkEqual "$ext keeps the triangles" {$copy getNumTriangles} 5558
    checkEqual "$ext keeps the points" {$copy getNumPoints} 2775
    checkEqual "$ext keeps the bounding box" {$copy getBoundingBox} $box
    remove $copy
}

set broken [file join $dir broken.off]
set f [open $broken w]
puts $f "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 7"
close $f
checkError "a broken file names the file" {load $broken} "cannot load \"$broken\""
checkError "a broken file says why" {load $broken} "line 6: face 0 uses point index 7, but the file has only 3 points"
checkError "a missing file" {load [file join $dir none.obj]} "no such file"
checkEqual "failed loads add nothing" {all} elephant.off

file delete -force $dir
finish

# The vertex editor's Tcl commands and its buttons, menu and sliders, pressed as a user would,
# on a 5 x 5 grid (point x + 5y at (x, y, 0)) where every edge path has a known length.
source $env(SURFPATH_TESTLIB)
set surfpath [lindex $argv 0]

# Without any connector the editor still starts, says so, and answers connector commands.
set console [exec $surfpath -e {
    source $env(SURFPATH_TESTLIB)
    set hxsurfacepathedit::vertexEditorConnectors {}
    set ed [startEditor [pathSetOn [loadGrid 2]] 0]
    puts "connector foo: [$ed connector foo]"
    catch {$ed addCP 1}
} 2>@1]
foreach line {"Warning: no path connector available" "connector foo: No connector class instantiated"
              "usage: addCP pathID elemID \[bary1\] \[bary2\]"} {
    check "the console shows: $line" {expr {[string first $line $console] >= 0}}
}

# Two entries of one connector class tell a connector made on choice from one reused.
set hxsurfacepathedit::vertexEditorConnectors {Dijkstra Dijkstra}
set ps [pathSetOn [loadGrid 5]]
set ed [startEditor $ps 0]

proc slide {port value} {
    $::ed $port setValue $value
    $::ed fire
}
proc sensitivity {port} {
    set flags {}
    for {set i 0} {$i < [$::ed $port getNum]} {incr i} { lappend flags [$::ed $port isSensitive $i] }
    return $flags
}
proc vertices {path} { lmap node [$::ps getPath $path] {lindex [$::ps getNode $node] 1} }
proc undoRedo {} { lrange [sensitivity action] 0 1 }

checkEqual "an empty set: nothing to select or patchify" \
    {list [sensitivity pathSelection] [sensitivity surfaceOperations]} {{0 0} {1 0}}
checkEqual "addCP on a set without paths starts one at the vertex" {$ed addCP 0 17} {}
checkEqual "holding vertex node 17" {lrange [$ps getNode [$ps getPath 0]] 0 1} {Vertex 17}
$ed addCP 0 19
checkEqual "addCP on a path joins the vertex along the grid" {vertices 0} {17 18 19}
checkEqual "only the ends are control points" {lmap n [$ps getPath 0] {lindex [$ps getNode $n] 4}} {1 0 1}
set settled [$ed connector getNumSettled]
checkEqual "connector words go to the current connector" {$ed connector getName} Dijkstra
checkEqual "connector alone does nothing" {$ed connector} {}

$ed connector setIndex 1
$ed fire
checkEqual "choosing the other entry makes a connector of its own" {$ed connector getNumSettled} 0
$ed addCP 0 4
checkEqual "which addCP then uses" {vertices 0} {17 18 19 14 9 4}
check "and its search settled other vertices" {expr {[$ed connector getNumSettled] != $settled}}
$ed connector setIndex 0
$ed fire
checkEqual "choosing the first entry again reuses its connector" {$ed connector getNumSettled} $settled

$ed addCP 1 3 0.5
$ed addCP 9 2 0.25 0.5
checkEqual "addCP with one parameter starts a path at an edge node" {lrange [$ps getNode [$ps getPath 1]] 0 2} {Edge 3 0.5}
checkEqual "with two at a triangle node" {lrange [$ps getNode [$ps getPath 2]] 0 3} {Triangle 2 0.25 0.5}
checkError "addCP without an element is not the editor's" {$ed addCP 1} {unknown command or port "addCP"}
checkError "nor a word only the generic editor knows" {$ed smooth} {unknown command or port "smooth"}

$ed fire
checkEqual "every addCP can be undone" {undoRedo} {1 0}
foreach expected {2 1 1} {
    press $ed action 0
    checkEqual "Undo takes back one addCP" {$ps getNumPaths} $expected
}
checkEqual "the third the appended stretch" {vertices 0} {17 18 19}
press $ed action 1
checkEqual "Redo brings it back" {vertices 0} {17 18 19 14 9 4}
$ed clearUndoStack
$ed fire
checkEqual "clearUndoStack leaves nothing to undo or redo" {undoRedo} {0 0}

# Path 0 runs 17 18 19 14 9 4, control points at 17, 19 and 4.
slide selectPath 0
checkEqual "the slider selects its path alone" {$ps getSelection} {0 -1}
checkEqual "and ranges the control point slider over it" {$ed selectCP getMinMax} {-1 2}
checkEqual "the info line" {$ed info getText} "Active 0: nPoints 6, length 5.000000, nCPs 3 "
checkEqual "every path operation is open" \
    {list [sensitivity action] [sensitivity pathOperations1] [sensitivity pathOperations2]} {{1 0 1 1} {1 1 1} {1 1 1 1}}
press $ed pathOperations1 0
check "Close closes the active path" {$ps isClosed 0}
check "as the info line says" {string match "*nCPs 3 (closed)" [$ed info getText]}
slide selectCP 1
checkEqual "the control point slider picks the second control point" {$ps getSelection} [list 0 [lindex [$ps getPath 0] 2]]
press $ed pathOperations1 1
checkEqual "Open cuts the loop there" {list [$ps isClosed 0] [lindex [vertices 0] 0]} {0 19}
set opened [vertices 0]
press $ed pathOperations1 2
checkEqual "Reverse turns the path around" {vertices 0} [lreverse $opened]
slide selectPath 0
press $ed action 3
checkEqual "Delete Vertex without an active control point changes nothing" {vertices 0} [lreverse $opened]
slide selectCP 0
press $ed action 3
checkEqual "with one it deletes that control point and its stretch" {vertices 0} [lrange [lreverse $opened] 1 end]
checkEqual "the set stays consistent" {$ps isConsistent} 1

$ps addPath v:0 v:1 v:2
$ps addPath v:2 v:7
slide selectPath 2
checkEqual "a two-node path can neither be closed nor opened" {sensitivity pathOperations1} {0 0 1}
press $ed pathSelection 0
checkEqual "Select all selects every path in order" {$ps getSelection} {{0 1 2} -1}
press $ed action 0
checkEqual "undoably" {$ps getSelection} {2 -1}
press $ed pathSelection 1
checkEqual "Deselect all selects none" {$ps getSelection} {{} -1}
checkEqual "the info line asks for one" {$ed info getText} "No active path: To select a path, click onto the path."
checkEqual "no selection to delete or work on" {list [lindex [sensitivity action] 2] [sensitivity pathOperations2]} {0 {0 0 0 0}}
press $ed action 0
checkEqual "undoably too" {$ps getSelection} {2 -1}

press $ed pathSelection 1
$ed clearUndoStack
$ed selectPath setMinMax -1 10
slide selectPath 7
checkEqual "a value past the last path selects nothing" {$ps getSelection} {{} -1}
checkEqual "runs no operation" {undoRedo} {0 0}
checkEqual "and resets both sliders" {list [$ed selectPath getMinMax] [$ed selectPath getValue] [$ed selectCP getMinMax]} \
    {{-1 2} -1 {-1 -1}}
foreach i {1 2 3} {
    # Pressed through a stale panel: with no path selected the operation must do nothing.
    $ed pathOperations2 setSensitivity $i 1
    press $ed pathOperations2 $i
}
checkEqual "with no selection Split, Entangle and Untangle do nothing" {undoRedo} {0 0}
press $ed pathSelection 0
press $ed pathOperations2 0
checkEqual "Merge joins the selected paths that meet" {list [$ps getNumPaths] [vertices 1]} {2 {0 1 2 7}}
press $ed pathSelection 0
press $ed action 2
checkEqual "Delete Path(s) deletes the selected paths" {$ps getNumPaths} 0

# A row and a column crossing at point 12.
$ps addPath v:10 v:11 v:12 v:13 v:14
$ps addPath v:2 v:7 v:12 v:17 v:22
press $ed pathSelection 0
proc sharedAtCrossing {} { expr {[lindex [$::ps getPath 0] 2] == [lindex [$::ps getPath 1] 2]} }
press $ed pathOperations2 2
checkEqual "Entangle makes the selected paths share the crossing" sharedAtCrossing 1
press $ed pathOperations2 3
checkEqual "Untangle gives each its own node again" sharedAtCrossing 0
press $ed pathOperations2 1
checkEqual "Split at Intersections rejoins each selected path's pieces" {lmap i {0 1} {vertices $i}} \
    {{10 11 12 13 14} {2 7 12 17 22}}
checkEqual "through the node they now share" sharedAtCrossing 1
checkEqual "consistent" {$ps isConsistent} 1
finish

# The editor module from a script: the package's resource configures the editor menu, the
# module is made by name (which loads the package), attached to a path set on the elephant,
# and its ports are seen and pressed through the module's command.
source $env(SURFPATH_TESTLIB)

checkEqual "the resource lists the editors" {set hxsurfacepathedit::editorClasses} \
    {SurfaceVertexPathEditor SurfacePathEditor}
checkEqual "and the library that holds them" {set hxsurfacepathedit::editorLibs} {hxsurfacepathedit hxsurfacepathedit}
checkEqual "every connector for the generic editor" {set hxsurfacepathedit::genericEditorConnectors} {Dijkstra Geodesic TriangleStrip}
# A row whose class exists nowhere: starting it must leave the choice open.
lappend hxsurfacepathedit::editorTypes Missing
lappend hxsurfacepathedit::editorClasses NoSuchEditor
lappend hxsurfacepathedit::editorLibs hxsurfacepathedit

set elephant [load [file join $env(SURFPATH_MESH_DIR) elephant.off]]
set ps [create HxSurfacePathSet paths]
$ps surface connect $elephant

set ed [create HxSurfacePathEditor]
check "made by name from the package library" {expr {"libhxsurfacepathedit.so" in [dso loaded]}}
checkEqual "only the data connection before attaching" {$ed getPorts} data
checkEqual "create takes one number" {$ed create 3} {}
checkError "and nothing else" {$ed create} "bad value: create"

$ed attach $ps
checkEqual "attached: menu and start button" {$ed getPorts} {data portEditorTypes portStartEditor}
checkEqual "the menu holds the configured types" {$ed portEditorTypes getNum} 3
checkEqual "in order" {list [$ed portEditorTypes getLabel 0 0] [$ed portEditorTypes getLabel 0 2]} \
    {{Vertex path editor} Missing}
checkEqual "the button" {list [$ed portStartEditor getLabel] [$ed portStartEditor getLabel 0]} \
    {{Start selected editor} start}

$ed portEditorTypes setIndex 2
$ed portStartEditor hit 0
checkEqual "fire answers nothing" {$ed fire} {}
checkEqual "a missing editor leaves menu and button" {$ed getPorts} {data portEditorTypes portStartEditor}
checkEqual "both still shown" {list [$ed portEditorTypes isVisible] [$ed portStartEditor isVisible]} {1 1}

$ed detach
checkEqual "detached: every port but the data connection gone" {$ed getPorts} data
finish

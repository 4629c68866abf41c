# `exit` while an editor's ports are shown in the window must end the process cleanly: the
# objects and their port widgets go before the toolkit does.
set ps [create HxSurfacePathSet paths]
$ps surface connect [lindex [all HxSurface] 0]
set ed [create HxSurfacePathEditor]
$ed attach $ps
$ed portEditorTypes setIndex 1
$ed portStartEditor hit 0
$ed fire
gui select [all HxSurfacePathEditor]
after 300 {exit 0}

# The surfpath program as a user runs it: one command, scripts with errors, help, plug-ins.
source $env(SURFPATH_TESTLIB)
set surfpath [lindex $argv 0]

checkEqual "-e prints the result" {exec $surfpath -e {expr {6*7}}} 42
checkEqual "-e puts" {exec $surfpath -e {puts [expr {6*7}]}} 42

close [file tempfile tmp]
file delete $tmp
set dir $tmp.d
file mkdir $dir
set bad [file join $dir bad.tcl]
set f [open $bad w]
puts $f "puts start\nset x 1\nnosuchcommand 3\nputs notreached"
close $f
check "a failing script exits non-zero" {catch {exec $surfpath $bad} message}
catch {exec $surfpath $bad} message
check "the error names the command" {string match *nosuchcommand* $message}
check "the error names the file and line" {string match "*bad.tcl\" line 3*" $message}

set args [file join $dir args.tcl]
set f [open $args w]
puts $f {puts "[llength $argv] [lindex $argv 1]"}
close $f
checkEqual "script arguments reach argv" {exec $surfpath $args a b c} "3 b"

set help [exec $surfpath -e help]
foreach cmd {create remove all load help dso} {
    check "help lists $cmd" {regexp -line "^$cmd " $help}
}
check "help shows usage" {string match "*create CLASS ?NAME?*" $help}
checkEqual "help for one command" {exec $surfpath -e {help load}} \
    "load FILE  -- read a data file; returns the new object's name"

check "unknown format is a clear error" {
    catch {exec $surfpath -e "load $bad"} message
    string match "*cannot load*bad.tcl*unknown file format .tcl*" $message
}
check "missing file is a clear error" {
    set f [open $args w]; close $f
    catch {exec $surfpath -e "load $dir/none.tcl"} message
    string match "*cannot load*" $message
}

# The plug-in library is loaded only when its class is first created.
set script [file join $dir plugin.tcl]
set f [open $script w]
puts $f {
    set before [dso loaded]
    set name [create HxTestPluginModule]
    puts "$before|[dso loaded]|$name|[$name getTypeId]|[all HxModule]"
}
close $f
checkEqual "plug-in loaded on first create" {exec $surfpath $script} \
    "|libsurfpath_testplugin.so|HxTestPluginModule|HxTestPluginModule|HxTestPluginModule"

# The interactive shell reads commands across lines.
checkEqual "interactive input" {exec $surfpath << "proc f {} {\nreturn 5\n}\nf\n"} 5

file delete -force $dir
finish

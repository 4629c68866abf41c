# The demo: shows what the host offers so far.
puts "surfpath [info patchlevel] host ready"
puts "Commands:"
puts [help]
puts "Plug-in classes declared by resources: [dso classes]"

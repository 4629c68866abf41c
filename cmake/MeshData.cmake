# Real meshes for tests and benchmarks (elephant, bunny, armadillo, ...), unpacked at build
# time from the data archive of Debian's libcgal-demo into ${SURFPATH_MESH_DIR}; they are
# never copied into the sources. A target that reads them calls surfpath_use_meshes(TARGET):
# it then depends on `meshdata` and sees the folder as the string macro SURFPATH_MESH_DIR.
# Tcl tests find the folder in the environment variable SURFPATH_MESH_DIR.

set(SURFPATH_MESH_ARCHIVE /usr/share/doc/libcgal-dev/data.tar.gz
    CACHE FILEPATH "Archive with the meshes for tests and benchmarks (package libcgal-demo)")
set(SURFPATH_MESH_DIR ${CMAKE_BINARY_DIR}/data/meshes)

if(NOT EXISTS ${SURFPATH_MESH_ARCHIVE})
  message(FATAL_ERROR "Mesh archive ${SURFPATH_MESH_ARCHIVE} not found: install libcgal-demo "
                      "(scripts/install-deps) or set SURFPATH_MESH_ARCHIVE")
endif()

set(_meshdata_stamp ${CMAKE_BINARY_DIR}/data/meshes.stamp)
add_custom_command(OUTPUT ${_meshdata_stamp}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/data
  COMMAND ${CMAKE_COMMAND} -E chdir ${CMAKE_BINARY_DIR} ${CMAKE_COMMAND} -E tar xzf ${SURFPATH_MESH_ARCHIVE} data/meshes
  COMMAND ${CMAKE_COMMAND} -E touch ${_meshdata_stamp}
  DEPENDS ${SURFPATH_MESH_ARCHIVE}
  COMMENT "Unpacking test meshes into ${SURFPATH_MESH_DIR}"
  VERBATIM)
add_custom_target(meshdata ALL DEPENDS ${_meshdata_stamp})

function(surfpath_use_meshes target)
  add_dependencies(${target} meshdata)
  target_compile_definitions(${target} PRIVATE SURFPATH_MESH_DIR="${SURFPATH_MESH_DIR}")
endfunction()

# What the scripts of this folder share. They get BUILD, WORK, GENERATOR, BUILD_TYPE and CXX_FLAGS.

# run(<what> <command>...): runs a command whose failure ends the script; what it said is in ${output}.
function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${what} failed (${result}):\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(make_folders)
  file(REMOVE_RECURSE ${WORK})
  file(MAKE_DIRECTORY ${WORK}/user ${WORK}/run)
  file(CHMOD ${WORK}/run DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
endfunction()

# build_example(<prefix> [<option of cmake>...]): builds the example against the package below the prefix.
function(build_example prefix)
  run("the configuration of the example" ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${WORK}/build -G ${GENERATOR}
    -D CMAKE_BUILD_TYPE=${BUILD_TYPE} -D CMAKE_PREFIX_PATH=${prefix} "-D CMAKE_CXX_FLAGS=${CXX_FLAGS}" ${ARGN})
  run("the build of the example" ${CMAKE_COMMAND} --build ${WORK}/build)
endfunction()

# check_library(<name> <folder>): the example's library must be the one below the folder.
function(check_library name folder)
  run("the look-up of the libraries" ldd ${WORK}/build/example)
  if(NOT output MATCHES "lib${name}\\.so\\.[0-9]+ => ${folder}/")
    message(FATAL_ERROR "lib${name} is not taken from ${folder}:\n${output}")
  endif()
endfunction()

function(run_example)
  run("the example" ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen HOME=${WORK}/user XDG_CONFIG_HOME=${WORK}/user
    XDG_RUNTIME_DIR=${WORK}/run NORVANE_REGISTRY_FILE=${WORK}/registry.ini ${WORK}/build/example)
  if(NOT output MATCHES "the example ran from start to end")
    message(FATAL_ERROR "the example did not say that it ran:\n${output}")
  endif()
endfunction()

# Installs a build into a fresh folder, builds the example against it and runs the example.
# cmake -D BUILD=<build folder> -D WORK=<folder to use> -D GENERATOR=<name> -D BUILD_TYPE=<type> -D CXX_FLAGS=<flags> -P run.cmake
function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${what} failed (${result}):\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/user ${WORK}/run)
file(CHMOD ${WORK}/run DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
set(prefix ${WORK}/prefix)
run("the installation" ${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
file(GLOB_RECURSE private_headers ${prefix}/*_p.h)
if(private_headers)
  message(FATAL_ERROR "private headers are installed: ${private_headers}")
endif()

run("the configuration of the example" ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${WORK}/build -G ${GENERATOR}
  -D CMAKE_BUILD_TYPE=${BUILD_TYPE} -D CMAKE_PREFIX_PATH=${prefix} "-D CMAKE_CXX_FLAGS=${CXX_FLAGS}")
run("the build of the example" ${CMAKE_COMMAND} --build ${WORK}/build)
# The libraries must be those of the installation.
run("the look-up of the libraries" ldd ${WORK}/build/example)
foreach(library tolv tolv_base)
  if(NOT output MATCHES "lib${library}\\.so\\.[0-9]+ => ${prefix}/")
    message(FATAL_ERROR "lib${library} is not taken from the installation:\n${output}")
  endif()
endforeach()
run("the example" ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen HOME=${WORK}/user XDG_CONFIG_HOME=${WORK}/user
  XDG_RUNTIME_DIR=${WORK}/run NORVANE_REGISTRY_FILE=${WORK}/registry.ini ${WORK}/build/example)
if(NOT output MATCHES "the example ran from start to end")
  message(FATAL_ERROR "the example did not say that it ran:\n${output}")
endif()
file(REMOVE_RECURSE ${WORK})

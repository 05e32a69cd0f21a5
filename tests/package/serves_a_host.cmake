# Installs a build into a fresh folder, builds the example against it and runs the example.
# cmake -D BUILD=<build folder> -D WORK=<folder to use> -D GENERATOR=<name> -D BUILD_TYPE=<type> -D CXX_FLAGS=<flags> -P serves_a_host.cmake
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)

make_folders()
set(prefix ${WORK}/prefix)
run("the installation" ${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
file(GLOB_RECURSE private_headers ${prefix}/*_p.h)
if(private_headers)
  message(FATAL_ERROR "private headers are installed: ${private_headers}")
endif()
build_example(${prefix})
# The libraries must be those of the installation.
check_library(tolv ${prefix})
check_library(tolv_base ${prefix})
run_example()
file(REMOVE_RECURSE ${WORK})

# Configures the project on base services of a package from elsewhere, installs it, builds the example against the two packages
# and runs it. The services from elsewhere are the embedded ones in another place; the library is the one that BUILD has
# built, which does not depend on where its services come from: WHOLE builds it anew.
# cmake -D BUILD=<build folder> -D WORK=<folder to use> -D GENERATOR=<name> -D BUILD_TYPE=<type> -D CXX_FLAGS=<flags> [-D WHOLE=ON] -P stands_on_external_services.cmake
include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
set(top ${CMAKE_CURRENT_LIST_DIR}/../..)

make_folders()
set(suite ${WORK}/suite)
set(prefix ${WORK}/prefix)
file(GLOB headers ${top}/base/*.h)
list(FILTER headers EXCLUDE REGEX "_p\\.h$")
file(COPY ${headers} DESTINATION ${suite}/include)
file(GLOB libraries ${BUILD}/lib/libtolv_base.so*)
file(COPY ${libraries} DESTINATION ${suite}/lib)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/suite_services-config.cmake DESTINATION ${suite}/lib/cmake/suite_services)

# Without run paths: the library is not linked here, so there is none to be changed when it is installed.
run("the configuration of the project" ${CMAKE_COMMAND} -S ${top} -B ${WORK}/project -G ${GENERATOR}
  -D CMAKE_BUILD_TYPE=${BUILD_TYPE} -D CMAKE_PREFIX_PATH=${suite} -D CMAKE_SKIP_RPATH=ON "-D CMAKE_CXX_FLAGS=${CXX_FLAGS}"
  -D TOLV_BASE=external -D TOLV_EXTERNAL_BASE_PACKAGE=suite_services -D TOLV_EXTERNAL_BASE_TARGET=suite::services
  -D TOLV_BUILD_HOST=OFF -D TOLV_BUILD_MODULES=OFF)
if(EXISTS ${WORK}/project/base/CMakeFiles/tolv_base.dir)
  message(FATAL_ERROR "the embedded base services are part of the build")
endif()
if(WHOLE)
  run("the build of the project" ${CMAKE_COMMAND} --build ${WORK}/project)
else()
  file(GLOB libraries ${BUILD}/lib/libtolv.so*)
  file(COPY ${libraries} DESTINATION ${WORK}/project/lib)
endif()
run("the installation" ${CMAKE_COMMAND} --install ${WORK}/project --prefix ${prefix})
foreach(name cfg.h msg.h libtolv_base)
  file(GLOB_RECURSE found ${prefix}/*${name}*)
  list(FILTER found EXCLUDE REGEX "/tolv_msg\\.h$")
  if(found)
    message(FATAL_ERROR "something of the embedded base services is installed: ${found}")
  endif()
endforeach()

build_example(${prefix} -D suite_services_DIR=${suite}/lib/cmake/suite_services)
set(ENV{LD_LIBRARY_PATH} ${prefix}/lib:${suite}/lib)
check_library(tolv ${prefix})
check_library(tolv_base ${suite})
run_example()
file(REMOVE_RECURSE ${WORK})

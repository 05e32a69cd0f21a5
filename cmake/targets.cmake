include(GoogleTest)

# tolv_precompile(<target> <header>...): precompiled headers, where they are wanted.
function(tolv_precompile target)
  if(TOLV_USE_PCH)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# tolv_add_test(<name> SOURCES <file>... LIBS <target>... [PROPERTIES <ctest property> <value>...])
# One executable for a class family; every case becomes a ctest case of its own that runs in a process of its own.
function(tolv_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;PROPERTIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tolv_flags ${ARG_LIBS})
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 180 ${ARG_PROPERTIES}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()

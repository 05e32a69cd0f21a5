include(GoogleTest)

# tolv_precompile(<name> <library> HEADERS <header>...): precompiled headers that other targets use by tolv_use_precompiled(). Whoever
# does must link <library>, too, as the compiler refuses headers that were compiled with macros that it lacks.
function(tolv_precompile name library)
  cmake_parse_arguments(ARG "" "" "HEADERS" ${ARGN})
  if(TOLV_USE_PCH)
    file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "// Nothing but the precompiled headers.\n")
    add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    set_target_properties(${name} PROPERTIES AUTOGEN OFF AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_link_libraries(${name} PRIVATE tolv_flags ${library})
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
  endif()
endfunction()

# tolv_use_precompiled(<target> <name>). What moc wrote for a whole target is mostly empty, and the headers alone take seconds.
function(tolv_use_precompiled target name)
  if(TOLV_USE_PCH)
    target_precompile_headers(${target} REUSE_FROM ${name})
    set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/mocs_compilation.cpp
      PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
  endif()
endfunction()

# tolv_add_test(<name> [DISPLAY | DISPLAY_ONLY] SOURCES <file>... LIBS <target>... [PROPERTIES <ctest property> <value>...])
# One executable for a class family; every case becomes a ctest case of its own that runs in a process of its own, without a screen.
# With DISPLAY the executable runs once more, whole, on a virtual X display with a window manager: the ctest case
# xvfb.<name>, with the label "display". With DISPLAY_ONLY it runs only there.
function(tolv_add_test name)
  cmake_parse_arguments(ARG "DISPLAY;DISPLAY_ONLY" "" "SOURCES;LIBS;PROPERTIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tolv_flags ${ARG_LIBS})
  if(TOLV_HAS_LLD)
    target_link_options(${name} PRIVATE -fuse-ld=lld) # in a quarter of the time, and there are many tests
  endif()
  if(NOT ARG_DISPLAY_ONLY)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 180 ${ARG_PROPERTIES}
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
  endif()
  if(ARG_DISPLAY OR ARG_DISPLAY_ONLY)
    add_test(NAME xvfb.${name} COMMAND ${CMAKE_SOURCE_DIR}/tests/tools/with_display $<TARGET_FILE:${name}>)
    set_tests_properties(xvfb.${name} PROPERTIES TIMEOUT 180 LABELS display ${ARG_PROPERTIES} ENVIRONMENT "LC_ALL=C.UTF-8")
  endif()
endfunction()

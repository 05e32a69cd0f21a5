# Every public header compiles alone, with nothing included before it: one source file per header, made at configure time,
# with the library's own warnings. They are compiled by the ctest case "headers.compile_alone", not by the build; what has not
# changed is not compiled again.
file(GLOB base_headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/base/*.h)
file(GLOB tolv_headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tolv/*.h ${CMAKE_SOURCE_DIR}/h/*.h)
# What is not installed is not public.
list(FILTER base_headers EXCLUDE REGEX "_p\\.h$")
list(FILTER tolv_headers EXCLUDE REGEX "_p\\.h$")

# tolv_check_headers(<name> LIBS <target>... HEADERS <path>...)
function(tolv_check_headers name)
  cmake_parse_arguments(ARG "" "" "LIBS;HEADERS" ${ARGN})
  set(sources)
  foreach(header ${ARG_HEADERS})
    string(MAKE_C_IDENTIFIER ${header} source)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/headers/${source}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "#include \"@CMAKE_SOURCE_DIR@/@header@\"\n" @ONLY)
    list(APPEND sources ${source})
  endforeach()
  add_library(${name} OBJECT EXCLUDE_FROM_ALL ${sources})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_compile_options(${name} PRIVATE -g0)
  target_link_libraries(${name} PRIVATE tolv_flags ${ARG_LIBS})
endfunction()

set(header_checks tolv_headers_alone)
tolv_check_headers(tolv_headers_alone LIBS tolv HEADERS ${tolv_headers})
if(TOLV_BASE STREQUAL "embedded")
  tolv_check_headers(base_headers_alone LIBS tolv_base HEADERS ${base_headers})
  list(APPEND header_checks base_headers_alone)
endif()
add_test(NAME headers.compile_alone
  COMMAND ${CMAKE_COMMAND} --build ${CMAKE_BINARY_DIR} --target ${header_checks})
set_tests_properties(headers.compile_alone PROPERTIES TIMEOUT 1200 RESOURCE_LOCK build_folder)

# A package of base services, as a suite has one: the target and what it needs.
include(CMakeFindDependencyMacro)
find_dependency(Qt5 5.15 COMPONENTS Core)
find_dependency(Microsoft.GSL CONFIG)
get_filename_component(suite_prefix ${CMAKE_CURRENT_LIST_DIR}/../../.. ABSOLUTE)
if(NOT TARGET suite::services)
  add_library(suite::services SHARED IMPORTED)
  set_target_properties(suite::services PROPERTIES IMPORTED_LOCATION ${suite_prefix}/lib/libtolv_base.so
    INTERFACE_INCLUDE_DIRECTORIES ${suite_prefix}/include INTERFACE_LINK_LIBRARIES "Qt5::Core;Microsoft.GSL::GSL")
endif()

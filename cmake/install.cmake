include(CMakePackageConfigHelpers)

install(TARGETS tolv tolv_base EXPORT tolvTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tolv)
# External base services bring their own headers.
set(header_folders tolv/ h/)
if(TOLV_BASE STREQUAL "embedded")
  list(APPEND header_folders base/)
endif()
install(DIRECTORY ${header_folders} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tolv
  FILES_MATCHING PATTERN "*.h" PATTERN "*.def" PATTERN "res" EXCLUDE PATTERN "*_p.h" EXCLUDE)
install(EXPORT tolvTargets NAMESPACE tolv:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tolv)
set(external_base_dependency)
if(TOLV_BASE STREQUAL "external" AND TOLV_EXTERNAL_BASE_PACKAGE)
  set(external_base_dependency "find_dependency(${TOLV_EXTERNAL_BASE_PACKAGE})")
endif()
configure_package_config_file(cmake/tolvConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/tolvConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tolv)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/tolvConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tolvConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/tolvConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tolv)
if(TARGET norvane_workbench)
  install(TARGETS norvane_workbench RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

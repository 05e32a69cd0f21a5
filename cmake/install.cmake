include(CMakePackageConfigHelpers)

install(TARGETS tolv tolv_base EXPORT tolvTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tolv)
install(DIRECTORY tolv/ h/ base/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tolv
  FILES_MATCHING PATTERN "*.h" PATTERN "*.def" PATTERN "res" EXCLUDE PATTERN "*_p.h" EXCLUDE)
install(EXPORT tolvTargets NAMESPACE tolv:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tolv)
configure_package_config_file(cmake/tolvConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/tolvConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tolv)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/tolvConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tolvConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/tolvConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tolv)
if(TARGET norvane_workbench)
  install(TARGETS norvane_workbench RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# What an installation brings: the command with its manual, data, and the module and the reference host as
# libraries with their headers, found by find_package(torva-dxf) and by pkg-config.
include(CMakePackageConfigHelpers)
set(torva_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/torva-dxf)
set(torva_package_files ${CMAKE_SOURCE_DIR}/cmake/package)

# Data: configurations, templates, character tables, message catalogues.
install(DIRECTORY int cad DESTINATION ${CMAKE_INSTALL_DATADIR}/torva-dxf/1700 PATTERN "*.py" EXCLUDE)

install(DIRECTORY host/inc/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/torva-dxf/host)
install(DIRECTORY dxf/inc/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/torva-dxf/dxf)
set_target_properties(torva_dxf PROPERTIES EXPORT_NAME dxf)
set_target_properties(torva_host PROPERTIES EXPORT_NAME host)
set_target_properties(torva_host_api PROPERTIES EXPORT_NAME host_api)
install(TARGETS torva_dxf torva_host torva_host_api EXPORT torva-dxf-targets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT torva-dxf-targets NAMESPACE torva:: DESTINATION ${torva_package_dir})

configure_package_config_file(${torva_package_files}/torva-dxf-config.cmake.in
  ${CMAKE_BINARY_DIR}/package/torva-dxf-config.cmake
  INSTALL_DESTINATION ${torva_package_dir} PATH_VARS CMAKE_INSTALL_DATADIR)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/package/torva-dxf-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/package/torva-dxf-config.cmake
  ${CMAKE_BINARY_DIR}/package/torva-dxf-config-version.cmake DESTINATION ${torva_package_dir})
file(RELATIVE_PATH torva_prefix_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(${torva_package_files}/torva-dxf.pc.in ${CMAKE_BINARY_DIR}/package/torva-dxf.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/package/torva-dxf.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The command makes its manual page and the completion for bash itself.
set(torva_manual ${CMAKE_BINARY_DIR}/package/torva-dxf.1)
set(torva_completion ${CMAKE_BINARY_DIR}/package/torva-dxf.bash)
add_custom_command(OUTPUT ${torva_manual} ${torva_completion}
  COMMAND torva-dxf-tool --manual-page > ${torva_manual}
  COMMAND torva-dxf-tool --bash-completion > ${torva_completion}
  DEPENDS torva-dxf-tool VERBATIM)
add_custom_target(torva-manual ALL DEPENDS ${torva_manual} ${torva_completion})
install(FILES ${torva_manual} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${torva_completion} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME torva-dxf)

# cpack -G DEB in the build folder makes a Debian package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME torva-dxf)
set(CPACK_PACKAGE_CONTACT "Torva DXF <torva-dxf@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Converts, draws and checks DXF drawings")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core, fonts-liberation2")
set(CPACK_STRIP_FILES ON)
include(CPack)

# What `cmake --install` lays into a prefix. Nothing in there names the prefix, so that it may be
# moved as a whole.
include(CMakePackageConfigHelpers)

set(CHARTXML_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/ChartXML)
set(CHARTXML_PCDIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(prefix /prefix)
cmake_path(RELATIVE_PATH prefix BASE_DIRECTORY /prefix/${CHARTXML_PCDIR}
           OUTPUT_VARIABLE CHARTXML_PREFIX_FROM_PC)

install(TARGETS chartxml EXPORT ChartXMLTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/chartxml)
install(DIRECTORY schemas resources DESTINATION ${CHARTXML_DATADIR} OPTIONAL)

install(EXPORT ChartXMLTargets NAMESPACE ChartXML:: DESTINATION ${CHARTXML_CMAKEDIR})
configure_package_config_file(cmake/ChartXMLConfig.cmake.in ChartXMLConfig.cmake
  INSTALL_DESTINATION ${CHARTXML_CMAKEDIR})
write_basic_package_version_file(ChartXMLConfigVersion.cmake COMPATIBILITY SameMajorVersion)
configure_file(cmake/chartxml.pc.in chartxml.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ChartXMLConfig.cmake
              ${PROJECT_BINARY_DIR}/ChartXMLConfigVersion.cmake
        DESTINATION ${CHARTXML_CMAKEDIR})
install(FILES ${PROJECT_BINARY_DIR}/chartxml.pc DESTINATION ${CHARTXML_PCDIR})

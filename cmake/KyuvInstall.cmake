# Makes find_package(kyUVUtils) work from an outside project once this one is installed.
include(CMakePackageConfigHelpers)

set(kyuv_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/kyUVUtils")
install(EXPORT kyUVUtilsTargets NAMESPACE kyUVUtils:: DESTINATION "${kyuv_package_dir}")
configure_package_config_file(cmake/kyUVUtilsConfig.cmake.in
  "${CMAKE_BINARY_DIR}/kyUVUtilsConfig.cmake" INSTALL_DESTINATION "${kyuv_package_dir}")
write_basic_package_version_file("${CMAKE_BINARY_DIR}/kyUVUtilsConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_BINARY_DIR}/kyUVUtilsConfig.cmake"
              "${CMAKE_BINARY_DIR}/kyUVUtilsConfigVersion.cmake"
              cmake/FindMETIS.cmake
        DESTINATION "${kyuv_package_dir}")

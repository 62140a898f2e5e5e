# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# `cmake --install` exports KUtil as a CMake package: find_package(KUtil CONFIG)
# then link KUtil::KUtil.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS KUtil EXPORT KUtilTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/KUtil FILES_MATCHING PATTERN "*.h")
install(FILES ${PROJECT_BINARY_DIR}/include/KUtilVersion.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/KUtil)
install(EXPORT KUtilTargets NAMESPACE KUtil:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KUtil)
configure_package_config_file(cmake/KUtilConfig.cmake.in ${PROJECT_BINARY_DIR}/KUtilConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KUtil)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KUtilConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KUtilConfig.cmake ${PROJECT_BINARY_DIR}/KUtilConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KUtil)

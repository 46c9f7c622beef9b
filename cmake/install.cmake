# find_package(kxjob) for whoever installs the library.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kxjob)
install(TARGETS kxjob EXPORT kxjobTargets FILE_SET HEADERS)
if(TARGET kxjob_command)
    install(TARGETS kxjob_command RUNTIME)
endif()
install(EXPORT kxjobTargets NAMESPACE kxjob:: DESTINATION ${package_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/kxjobConfig.cmake.in
    ${PROJECT_BINARY_DIR}/kxjobConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kxjobConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kxjobConfig.cmake ${PROJECT_BINARY_DIR}/kxjobConfigVersion.cmake
    DESTINATION ${package_dir})

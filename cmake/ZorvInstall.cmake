# Install and export: find_package(Zorv CONFIG REQUIRED) gives a host the target Zorv::zorv.

set(zorv_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Zorv)

install(TARGETS zorv EXPORT ZorvTargets FILE_SET HEADERS FILE_SET generated_headers)
install(EXPORT ZorvTargets NAMESPACE Zorv:: DESTINATION ${zorv_package_dir})

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/ZorvConfig.cmake.in ${PROJECT_BINARY_DIR}/ZorvConfig.cmake
                              INSTALL_DESTINATION ${zorv_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZorvConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZorvConfig.cmake ${PROJECT_BINARY_DIR}/ZorvConfigVersion.cmake
        DESTINATION ${zorv_package_dir})

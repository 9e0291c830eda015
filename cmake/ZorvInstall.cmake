# Install and export: find_package(Zorv CONFIG REQUIRED) gives a host the target Zorv::zorv, pkg-config the module zorv.

set(zorv_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Zorv)

install(
  TARGETS zorv
  EXPORT ZorvTargets
  RUNTIME COMPONENT runtime
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development
  FILE_SET HEADERS COMPONENT development
  FILE_SET generated_headers COMPONENT development)
install(EXPORT ZorvTargets NAMESPACE Zorv:: DESTINATION ${zorv_package_dir} COMPONENT development)

# What a host of the static library has to find and to link besides.
set(zorv_config_packages Threads ZLIB pugixml PkgConfig)
set(zorv_config_modules minizip geographiclib)
set(zorv_pc_libs -pthread)
if(TARGET PkgConfig::libdeflate)
  list(APPEND zorv_config_modules libdeflate)
endif()
set(zorv_pc_requires ${zorv_config_modules} zlib pugixml)
if(OpenMP_CXX_FOUND)
  list(APPEND zorv_config_packages OpenMP)
  list(TRANSFORM OpenMP_CXX_LIB_NAMES PREPEND -l OUTPUT_VARIABLE names)
  list(APPEND zorv_pc_libs ${names})
endif()
if(TARGET LASlib)
  list(APPEND zorv_config_packages LASlib)
  list(APPEND zorv_pc_libs -lLASlib)
endif()
if(NOT BUILD_SHARED_LIBS)
  set(zorv_pc_cflags " -DZORV_STATIC_DEFINE")
endif()
list(JOIN zorv_pc_requires ", " zorv_pc_requires)
list(JOIN zorv_pc_libs " " zorv_pc_libs)
file(RELATIVE_PATH zorv_pc_prefix /usr/${CMAKE_INSTALL_LIBDIR}/pkgconfig /usr)

configure_file(${CMAKE_CURRENT_LIST_DIR}/zorv.pc.in ${PROJECT_BINARY_DIR}/zorv.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zorv.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/ZorvConfig.cmake.in ${PROJECT_BINARY_DIR}/ZorvConfig.cmake
                              INSTALL_DESTINATION ${zorv_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZorvConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZorvConfig.cmake ${PROJECT_BINARY_DIR}/ZorvConfigVersion.cmake
        DESTINATION ${zorv_package_dir} COMPONENT development)

if(PROJECT_IS_TOP_LEVEL)
  include(ZorvPackages)
endif()

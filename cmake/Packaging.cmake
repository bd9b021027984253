# What is installed, and the packages that are made of it. Names and version are the project's. Included by
# orv/CMakeLists.txt, which knows the Boost that was found.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# ---- the library, its public headers, and what finds them: a CMake package and a file for pkg-config ----
set_target_properties(ZanOrvCoreService PROPERTIES EXPORT_NAME Service)
target_include_directories(ZanOrvCoreService PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ZanOrvCoreService)
install(TARGETS ZanOrvCoreService EXPORT ZanOrvCoreServiceTargets
  RUNTIME COMPONENT runtime
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(EXPORT ZanOrvCoreServiceTargets NAMESPACE Zan::Orv::Core:: DESTINATION ${package_folder} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/orv/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orv COMPONENT development
  FILES_MATCHING PATTERN "*.h" PATTERN internal EXCLUDE PATTERN platform EXCLUDE)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZanOrvCoreServiceConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ZanOrvCoreServiceConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZanOrvCoreServiceConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/ZanOrvCoreServiceConfig.cmake
  ${PROJECT_BINARY_DIR}/ZanOrvCoreServiceConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)

if(NOT WIN32)
  # The file names its folders by its own place, so that the prefix may be moved, as long as all of them lie in it.
  set(pc_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
    set(pc_libdir ${CMAKE_INSTALL_FULL_LIBDIR})
    set(pc_includedir ${CMAKE_INSTALL_FULL_INCLUDEDIR})
  else()
    file(RELATIVE_PATH to_prefix /${pc_folder} /)
    string(REGEX REPLACE "/$" "" to_prefix ${to_prefix})
    set(pc_libdir "\${pcfiledir}/${to_prefix}/${CMAKE_INSTALL_LIBDIR}")
    set(pc_includedir "\${pcfiledir}/${to_prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
  endif()
  configure_file(${PROJECT_SOURCE_DIR}/cmake/zan-orv-core-service.pc.in
    ${PROJECT_BINARY_DIR}/zan-orv-core-service.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/zan-orv-core-service.pc DESTINATION ${pc_folder} COMPONENT development)
endif()

# ---- a pair of Debian packages: the library alone, and what it takes to compile against it ----
if(NOT PROJECT_IS_TOP_LEVEL OR CMAKE_CROSSCOMPILING)
  return() # packing is the host project's affair
endif()
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zan-orv-core-service)
set(CPACK_PACKAGE_VENDOR "Zan")
set(CPACK_PACKAGE_CONTACT "The developers of ${PROJECT_NAME} <zan-orv-core-service@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
  "Calendar time, logs, stored object graphs, files and instrumentation for simulators and their tools.")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# The library's package is named with its major version, so that two of them may be there at once.
set(runtime_package lib${CPACK_PACKAGE_NAME}${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# What the headers and the package for find_package ask for; Xerces-C and bzip2 stay inside the library.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME lib${CPACK_PACKAGE_NAME}-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
string(CONCAT CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION}), "
  "libboost-filesystem${Boost_VERSION_MAJOR}.${Boost_VERSION_MINOR}-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "The headers, and what CMake and pkg-config need to find the library.")
include(CPack)

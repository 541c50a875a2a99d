# Installs the package descriptions: the CMake package Tolvanite with a target per unit, and the
# pkg-config module tolvanite with all units.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Tolvanite)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/TolvaniteConfig.cmake.in
    ${PROJECT_BINARY_DIR}/TolvaniteConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TolvaniteConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TolvaniteConfig.cmake ${PROJECT_BINARY_DIR}/TolvaniteConfigVersion.cmake
    DESTINATION ${package_dir})
install(EXPORT TolvaniteTargets NAMESPACE Tolvanite:: DESTINATION ${package_dir})

# The highest unit comes first, because linkers with --as-needed read libraries from left to right
# and drop those that nothing has asked for yet.
get_property(units GLOBAL PROPERTY TOLVANITE_UNITS)
list(REVERSE units)
list(TRANSFORM units PREPEND "-lOSG" OUTPUT_VARIABLE unit_flags)
list(JOIN unit_flags " " TOLVANITE_LIBRARY_FLAGS)
# The prefix is relative to the file itself, so that the tree may be installed or moved anywhere.
set(pc_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH TOLVANITE_PREFIX_FROM_PC ${pc_dir} ${CMAKE_INSTALL_PREFIX})
configure_file(${PROJECT_SOURCE_DIR}/cmake/tolvanite.pc.in ${PROJECT_BINARY_DIR}/tolvanite.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tolvanite.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})

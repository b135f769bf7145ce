# Three components: `runtime` is what a program needs that was linked, `development` what linking one
# needs, `tools` maintctl. The simulation, which the library does without, is installed if it was built.
include(CMakePackageConfigHelpers)

set(include_root ${CMAKE_INSTALL_INCLUDEDIR}/maintenance-model)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/maintenance-model)

install(TARGETS maintenance-model EXPORT maintenance-model-targets
        LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
        ARCHIVE COMPONENT development)
get_property(layers GLOBAL PROPERTY MAINTENANCE_MODEL_LAYERS)
foreach(layer IN LISTS layers)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${layer} DESTINATION ${include_root}
          COMPONENT development PATTERN "*.cpp" EXCLUDE)
endforeach()
install(EXPORT maintenance-model-targets NAMESPACE maintenance-model:: DESTINATION ${package_dir}
        COMPONENT development)

if(build_SIMULATION)
  install(TARGETS maintenance-model-simulation EXPORT maintenance-model-simulation-targets
          ARCHIVE COMPONENT development OPTIONAL)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/simulation DESTINATION ${include_root}
          COMPONENT development FILES_MATCHING PATTERN "*.h")
  install(EXPORT maintenance-model-simulation-targets NAMESPACE maintenance-model::
          DESTINATION ${package_dir} COMPONENT development)
endif()

set(simulation_archive
    ${CMAKE_INSTALL_LIBDIR}/${CMAKE_STATIC_LIBRARY_PREFIX}maintenance-model-simulation${CMAKE_STATIC_LIBRARY_SUFFIX})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/maintenance-model-config.cmake.in
                              ${PROJECT_BINARY_DIR}/maintenance-model-config.cmake
                              INSTALL_DESTINATION ${package_dir} PATH_VARS simulation_archive)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/maintenance-model-config-version.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/maintenance-model-config.cmake
              ${PROJECT_BINARY_DIR}/maintenance-model-config-version.cmake
        DESTINATION ${package_dir} COMPONENT development)

# The way from the .pc file back to the prefix, however deep the library directory is.
file(RELATIVE_PATH pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${PROJECT_SOURCE_DIR}/cmake/maintenance-model.pc.in
               ${PROJECT_BINARY_DIR}/maintenance-model.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/maintenance-model.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

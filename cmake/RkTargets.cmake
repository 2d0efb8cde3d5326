# rk_add_library(NAME EXPORT_NAME FOLDER INCLUDE_ROOT SOURCES ... LINKS ... PRIVATE_LINKS ...)
# One shared library per platform part or subsystem, exported as rk::EXPORT_NAME. Headers are installed
# under include/rkManipulation/<folder>/ so that consumers use the same include paths as the source tree.
function(rk_add_library name export_name folder root)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} SHARED ${ARG_SOURCES})
  add_library(rk::${export_name} ALIAS ${name})
  set_target_properties(${name} PROPERTIES EXPORT_NAME ${export_name} VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${root}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/rkManipulation>)
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
  install(TARGETS ${name} EXPORT rkManipulationTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/rkManipulation/${folder}
    FILES_MATCHING PATTERN "*.h")
endfunction()

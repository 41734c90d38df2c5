# What `cmake --install` puts under a prefix:
#   include/tachyrun/<folder>/*.h        the library's headers, included as "core/DataLock.h"
#   lib/libtachyrun_*.a, lib/libpixmill.so
#   lib/cmake/Tachyrun/                  find_package(Tachyrun CONFIG): Tachyrun::core, Tachyrun::pixmill
#   lib/pkgconfig/tachyrun.pc            the same for pkg-config (the editing library and pixmill)
#   bin/                                 the programs
#   share/tachyrun/                      the project template, read by an installed program
# Components: "Development" (headers, libraries, package files) and
# "Runtime" (programs, shared library, template).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TACHYRUN_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/tachyrun)
set(TACHYRUN_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/Tachyrun)

# Every library target of the editing library's folders, lowest floor first.
set(TACHYRUN_INSTALLED_LIBRARIES)
foreach(folder IN LISTS TACHYRUN_LIBRARY_FOLDERS)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "STATIC_LIBRARY")
      list(APPEND TACHYRUN_INSTALLED_LIBRARIES ${target})
    endif()
  endforeach()
  install(DIRECTORY ${folder}/ DESTINATION ${TACHYRUN_INSTALL_INCLUDEDIR}/${folder}
    COMPONENT Development FILES_MATCHING PATTERN "*.h")
endforeach()
install(FILES engine/Pixmill.h DESTINATION ${TACHYRUN_INSTALL_INCLUDEDIR}/engine
  COMPONENT Development)

foreach(target IN LISTS TACHYRUN_INSTALLED_LIBRARIES ITEMS tachyrun_core pixmill)
  target_include_directories(${target} INTERFACE
    $<INSTALL_INTERFACE:${TACHYRUN_INSTALL_INCLUDEDIR}>)
endforeach()
set_target_properties(tachyrun_core PROPERTIES EXPORT_NAME core)
set_target_properties(pixmill PROPERTIES EXPORT_NAME pixmill)

install(TARGETS ${TACHYRUN_INSTALLED_LIBRARIES} tachyrun_core
  EXPORT TachyrunTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
install(TARGETS pixmill
  EXPORT TachyrunTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime)
install(EXPORT TachyrunTargets NAMESPACE Tachyrun::
  DESTINATION ${TACHYRUN_INSTALL_CMAKEDIR} COMPONENT Development)
configure_package_config_file(cmake/TachyrunConfig.cmake.in
  ${PROJECT_BINARY_DIR}/TachyrunConfig.cmake
  INSTALL_DESTINATION ${TACHYRUN_INSTALL_CMAKEDIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TachyrunConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TachyrunConfig.cmake
  ${PROJECT_BINARY_DIR}/TachyrunConfigVersion.cmake
  DESTINATION ${TACHYRUN_INSTALL_CMAKEDIR} COMPONENT Development)

# pkg-config: static libraries in one group, as they call each other.
set(TACHYRUN_PC_LIBS)
foreach(target IN LISTS TACHYRUN_INSTALLED_LIBRARIES)
  string(APPEND TACHYRUN_PC_LIBS " -l${target}")
endforeach()
# The way up from the .pc file to the prefix: one ".." per folder.
string(REGEX REPLACE "[^/]+" ".." TACHYRUN_PC_UP "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
configure_file(cmake/tachyrun.pc.in ${PROJECT_BINARY_DIR}/tachyrun.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tachyrun.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)

# The programs that are built.
foreach(program IN ITEMS tachyrun tachyrun-reg)
  if(TARGET ${program})
    install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)
  endif()
endforeach()

# What 'cmake --install' puts where: the library, its headers, the program, and what find_package and pkg-config read.
include(CMakePackageConfigHelpers)

set(packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/Tavrin")

install(TARGETS tavrin EXPORT TavrinTargets)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/tavrin" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")

install(EXPORT TavrinTargets NAMESPACE Tavrin:: DESTINATION "${packageDir}")
if(TARGET TavrinGL)
  install(TARGETS TavrinGL EXPORT TavrinGLTargets)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/adaptors/opengl/include/tavrinGL" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
  install(EXPORT TavrinGLTargets NAMESPACE Tavrin:: DESTINATION "${packageDir}")
endif()
configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/TavrinConfig.cmake.in" "${PROJECT_BINARY_DIR}/TavrinConfig.cmake"
  INSTALL_DESTINATION "${packageDir}" NO_SET_AND_CHECK_MACRO)
# Before 1.0 a minor version may change the interface.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(compatibility SameMinorVersion)
else()
  set(compatibility SameMajorVersion)
endif()
write_basic_package_version_file("${PROJECT_BINARY_DIR}/TavrinConfigVersion.cmake" COMPATIBILITY ${compatibility})
install(FILES "${PROJECT_BINARY_DIR}/TavrinConfig.cmake" "${PROJECT_BINARY_DIR}/TavrinConfigVersion.cmake"
        DESTINATION "${packageDir}")

# The .pc files find their prefix from their own place, so that an installed tree can be moved.
set(pcDir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
set(pcPrefix "${CMAKE_INSTALL_PREFIX}")
set(pcLibDir "${CMAKE_INSTALL_FULL_LIBDIR}")
set(pcIncludeDir "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
if(NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" AND NOT IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  file(RELATIVE_PATH upwards "/${pcDir}" "/")
  string(REGEX REPLACE "/$" "" upwards "${upwards}")
  set(pcPrefix "\${pcfiledir}/${upwards}")
  set(pcLibDir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
  set(pcIncludeDir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
function(tavrin_install_pc pcName pcLibrary pcRequires pcDescription)
  string(TOLOWER "${pcLibrary}.pc" file)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/library.pc.in" "${PROJECT_BINARY_DIR}/${file}" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${file}" DESTINATION "${pcDir}")
endfunction()
tavrin_install_pc(Tavrin tavrin "" "${PROJECT_DESCRIPTION}")
if(TARGET TavrinGL)
  tavrin_install_pc(TavrinGL TavrinGL tavrin "Draws Tavrin's transforms with OpenGL")
endif()

# Gives an installation its configuration, unless it has one, and the folder for a site's own transforms that it names.
#
#   cmake -D installation=FOLDER [-D root=STAGING] -P writeConfiguration.cmake
set(shared "${installation}/shared")
file(MAKE_DIRECTORY "${root}${shared}")
if(NOT EXISTS "${root}${installation}/tavrinConfig.xml")
  configure_file("${CMAKE_CURRENT_LIST_DIR}/tavrinConfig.xml.in" "${root}${installation}/tavrinConfig.xml" @ONLY)
endif()

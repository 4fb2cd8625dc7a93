# What 'cmake --install' puts where.
install(TARGETS tavrin EXPORT TavrinTargets)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/tavrin" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")

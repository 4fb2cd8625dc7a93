# Compiler settings that every target of the project shares.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

# No fused multiply-add and no reordering: pixels are the same bytes on every processor.
add_compile_options(-Wall -Wextra -Wpedantic -ffp-contract=off)
if(TAVRIN_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()

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

if(TAVRIN_SANITIZE)
  # A finding of the undefined behaviour sanitizer ends the program, so that a test fails. Debug checks of the standard library
  # find what a container hides from the sanitizers.
  add_compile_options(-fsanitize=${TAVRIN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=${TAVRIN_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With sanitizers gcc reports variables of its own making as perhaps uninitialised.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()

if(TAVRIN_COVERAGE)
  # Atomic counters: tests of threads count too.
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

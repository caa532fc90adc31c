# What every target of this project is built with.
option(ZEL_BUILD_TESTS "Build the tests" ON)
option(ZEL_BUILD_BENCHMARKS "Build the benchmarks" ON)
set(ZEL_SANITIZERS "" CACHE STRING "Sanitizers for every target, as -fsanitize= takes them")
option(ZEL_COVERAGE "Measure the coverage of the tests" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 99)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

find_program(ZEL_CCACHE ccache)
if(ZEL_CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER ${ZEL_CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ZEL_CCACHE})
endif()

# Long literal names with a leading underscore and Win32-shaped calls are the house style, so the two warnings
# about reserved identifiers stay off; everything else that is asked for is an error.
add_library(ZelWarnings INTERFACE)
target_compile_options(ZelWarnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# clang, which builds the fuzz targets, also takes an enumerator inside a struct for a shadow of what is outside.
target_compile_options(ZelWarnings INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wno-shadow>)

if(ZEL_SANITIZERS)
  add_compile_options(-fsanitize=${ZEL_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ZEL_SANITIZERS})
endif()
if(ZEL_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic) # threads count together
  add_link_options(--coverage)
endif()

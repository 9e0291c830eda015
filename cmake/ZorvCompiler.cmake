# Compiler cache, warnings and floating point rules of every target of this tree. Nothing here reaches the exported
# package.

find_program(ZORV_CCACHE ccache)
if(ZORV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${ZORV_CCACHE}")
endif()

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

add_library(zorv_warnings INTERFACE)
if(MSVC)
  target_compile_options(zorv_warnings INTERFACE /W4 /utf-8 $<$<BOOL:${ZORV_WARNINGS_AS_ERRORS}>:/WX>)
else()
  target_compile_options(
    zorv_warnings
    INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wcast-qual -Wno-overloaded-virtual
              # GCC 12 sees overlapping copies in std::string where there are none.
              $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
              # Results must agree with projects computed before: no contraction to fused multiply-add.
              -ffp-contract=off $<$<BOOL:${ZORV_WARNINGS_AS_ERRORS}>:-Werror>)
endif()

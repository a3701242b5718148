# Floating point contraction is off everywhere: exact comparisons must mean the same on every compiler and machine.
add_library(orvane_flags INTERFACE)
target_include_directories(orvane_flags INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(orvane_flags INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # g++ 12 sees overlapping copies inside std::string, at "text" + std::string(), that cannot come about.
  target_compile_options(orvane_flags INTERFACE -Wno-restrict)
endif()
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  # The same reason: 32-bit code would keep 80-bit intermediates in the x87 registers. Hosts there call with a stack of 4 bytes.
  target_compile_options(orvane_flags INTERFACE -msse2 -mfpmath=sse -mstackrealign)
endif()
if(ORVANE_SANITIZE)
  # float-cast-overflow is not in g++'s "undefined" group; the library's own assertions find what lies inside an allocation.
  set(sanitizers -fsanitize=address,undefined,float-cast-overflow)
  target_compile_options(orvane_flags INTERFACE ${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_definitions(orvane_flags INTERFACE _GLIBCXX_ASSERTIONS)
  target_link_options(orvane_flags INTERFACE ${sanitizers})
endif()
if(ORVANE_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "The fuzz targets need clang; the preset \"fuzz\" asks for it.")
  endif()
  # All code reports its branches to the fuzzer; only the targets themselves link the fuzzer's own main().
  set(fuzzed -fsanitize=fuzzer-no-link,address,undefined,float-cast-overflow)
  target_compile_options(orvane_flags INTERFACE ${fuzzed} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orvane_flags INTERFACE ${fuzzed})
endif()

# orvane_windows_gtest: the test framework with its main(), from its sources; no package has it for the cross compilers.
set(source /usr/src/googletest/googletest)
add_library(orvane_windows_gtest STATIC EXCLUDE_FROM_ALL ${source}/src/gtest-all.cc ${source}/src/gtest_main.cc)
target_include_directories(orvane_windows_gtest SYSTEM PUBLIC ${source}/include PRIVATE ${source})

# windows_headers: compiles every header of the core by itself after <windows.h>. The system header defines common words as
# macros; a core header that uses one as a name would mean something else in the Windows host than in the core's own objects.
file(GLOB core_headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR}
     platform/*.h platform/record/*.h geo/*.h analysis/*.h analysis/geometry/*.h store/*.h render/*.h select/*.h files/*.h raster/*.h
     control/*.h control/automation/*.h)
foreach(header IN LISTS core_headers)
  string(MAKE_C_IDENTIFIER ${header} name)
  set(unit ${CMAKE_BINARY_DIR}/windows_headers/${name}.cpp)
  file(CONFIGURE OUTPUT ${unit} CONTENT "#include <windows.h>\n#include \"${header}\"\n")
  list(APPEND units ${unit})
endforeach()
add_library(windows_headers OBJECT EXCLUDE_FROM_ALL ${units})
target_link_libraries(windows_headers PRIVATE orvane_flags)

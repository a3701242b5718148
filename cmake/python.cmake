# The Python that the module and its tests use. NumPy, pytest and the headers come from the system's packages and serve the
# system's own interpreter only, so it is preferred to whichever `python3` stands first on PATH.
if(NOT DEFINED Python_EXECUTABLE AND EXISTS /usr/bin/python3)
  set(Python_EXECUTABLE /usr/bin/python3 CACHE FILEPATH "The interpreter that the module and its tests run in")
endif()
if(ORVANE_HOSTS AND ORVANE_PYTHON)
  find_package(Python 3.9 REQUIRED COMPONENTS Interpreter Development.Module)
else()
  find_package(Python 3.9 REQUIRED COMPONENTS Interpreter)
endif()
set(ORVANE_PYTHON_DIR ${CMAKE_BINARY_DIR}/python)

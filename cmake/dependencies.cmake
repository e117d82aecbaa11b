# Header-only libraries of the host serve both targets: each is linked into one include folder, so that a
# cross-build never sees the rest of the host's headers.
set(shared_headers "${CMAKE_BINARY_DIR}/shared-headers")
file(MAKE_DIRECTORY "${shared_headers}")
foreach(folder boost CLI nlohmann)
  if(NOT EXISTS "/usr/include/${folder}")
    message(FATAL_ERROR "missing headers: /usr/include/${folder} (./test.sh installs them)")
  endif()
  file(CREATE_LINK "/usr/include/${folder}" "${shared_headers}/${folder}" SYMBOLIC)
endforeach()
add_library(quilmark_headers INTERFACE)
target_include_directories(quilmark_headers SYSTEM INTERFACE "${shared_headers}")
# The headers' throw paths would need a library for the Windows target; terminate instead.
target_compile_definitions(quilmark_headers INTERFACE BOOST_ALL_NO_LIB)

# GoogleTest: the distribution's own build for Linux, built from its sources for Windows.
if(QUILMARK_TESTS)
  if(WIN32)
    set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
    add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
    if(NOT TARGET GTest::gmock_main)
      add_library(GTest::gmock_main ALIAS gmock_main)
    endif()
  else()
    find_package(GTest REQUIRED)
  endif()
endif()
if(QUILMARK_BENCH)
  find_package(benchmark REQUIRED)
endif()

include(cmake/miniz.cmake)

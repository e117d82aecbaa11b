# miniz from npm, with its faults mended (guard_miniz.cmake), as a static library. It is compiled as C++, which it
# allows, by the compiler and with the sanitizers of all the rest.
set(miniz_package "${PROJECT_SOURCE_DIR}/build/npm/node_modules/miniz.c")
set(miniz_copy "${CMAKE_BINARY_DIR}/miniz")
if(NOT EXISTS "${miniz_package}/miniz.c")
  execute_process(COMMAND "${PROJECT_SOURCE_DIR}/tools/install_libraries.sh" COMMAND_ERROR_IS_FATAL ANY)
endif()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  "${miniz_package}/miniz.c" "${PROJECT_SOURCE_DIR}/cmake/guard_miniz.cmake")
execute_process(
  COMMAND "${CMAKE_COMMAND}" "-DFROM=${miniz_package}" "-DTO=${miniz_copy}" -P "${PROJECT_SOURCE_DIR}/cmake/guard_miniz.cmake"
  COMMAND_ERROR_IS_FATAL ANY)

# Its own checksum takes as long as its inflating; that of the platform layer a tenth of it.
add_library(quilmark_miniz STATIC "${miniz_copy}/miniz.c" "${PROJECT_SOURCE_DIR}/cmake/miniz_crc32.cpp")
target_link_libraries(quilmark_miniz PUBLIC quilmark_platform)
set_source_files_properties("${miniz_copy}/miniz.c" PROPERTIES LANGUAGE CXX)
target_include_directories(quilmark_miniz SYSTEM PUBLIC "${miniz_copy}")
# What it asserts of a stream a hostile one breaks; the code behind the assertions holds without them.
target_compile_definitions(quilmark_miniz PRIVATE NDEBUG
  USE_EXTERNAL_MZCRC MINIZ_USE_UNALIGNED_LOADS_AND_STORES=1 MINIZ_UNALIGNED_USE_MEMCPY)
target_compile_options(quilmark_miniz PRIVATE -O2 -w -fno-strict-aliasing -ffunction-sections -fdata-sections)

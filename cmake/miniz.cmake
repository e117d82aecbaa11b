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

add_library(quilmark_miniz STATIC "${miniz_copy}/miniz.c")
set_source_files_properties("${miniz_copy}/miniz.c" PROPERTIES LANGUAGE CXX)
target_compile_features(quilmark_miniz PUBLIC cxx_std_20)
target_include_directories(quilmark_miniz SYSTEM PUBLIC "${miniz_copy}")
# What it asserts of a stream a hostile one breaks; the code behind the assertions holds without them.
target_compile_definitions(quilmark_miniz PRIVATE NDEBUG)
target_compile_options(quilmark_miniz PRIVATE -O2 -w -fno-strict-aliasing -ffunction-sections -fdata-sections)
if(QUILMARK_SANITIZER)
  target_compile_options(quilmark_miniz PRIVATE "-fsanitize=${QUILMARK_SANITIZER}" -fno-sanitize-recover=all)
endif()

# One program a fuzz target, fuzz/<layer>/<name>_fuzz.cpp, run by libFuzzer; all of them: fuzz_targets. Each is
# linked with its layer, so that one of the parsers below waits for nothing above it. The shell is the exception:
# fuzz/shell/<name>_fuzz.cpp brings src/shell/<room>/<name>.cpp along, and the rest of the shell is not compiled for it.
file(GLOB fuzz_sources CONFIGURE_DEPENDS "fuzz/*/*_fuzz.cpp")

# NTFS volumes made by hand and references, as the tests have them.
add_library(quilmark_fuzz_support STATIC EXCLUDE_FROM_ALL tests/support/ntfs_builder.cpp tests/support/memory_source.cpp
  tests/content/archive/xml_reference.cpp)
set_target_properties(quilmark_fuzz_support PROPERTIES LINKER_LANGUAGE CXX)
target_include_directories(quilmark_fuzz_support PUBLIC "${PROJECT_SOURCE_DIR}/fuzz" "${PROJECT_SOURCE_DIR}/tests")
target_link_libraries(quilmark_fuzz_support PUBLIC quilmark_platform)
quilmark_compile_as_product(quilmark_fuzz_support)

add_custom_target(fuzz_targets)
foreach(source ${fuzz_sources})
  get_filename_component(name "${source}" NAME_WE)
  get_filename_component(folder "${source}" DIRECTORY)
  get_filename_component(layer "${folder}" NAME)
  if(NOT EXISTS "${PROJECT_SOURCE_DIR}/fuzz/corpus/${name}")
    message(FATAL_ERROR "${name} has no seeds: see tools/make_fuzz_seeds.py")
  endif()
  add_executable(${name} EXCLUDE_FROM_ALL "${source}")
  if(layer STREQUAL "shell")
    string(REGEX REPLACE "_fuzz$" ".cpp" parser "${name}")
    file(GLOB_RECURSE parser "src/shell/${parser}")
    target_sources(${name} PRIVATE ${parser})
    set(layer search)
  endif()
  target_link_libraries(${name} PRIVATE quilmark_fuzz_support quilmark_${layer})
  quilmark_compile_as_product(${name})
  target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/fuzz")
  add_dependencies(fuzz_targets ${name})
endforeach()

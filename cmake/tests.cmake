# One test program a layer, from tests/<layer>/*.cpp and the folder of the system below it; tests/support holds
# what they share. Under ThreadSanitizer they hold the tests with threads alone: those of *_concurrency_test.cpp, and
# those of a file that runs all it has with one thread and with several.
set(tests_pattern "*.cpp")
set(tested_layers platform config canvas index search content shell cli)
if(QUILMARK_SANITIZER STREQUAL "thread")
  set(tests_pattern "*_concurrency_test.cpp")
  set(tested_layers platform index search content shell)
endif()

file(GLOB support_sources CONFIGURE_DEPENDS "tests/support/*.cpp" "tests/support/*.h")
if(WIN32)
  file(GLOB driver_sources CONFIGURE_DEPENDS "tests/driver/*.cpp" "tests/driver/*.h")
  list(APPEND support_sources ${driver_sources})
endif()
add_library(quilmark_test_support STATIC ${support_sources})
set_target_properties(quilmark_test_support PROPERTIES LINKER_LANGUAGE CXX)
target_include_directories(quilmark_test_support PUBLIC "${PROJECT_SOURCE_DIR}/tests")
target_link_libraries(quilmark_test_support PUBLIC quilmark_search quilmark_miniz GTest::gmock_main)
# Of the one source: a precompiled header wants all that use it to define the same.
set_source_files_properties(tests/support/ntfs_samples.cpp PROPERTIES
  COMPILE_DEFINITIONS QUILMARK_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
quilmark_compile_as_test(quilmark_test_support)
if(MINGW)
  foreach(library gtest gmock gmock_main)
    quilmark_compile_as_test(${library})
  endforeach()
endif()

# These compute more than they compile: references over millions of rows, and volumes of real systems.
set(busy_tests
  tests/index/posix/ntfs_facts_test.cpp
  tests/index/posix/ntfs_image_test.cpp
  tests/index/posix/ntfs_samples_test.cpp
  tests/search/attributes/attr_cache_test.cpp
  tests/search/churn_concurrency_test.cpp
  tests/search/churn_test.cpp
  tests/search/results/monitor_search_concurrency_test.cpp
  tests/search/scan/name_scan_test.cpp
  tests/search/query/query_test.cpp
  tests/search/scan/scan_kernel_test.cpp
  tests/search/sort/sort_path_test.cpp
  tests/search/sort/sort_text_test.cpp
  tests/search/sort/sort_values_test.cpp
  tests/search/sort/sort_key_test.cpp
  tests/search/sort/sort_test.cpp
  tests/shell/search/row_cells_test.cpp
  tests/support/churn_volume.cpp
  tests/support/ntfs_builder.cpp
  tests/support/ntfs_samples.cpp
  tests/support/scripted_device.cpp
  tests/support/volumes.cpp)
set_source_files_properties(${busy_tests} PROPERTIES COMPILE_OPTIONS -O1 SKIP_PRECOMPILE_HEADERS ON)

# The file calls of a test program go through tests/support/system_faults.h.
if(WIN32)
  set(wrapped_calls CreateFileW ReadFile WriteFile SetFilePointerEx SetFileInformationByHandle FlushFileBuffers GetFileSizeEx
    GetFileAttributesW GetFileAttributesExW CreateDirectoryW DeleteFileW FindFirstFileExW FindNextFileW FindClose
    DeviceIoControl CloseHandle GetFileInformationByHandleEx)
  list(TRANSFORM wrapped_calls PREPEND __imp_)
else()
  set(wrapped_calls openat close read write pread pwrite lseek ftruncate fsync fstat fstatat fstatfs statx mkdirat unlinkat
    getcwd syscall)
endif()
list(TRANSFORM wrapped_calls PREPEND "-Wl,--wrap=")
target_link_options(quilmark_test_support PUBLIC ${wrapped_calls} -Wl,--undefined=quilmark_wrapped_calls)

target_precompile_headers(quilmark_test_support PRIVATE tests/support/precompiled.h)

# A test program of the given sources. What the product and the tests both instantiate the linker takes from whoever
# comes first: the product's libraries, which are optimised, stand in front (a search in a test is three times as fast).
function(quilmark_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LAYERS;SOURCES")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE quilmark_test_support)
  quilmark_compile_as_test(${name})
  target_precompile_headers(${name} REUSE_FROM quilmark_test_support)
  set(product)
  foreach(layer platform config canvas index search ${arg_LAYERS})
    target_link_libraries(${name} PRIVATE quilmark_${layer})
    list(APPEND product "$<TARGET_FILE:quilmark_${layer}>")
  endforeach()
  list(REMOVE_DUPLICATES product)
  target_link_options(${name} PRIVATE "LINKER:--whole-archive" ${product} "LINKER:--no-whole-archive")
  if(MINGW)
    quilmark_link_by_clang(${name})
  endif()
endfunction()

foreach(layer ${tested_layers})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "tests/${layer}/${tests_pattern}")
  list(FILTER sources EXCLUDE REGEX "/${other_system}/")
  if(layer STREQUAL "index" AND NOT "${sources}" MATCHES "/directory_walk_test")
    list(APPEND sources tests/index/build/directory_walk_test.cpp)
  endif()
  set(below)
  if(layer MATCHES "^(shell|cli)$")
    set(below content)
  endif()
  quilmark_test_program(${layer}_tests LAYERS ${below} ${layer} SOURCES ${sources})
  add_test(NAME ${layer}_tests COMMAND ${layer}_tests)
endforeach()

# tests/search/results/search_trouble_test.cpp lets memory run out.
if("search" IN_LIST tested_layers AND NOT QUILMARK_SANITIZER STREQUAL "thread")
  target_link_options(search_tests PRIVATE "LINKER:--wrap=$<IF:$<BOOL:${WIN32}>,_Znwy,_Znwm>")
endif()

# tests/shell/allocation_count.cpp counts what is taken from the heap.
if("shell" IN_LIST tested_layers AND NOT QUILMARK_SANITIZER STREQUAL "thread")
  foreach(operator _Znw _Zna)
    target_link_options(shell_tests PRIVATE "LINKER:--wrap=${operator}$<IF:$<BOOL:${WIN32}>,y,m>")
  endforeach()
endif()

if("cli" IN_LIST tested_layers)
  target_compile_definitions(cli_tests PRIVATE QUILMARK_PROGRAM="$<TARGET_FILE:quilmark>")
  add_dependencies(cli_tests quilmark)
endif()

# The volume of the tests under Wine, a driver.
if(WIN32)
  enable_language(C)
  add_library(quilmark_test_volume MODULE tests/driver/test_volume.c)
  set_target_properties(quilmark_test_volume PROPERTIES PREFIX "" SUFFIX ".sys" C_STANDARD 11)
  target_include_directories(quilmark_test_volume SYSTEM PRIVATE "${CMAKE_FIND_ROOT_PATH}/include/ddk")
  target_compile_options(quilmark_test_volume PRIVATE -O2 -mno-red-zone -fno-stack-protector -mno-stack-arg-probe)
  target_link_options(quilmark_test_volume PRIVATE -nostdlib -Wl,--subsystem,native -Wl,--entry,DriverEntry)
  target_link_libraries(quilmark_test_volume PRIVATE ntoskrnl)
  add_dependencies(quilmark_test_support quilmark_test_volume)
endif()

# What the tests under Wine run in the place of a tool of the system.
if(WIN32)
  add_executable(quilmark_stand_in_tool tests/window/program/stand_in_tool.cpp)
  set_target_properties(quilmark_stand_in_tool PROPERTIES OUTPUT_NAME stand-in-tool)
  target_link_libraries(quilmark_stand_in_tool PRIVATE shell32)
  target_link_options(quilmark_stand_in_tool PRIVATE -static)
  quilmark_compile_as_test(quilmark_stand_in_tool)
  add_dependencies(shell_tests quilmark_stand_in_tool)
endif()

# The window, driven from outside, and the program that it is driven in: ours, with a way to ask for its state.
if(WIN32)
  quilmark_window_program(quilmark_window_test Quilmark-test tests/window/program/main.cpp
    tests/window/program/pseudo_language.cpp tests/window/program/system_counts.cpp
    tests/window/program/churn_drive.cpp tests/window/program/cycles.cpp tests/window/program/made_up_probe.cpp
    tests/window/program/shell_calls.cpp
    tests/shell/view/made_up_view.cpp tests/shell/list/made_up_lists.cpp)
  set(counted_calls _beginthreadex CreateFileW FindFirstFileExW ReadFile GetFileAttributesW GetFileAttributesExW WriteFile
    SetProcessWorkingSetSize ShellExecuteExW ShellExecuteW)
  list(TRANSFORM counted_calls PREPEND "-Wl,--wrap=__imp_")
  # The header of the last one does not say that it is imported.
  target_link_options(quilmark_window_test PRIVATE ${counted_calls} -Wl,--wrap=K32EmptyWorkingSet)
  target_include_directories(quilmark_window_test PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  add_library(quilmark_window_driver STATIC tests/window/window_program.cpp tests/window/png.cpp)
  target_link_libraries(quilmark_window_driver PUBLIC quilmark_test_support quilmark_shell gdiplus)
  quilmark_compile_as_test(quilmark_window_driver)
  add_dependencies(quilmark_window_driver quilmark_window_test quilmark_window quilmark_stand_in_tool)
  file(GLOB window_sources CONFIGURE_DEPENDS "tests/window/*_test.cpp")
  quilmark_test_program(window_tests LAYERS content shell SOURCES ${window_sources})
  target_link_libraries(window_tests PRIVATE quilmark_window_driver)
  # For hours (tools/soak.sh); no part of a run of the tests.
  quilmark_test_program(soak LAYERS content shell SOURCES tests/window/soak/soak_test.cpp)
  target_link_libraries(soak PRIVATE quilmark_window_driver)
  set_target_properties(soak PROPERTIES EXCLUDE_FROM_ALL ON)
  foreach(bench start_bench paint_bench)
    add_executable(${bench} EXCLUDE_FROM_ALL bench/window/${bench}.cpp)
    target_link_libraries(${bench} PRIVATE quilmark_window_driver)
  endforeach()
endif()

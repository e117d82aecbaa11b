# One test program a layer, from tests/<layer>/*.cpp and the folder of the system below it; tests/support holds
# what they share.
file(GLOB support_sources CONFIGURE_DEPENDS "tests/support/*.cpp" "tests/support/*.h")
if(WIN32)
  file(GLOB driver_sources CONFIGURE_DEPENDS "tests/driver/*.cpp" "tests/driver/*.h")
  list(APPEND support_sources ${driver_sources})
endif()
add_library(quilmark_test_support STATIC ${support_sources})
set_target_properties(quilmark_test_support PROPERTIES LINKER_LANGUAGE CXX)
target_include_directories(quilmark_test_support PUBLIC "${PROJECT_SOURCE_DIR}/tests")
target_link_libraries(quilmark_test_support PUBLIC quilmark_search GTest::gmock_main)
target_compile_definitions(quilmark_test_support PRIVATE QUILMARK_SOURCE_DIR="${PROJECT_SOURCE_DIR}")

# The file calls of a test program go through tests/support/system_faults.h.
if(WIN32)
  set(wrapped_calls CreateFileW ReadFile WriteFile SetFilePointerEx SetFileInformationByHandle FlushFileBuffers GetFileSizeEx
    GetFileAttributesW GetFileAttributesExW CreateDirectoryW DeleteFileW FindFirstFileExW FindNextFileW FindClose
    DeviceIoControl CloseHandle)
  list(TRANSFORM wrapped_calls PREPEND __imp_)
else()
  set(wrapped_calls openat close read write pread pwrite lseek ftruncate fsync fstat fstatat fstatfs statx mkdirat unlinkat
    getcwd syscall)
endif()
list(TRANSFORM wrapped_calls PREPEND "-Wl,--wrap=")
target_link_options(quilmark_test_support PUBLIC ${wrapped_calls} -Wl,--undefined=quilmark_wrapped_calls)

function(quilmark_tests name)
  set(system posix)
  if(WIN32)
    set(system win32)
  endif()
  file(GLOB sources CONFIGURE_DEPENDS "tests/${name}/*.cpp" "tests/${name}/${system}/*.cpp")
  add_executable(${name}_tests ${sources})
  target_link_libraries(${name}_tests PRIVATE quilmark_test_support ${ARGN})
  add_test(NAME ${name}_tests COMMAND ${name}_tests)
endfunction()

quilmark_tests(platform)
quilmark_tests(config)
quilmark_tests(index)
quilmark_tests(search)
quilmark_tests(shell quilmark_shell)
quilmark_tests(cli quilmark_cli)
target_compile_definitions(cli_tests PRIVATE QUILMARK_PROGRAM="$<TARGET_FILE:quilmark>")
add_dependencies(cli_tests quilmark)

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

# The window, driven from outside, and the program that it is driven in: ours, with a way to ask for its state.
if(WIN32)
  quilmark_window_program(quilmark_window_test Quilmark-test tests/window/program/main.cpp
    tests/window/program/pseudo_language.cpp)
  target_include_directories(quilmark_window_test PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  add_library(quilmark_window_driver STATIC tests/window/window_program.cpp tests/window/png.cpp)
  target_link_libraries(quilmark_window_driver PUBLIC quilmark_test_support quilmark_shell gdiplus)
  add_dependencies(quilmark_window_driver quilmark_window_test quilmark_window)
  file(GLOB window_sources CONFIGURE_DEPENDS "tests/window/*_test.cpp")
  add_executable(window_tests ${window_sources})
  target_link_libraries(window_tests PRIVATE quilmark_window_driver)
  add_executable(start_bench bench/window/start_bench.cpp)
  target_link_libraries(start_bench PRIVATE quilmark_window_driver)
  add_executable(paint_bench bench/window/paint_bench.cpp)
  target_link_libraries(paint_bench PRIVATE quilmark_window_driver)
endif()

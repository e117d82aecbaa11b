# One list of warnings, as errors, and the options every target of ours is built with.
add_library(quilmark_options INTERFACE)
target_compile_features(quilmark_options INTERFACE cxx_std_20)
target_include_directories(quilmark_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_options(quilmark_options INTERFACE
  -Wall -Wextra -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror
  -Wno-missing-field-initializers  # a field left out has its default, which is the point of having one
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>  # false alarms of GCC 12 in std::string (its PR 105651)
  -fno-strict-aliasing -ffunction-sections -fdata-sections)

if(CMAKE_BUILD_TYPE STREQUAL "Debug")
  target_compile_options(quilmark_options INTERFACE -fno-omit-frame-pointer)
  # Assertions of the standard library: what lies inside a buffer, but outside its span, no sanitizer sees.
  target_compile_definitions(quilmark_options INTERFACE QUILMARK_DEBUG=1 _GLIBCXX_ASSERTIONS=1)
endif()

# Ours are optimised a little in debug builds, so that the sanitizers' runs stay short and the backtraces stay
# readable. Tests are not optimised in any build: most of what they cost is their compilation.
function(quilmark_compile_as_product target)
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_compile_options(${target} PRIVATE -O1)
  endif()
endfunction()
function(quilmark_compile_as_test target)
  target_compile_options(${target} PRIVATE -O0 -g1)
endfunction()

if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_link_options(quilmark_options INTERFACE -fuse-ld=lld)  # programs with sanitizers in a fifth of the time
endif()

if(QUILMARK_SANITIZER)
  set(sanitize "-fsanitize=${QUILMARK_SANITIZER}")
  target_compile_options(quilmark_options INTERFACE ${sanitize} -fno-sanitize-recover=all)
  target_link_options(quilmark_options INTERFACE ${sanitize})
endif()

if(WIN32)
  target_compile_definitions(quilmark_options INTERFACE UNICODE _UNICODE STRICT NOMINMAX
    WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00 WINVER=0x0A00 NTDDI_VERSION=0x0A000008)
  target_compile_options(quilmark_options INTERFACE -gdwarf-4)
else()
  find_package(Threads REQUIRED)
  target_link_libraries(quilmark_options INTERFACE Threads::Threads)
endif()

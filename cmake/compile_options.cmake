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
  if(MINGW)
    quilmark_compile_by_clang(${target})
  endif()
endfunction()

# clang takes half of g++'s time where nothing is optimised, and its linker a sixtieth of the other's. They work on
# mingw-w64's headers, library and ABI; the objects of what is delivered stay g++'s, in test programs too.
function(quilmark_compile_by_clang target)
  set_target_properties(${target} PROPERTIES
    CXX_COMPILER_LAUNCHER "${PROJECT_SOURCE_DIR}/cmake/clang_for_gcc.sh;${CMAKE_CXX_COMPILER_LAUNCHER}")
  target_compile_options(${target} PRIVATE --target=x86_64-w64-mingw32 -femulated-tls -nostdlibinc
    -D__GXX_TYPEINFO_EQUALITY_INLINE=0 -Wno-unknown-warning-option)
  foreach(folder ${CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES})
    if(folder MATCHES "/c[+][+]")
      target_compile_options(${target} PRIVATE "SHELL:-isystem ${folder}")
    endif()
  endforeach()
  target_compile_options(${target} PRIVATE "SHELL:-idirafter ${CMAKE_FIND_ROOT_PATH}/include")
endfunction()
function(quilmark_link_by_clang target)
  set_target_properties(${target} PROPERTIES RULE_LAUNCH_LINK "${PROJECT_SOURCE_DIR}/cmake/clang_for_gcc.sh")
  target_link_options(${target} PRIVATE --target=x86_64-w64-mingw32 -fuse-ld=lld)
  list(TRANSFORM CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES PREPEND "-L" OUTPUT_VARIABLE folders)
  target_link_options(${target} PRIVATE ${folders})
  target_link_libraries(${target} PRIVATE -lpthread)
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

set(other_system win32)
if(WIN32)
  set(other_system posix)
endif()

# One static library a layer. A layer is linked with the layers below it only, in the order of
# docs/architecture.md, so that an include of a higher layer fails at the link at the latest.
function(quilmark_layer name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "src/${name}/*.cpp" "src/${name}/*.h")
  list(FILTER sources EXCLUDE REGEX "/${other_system}/|/main\\.cpp$")
  add_library(quilmark_${name} STATIC ${sources})
  set_target_properties(quilmark_${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(quilmark_${name} PUBLIC quilmark_options quilmark_headers ${ARGN})
  quilmark_compile_as_product(quilmark_${name})
endfunction()

quilmark_layer(platform)
quilmark_layer(config quilmark_platform)
quilmark_layer(canvas quilmark_config)
quilmark_layer(index quilmark_canvas)
quilmark_layer(search quilmark_index)
quilmark_layer(content quilmark_search)
target_link_libraries(quilmark_content PUBLIC quilmark_miniz)
quilmark_layer(shell quilmark_content)
if(WIN32)
  target_link_libraries(quilmark_platform PUBLIC shell32 ole32 bcrypt uuid)
  target_link_libraries(quilmark_shell PUBLIC comctl32 gdi32 user32)
endif()

add_library(quilmark_cli STATIC)
file(GLOB cli_sources CONFIGURE_DEPENDS "src/cli/*.cpp" "src/cli/*.h")
list(FILTER cli_sources EXCLUDE REGEX "/main\\.cpp$")
target_sources(quilmark_cli PRIVATE ${cli_sources})
set_target_properties(quilmark_cli PROPERTIES LINKER_LANGUAGE CXX)
target_link_libraries(quilmark_cli PUBLIC quilmark_content)
target_compile_definitions(quilmark_cli PUBLIC QUILMARK_VERSION="${PROJECT_VERSION}")
quilmark_compile_as_product(quilmark_cli)

add_executable(quilmark src/cli/main.cpp)
target_link_libraries(quilmark PRIVATE quilmark_cli)
if(WIN32)
  enable_language(RC)
  # The name, version and manifest of a program, from its description and the name of its file.
  function(quilmark_resources target description file)
    set(QUILMARK_DESCRIPTION "${description}")
    set(QUILMARK_FILE "${file}")
    set(script "${CMAKE_BINARY_DIR}/resources/${file}.rc")
    configure_file(resources/quilmark.rc.in "${script}" @ONLY)
    set_source_files_properties("${script}" PROPERTIES
      INCLUDE_DIRECTORIES "${PROJECT_SOURCE_DIR}/resources"
      OBJECT_DEPENDS "${PROJECT_SOURCE_DIR}/resources/quilmark.ico;${PROJECT_SOURCE_DIR}/resources/quilmark.manifest")
    target_sources(${target} PRIVATE "${script}")
  endfunction()

  # What every program of ours for Windows is.
  function(quilmark_windows_program target)
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-municode>)
    # DEP, ASLR and its wide form by name, though the linker knows them as its defaults.
    # The metrics of frames are told as they are only to programs of the subsystem of Windows 6 and above.
    target_link_options(${target} PRIVATE -municode -Wl,--nxcompat -Wl,--dynamicbase -Wl,--high-entropy-va
      -Wl,--major-subsystem-version=10 -Wl,--minor-subsystem-version=0)
    # Symbols stand beside the program, for whoever reads a dump; Wine's own dump writer falls over them.
    add_custom_command(TARGET ${target} POST_BUILD VERBATIM
      COMMAND "${CMAKE_OBJCOPY}" --only-keep-debug "$<TARGET_FILE:${target}>" "$<TARGET_FILE:${target}>.debug"
      COMMAND "${CMAKE_STRIP}" --strip-debug "$<TARGET_FILE:${target}>")
  endfunction()

  set_target_properties(quilmark PROPERTIES OUTPUT_NAME quilmark-cli)
  quilmark_resources(quilmark "Quilmark in the console" quilmark-cli.exe)
  quilmark_windows_program(quilmark)
endif()

# The desktop program, for Windows alone.
if(WIN32)
  # A window's program with the resources of ours, from the given sources.
  function(quilmark_window_program target output)
    add_executable(${target} WIN32 ${ARGN})
    quilmark_resources(${target} Quilmark Quilmark.exe)
    target_link_libraries(${target} PRIVATE quilmark_shell)
    set_target_properties(${target} PROPERTIES OUTPUT_NAME "${output}")
    quilmark_windows_program(${target})
  endfunction()
  quilmark_window_program(quilmark_window Quilmark src/shell/win32/main.cpp)
endif()

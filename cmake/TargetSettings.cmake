# zvflnetwork_settings(<target>): the warnings, sanitizers and coverage that every target of this project is
# built with. Settings go to targets, never into global flags, so that the project can live inside another one.

function(zvflnetwork_settings target)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF BUILD_RPATH_USE_ORIGIN ON)
  if(ZVFLNETWORK_DEVELOPER)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion -Wsign-conversion -Wshadow -Wpedantic
                                             -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      # GCC bug 105329: a false alarm for concatenated strings.
      target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
  endif()
  if(ZVFLNETWORK_INSTALL AND NOT ZVFLNETWORK_DEVELOPER)
    # What is installed is the same from whatever folder it was built in. Contributors' builds keep the names of
    # folders, by which debuggers find the sources. GCC takes the last map that fits, so the longer one stands last.
    target_compile_options(${target} PRIVATE -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
                                             -ffile-prefix-map=${PROJECT_BINARY_DIR}=./build)
  endif()
  if(ZVFLNETWORK_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${ZVFLNETWORK_SANITIZE} -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${ZVFLNETWORK_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      # Tracking variables through the grammars' templates takes gigabytes and half of the time.
      target_compile_options(${target} PRIVATE -fno-var-tracking -fno-var-tracking-assignments)
      # The sanitizers' own code makes GCC see uninitialised reads of optional values.
      target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
  endif()
  if(ZVFLNETWORK_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage -fno-inline)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()

# Settings shared by every target, and the project's two kinds of target.
add_library(vilnor_warnings INTERFACE)
target_compile_options(vilnor_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                                 -Werror)
add_library(vilnor_settings INTERFACE)
target_link_libraries(vilnor_settings INTERFACE vilnor_warnings)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # When optimising, GCC 12 reports impossible overlaps in its own std::string (GCC bug 105651).
  target_compile_options(vilnor_settings INTERFACE -Wno-restrict)
endif()
if(WIN32)
  target_compile_definitions(vilnor_settings INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0601)
  target_compile_options(vilnor_settings INTERFACE -fstack-protector-strong)
  # Binaries must not reveal where they were built. The compiler cache names sources relative to the build
# folder.
  # CMake already ends this path with a slash.
  file(RELATIVE_PATH up ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR})
  target_compile_options(vilnor_settings INTERFACE -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
                                                   -ffile-prefix-map=${up}=)
  target_link_options(vilnor_settings INTERFACE -fstack-protector-strong)
endif()
if(VILNOR_SYMBOLS)
  # Generated files get the same name whether or not the compiler cache makes their path relative.
  target_compile_options(vilnor_settings INTERFACE -g -ffile-prefix-map=${PROJECT_BINARY_DIR}/=)
endif()
if(VILNOR_SANITIZE)
  set(sanitize -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_compile_options(vilnor_settings INTERFACE ${sanitize})
  target_link_options(vilnor_settings INTERFACE ${sanitize})
endif()
if(VILNOR_FUZZ)
  target_compile_options(vilnor_settings INTERFACE -fsanitize=fuzzer-no-link
                         -fsanitize-coverage-ignorelist=${PROJECT_SOURCE_DIR}/fuzz/unwatched.txt)
endif()
if(VILNOR_COVERAGE)
  target_compile_options(vilnor_settings INTERFACE -fprofile-instr-generate -fcoverage-mapping)
  target_link_options(vilnor_settings INTERFACE -fprofile-instr-generate)
endif()

# vilnor_room(NAME [ROOM...]): the static library vilnor_NAME, built from the *.cpp in the caller's subfolder
# NAME, which may use the given rooms. tests/architecture checks the #include lines against the same
# arrows.
function(vilnor_room name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
  list(TRANSFORM ARGN PREPEND vilnor_)
  if(sources)
    add_library(vilnor_${name} STATIC ${sources})
    set(scope PUBLIC)
  else()
    add_library(vilnor_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_link_libraries(vilnor_${name} ${scope} vilnor_settings ${ARGN})
  target_include_directories(vilnor_${name} ${scope} ${CMAKE_CURRENT_SOURCE_DIR})
endfunction()

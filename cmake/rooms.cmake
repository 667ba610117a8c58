# Settings that every target shares, and the two shapes of target that the project is made of.
add_library(vilnor_warnings INTERFACE)
target_compile_options(vilnor_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                                 -Werror)
add_library(vilnor_settings INTERFACE)
target_link_libraries(vilnor_settings INTERFACE vilnor_warnings)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps that cannot be in its own std::string when it optimises (GCC bug 105651).
  target_compile_options(vilnor_settings INTERFACE -Wno-restrict)
endif()
if(WIN32)
  target_compile_definitions(vilnor_settings INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0601)
  target_compile_options(vilnor_settings INTERFACE -fstack-protector-strong)
  # No binary tells where it was built. The compiler cache names sources from the build folder.
  # CMake ends this path with a slash already.
  file(RELATIVE_PATH up ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR})
  target_compile_options(vilnor_settings INTERFACE -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
                                                   -ffile-prefix-map=${up}=)
  target_link_options(vilnor_settings INTERFACE -fstack-protector-strong)
endif()
if(VILNOR_SYMBOLS)
  # What is generated has the same name whether the compiler cache makes its path relative or not.
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

# vilnor_room(NAME [ROOM...]): the static library vilnor_NAME of the *.cpp in the folder NAME beside
# the caller, which may use the rooms named. tests/architecture holds the #include lines to the same
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

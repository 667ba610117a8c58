# Settings that every target shares, and the two shapes of target that the project is made of.
add_library(vilnor_settings INTERFACE)
target_compile_options(vilnor_settings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                                 -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps that cannot be in its own std::string when it optimises (GCC bug 105651).
  target_compile_options(vilnor_settings INTERFACE -Wno-restrict)
endif()
target_include_directories(vilnor_settings INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(WIN32)
  target_compile_definitions(vilnor_settings INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0601)
endif()
if(VILNOR_SANITIZE)
  set(sanitize -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_compile_options(vilnor_settings INTERFACE ${sanitize})
  target_link_options(vilnor_settings INTERFACE ${sanitize})
endif()

# vilnor_room(NAME [ROOM...]): the static library vilnor_NAME of src/NAME/*.cpp, which may use the
# rooms named. tests/architecture holds the #include lines to the same arrows.
function(vilnor_room name)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${name}/*.cpp)
  list(TRANSFORM ARGN PREPEND vilnor_)
  if(sources)
    add_library(vilnor_${name} STATIC ${sources})
    target_link_libraries(vilnor_${name} PUBLIC vilnor_settings ${ARGN})
  else()
    add_library(vilnor_${name} INTERFACE)
    target_link_libraries(vilnor_${name} INTERFACE vilnor_settings ${ARGN})
  endif()
endfunction()

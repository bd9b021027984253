# What every target of this project has in common, library, test, example or benchmark alike.

# orv_target(<name>): C++20 without extensions, and the project's warnings where they are asked for.
function(orv_target name)
  target_compile_features(${name} PRIVATE cxx_std_20)
  set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF)
  if(ORV_DEVELOPER_WARNINGS)
    if(MSVC)
      target_compile_options(${name} PRIVATE /W4 /WX)
    else()
      target_compile_options(${name} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Werror)
      if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # GCC 12 sees overlaps in std::string's own code where there are none (its bug 105651).
        target_compile_options(${name} PRIVATE -Wno-restrict)
      endif()
    endif()
  endif()
endfunction()

# orv_sources(<file>...): adds a room's files to the library. Called from the room's own CMakeLists.txt.
function(orv_sources)
  list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  target_sources(ZanOrvCoreService PRIVATE ${ARGN})
endfunction()

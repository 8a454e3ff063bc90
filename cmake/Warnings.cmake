# Warning flags for the project's own targets.
function(tavelo_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow=local -Wno-unused-parameter)
  # GCC 12 reports overlapping copies inside std::string at -O2 that cannot
  # happen (its bug 105651); the warning says nothing about our code.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(TAVELO_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# An engine library: every .cpp of its folder, standard C++ only.
# Sources are globbed so that adding a file never touches a shared list.
function(tavelo_engine name)
  cmake_parse_arguments(E "" "" "DEPS" ${ARGN})
  file(GLOB srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
  if(NOT srcs)
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/${name}_empty.cpp "// no sources yet\n")
    set(srcs ${CMAKE_CURRENT_BINARY_DIR}/${name}_empty.cpp)
  endif()
  add_library(tav_${name} STATIC ${srcs})
  set_target_properties(tav_${name} PROPERTIES AUTOMOC OFF)
  target_include_directories(tav_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(tav_${name} PUBLIC ${E_DEPS})
  tavelo_warnings(tav_${name})
endfunction()

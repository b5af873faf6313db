# Compiler settings that every target of the project shares.
find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(project_options INTERFACE)
target_include_directories(project_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(project_options INTERFACE
  -Wall -Wextra -Wno-missing-field-initializers -Wpedantic -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 warns of overlapping copies in its own string header when it optimises.
  target_compile_options(project_options INTERFACE -Wshadow=local -Wno-restrict)
else()
  # Clang takes designated initializers that leave members out for mistakes, and blames us for what GCC's headers call.
  target_compile_options(project_options INTERFACE
    -Wno-missing-designated-field-initializers -Wno-deprecated-declarations)
endif()

if(TS_SANITIZE)
  target_compile_options(project_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
  target_link_options(project_options INTERFACE -fsanitize=address,undefined)
endif()
if(TS_FUZZ)
  # What is tested is what is fuzzed: one build, whose coverage the fuzz targets read.
  target_compile_options(project_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(WIN32)
  # Windows 7 is the oldest system served; newer functions are looked up at run time.
  target_compile_definitions(project_options INTERFACE
    UNICODE _UNICODE WINVER=0x0601 _WIN32_WINNT=0x0601 NOMINMAX WIN32_LEAN_AND_MEAN STRICT)
  # One .exe and nothing beside it: the compiler's run-time is linked in.
  target_link_options(project_options INTERFACE -static -static-libgcc -static-libstdc++ -Wl,--nxcompat -Wl,--dynamicbase)
endif()

# ts_library(NAME SOURCES... [LINK ...]): one folder as one static library.
function(ts_library name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PUBLIC project_options ${ARG_LINK})
endfunction()

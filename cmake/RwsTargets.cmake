# Every target of the project is made by one of these two, so that warnings and sanitizers are
# decided in one place, and so that a std-only library is never handed a Qt include directory.

add_library(rws_flags INTERFACE)
target_include_directories(rws_flags INTERFACE ${CMAKE_SOURCE_DIR})
if(WIN32)
  target_compile_definitions(rws_flags INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN)
endif()
if(MSVC)
  target_compile_options(rws_flags INTERFACE /W4 /permissive- /utf-8)
else()
  target_compile_options(rws_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Warns of every literal joined to a string in optimised builds.
    target_compile_options(rws_flags INTERFACE -Wno-restrict)
  endif()
endif()
if(RWS_SANITIZE)
  target_compile_options(rws_flags INTERFACE -fsanitize=${RWS_SANITIZE}
                                             -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(rws_flags INTERFACE -fsanitize=${RWS_SANITIZE})
endif()
if(RWS_FUZZ)
  # All code tells the fuzzer which ways it takes; its main function comes to the targets alone. What
  # is compared it need not hear of, at half the speed: the dictionaries have the words.
  target_compile_options(rws_flags INTERFACE -fsanitize=fuzzer-no-link
                                             -fno-sanitize-coverage=trace-cmp)
endif()

# A room is the folder of its targets: its files may include what these link, directly or through
# others, and nothing else. The layer check reads the arrows from here.
function(rws_room name)
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${CMAKE_SOURCE_DIR}
             OUTPUT_VARIABLE folder)
  set_property(GLOBAL APPEND_STRING PROPERTY RWS_ROOMS
    "list(APPEND ROOMS ${name})\nset(FOLDER_${name} ${folder})\nset(LINK_${name} ${ARGN})\n")
endfunction()

function(rws_write_rooms file)
  get_property(rooms GLOBAL PROPERTY RWS_ROOMS)
  file(WRITE ${file} "${rooms}")
endfunction()

# rws_library(name SOURCES ... LINK ...): a library without Qt.
function(rws_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC rws_flags ${ARG_LINK})
  rws_room(${name} ${ARG_LINK})
endfunction()

# rws_qt_library(name SOURCES ... LINK ...): a library that may use Qt.
function(rws_qt_library name)
  rws_library(${name} ${ARGN} Qt6::Widgets)
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
endfunction()

# rws_executable(name SOURCES ... LINK ...)
function(rws_executable name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE rws_flags ${ARG_LINK})
  rws_room(${name} ${ARG_LINK})
endfunction()

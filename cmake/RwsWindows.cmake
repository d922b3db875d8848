# rws_windows_facts(target TITLE text [ICON drawing]): what Windows reads from a program's file: its
# version, its manifest and its icon. Nothing on other systems.
function(rws_windows_facts target)
  if(NOT WIN32)
    return()
  endif()
  cmake_parse_arguments(ARG "" "TITLE;ICON" "" ${ARGN})
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}-facts)
  set(RWS_TITLE ${ARG_TITLE})
  set(RWS_FILE ${target}.exe)
  set(RWS_MANIFEST ${CMAKE_SOURCE_DIR}/packaging/windows/program.manifest)
  set(RWS_ICON_LINE "")
  set(read ${RWS_MANIFEST})
  if(ARG_ICON)
    rws_icon_file(${ARG_ICON} ${folder}/program.ico)
    list(APPEND read ${folder}/program.ico)
    set(RWS_ICON_LINE "1 ICON \"${folder}/program.ico\"")
  endif()
  configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in ${folder}/program.rc @ONLY)
  set_source_files_properties(${folder}/program.rc PROPERTIES
    OBJECT_DEPENDS "${read}")
  target_sources(${target} PRIVATE ${folder}/program.rc)
endfunction()

# rws_icon_file(drawing icon): an .ico with a picture of each size that Windows shows.
function(rws_icon_file drawing icon)
  find_program(RWS_ICOTOOL icotool REQUIRED)
  foreach(size 16 20 24 32 40 48 64 256)
    rws_draw(${drawing} ${icon}-${size}.png ${size})
    list(APPEND pictures ${icon}-${size}.png)
  endforeach()
  add_custom_command(OUTPUT ${icon}
    COMMAND ${RWS_ICOTOOL} --create --output ${icon} ${pictures} DEPENDS ${pictures} VERBATIM)
endfunction()

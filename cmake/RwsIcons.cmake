# rws_icons(target BASE folder FILES drawing...): puts drawings (.svg), named from `folder` on, into
# the resources of a target as ":/icons/NAME.svg". Where the module of Qt that draws them is not
# built, which is so on Windows, it is a picture of each size that a screen asks for instead,
# ":/icons/NAME@SIZE.png", drawn while the program is built.
set(RWS_ICON_SIZES 16 20 24 32 40 48 64 128)

function(rws_icons target)
  cmake_parse_arguments(ARG "" "BASE" "FILES" ${ARGN})
  if(WIN32)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}-icons)
    foreach(drawing IN LISTS ARG_FILES)
      cmake_path(REMOVE_EXTENSION drawing OUTPUT_VARIABLE name)
      foreach(size IN LISTS RWS_ICON_SIZES)
        rws_draw(${ARG_BASE}/${drawing} ${folder}/${name}@${size}.png ${size})
        list(APPEND files ${folder}/${name}@${size}.png)
      endforeach()
    endforeach()
    set(base ${folder})
  else()
    list(TRANSFORM ARG_FILES PREPEND ${ARG_BASE}/ OUTPUT_VARIABLE files)
    set(base ${ARG_BASE})
  endif()
  qt_add_resources(${target} ${target}_icons PREFIX /icons BASE ${base} FILES ${files})
endfunction()

# rws_draw(drawing picture size): a picture of so many pixels on each side.
function(rws_draw drawing picture size)
  find_program(RWS_RSVG rsvg-convert REQUIRED)
  cmake_path(GET picture PARENT_PATH folder)
  add_custom_command(OUTPUT ${picture}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${RWS_RSVG} --width ${size} --height ${size} --output ${picture} ${drawing}
    DEPENDS ${drawing} VERBATIM)
endfunction()

# What must lie beside Windows programs that hold the libraries of others: licences/.

if(NOT DEFINED ENV{RWS_QT_WINDOWS})
  message(FATAL_ERROR "RWS_QT_WINDOWS is not set: the licences of Qt lie there")
endif()
set(qt $ENV{RWS_QT_WINDOWS}/licences)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/windows/licences.txt
              ${qt}/LGPL-3.0-only.txt ${qt}/GPL-3.0-only.txt ${qt}/qtbase-copyright.txt
              ${qt}/qtbase-version.txt ${qt}/qtbase-recipe.sh
        DESTINATION licences)

# rws_copyright(name package...): the copyright file of the first of these packages that is there.
function(rws_copyright name)
  foreach(package IN LISTS ARGN)
    set(file /usr/share/doc/${package}/copyright)
    if(EXISTS ${file})
      install(FILES ${file} RENAME ${name}-copyright.txt DESTINATION licences)
      return()
    endif()
  endforeach()
  message(FATAL_ERROR "No copyright file of ${ARGN}")
endfunction()
rws_copyright(gcc gcc-mingw-w64-x86-64-posix-runtime gcc-mingw-w64-base)
rws_copyright(mingw-w64 mingw-w64-x86-64-dev mingw-w64-common)
rws_copyright(nlohmann-json nlohmann-json3-dev)
rws_copyright(cli11 libcli11-dev)

# What `cmake --install` and the packages of CPack hold.

include(GNUInstallDirs)

if(WIN32)
  set(RWS_PROGRAM_DIR ${CMAKE_INSTALL_BINDIR})
else()
  # The programs look for their tables beside themselves, so both share a folder of their own; the
  # links in bin/ lead there.
  set(RWS_PROGRAM_DIR ${CMAKE_INSTALL_LIBDIR}/rws-edit)
endif()

install(TARGETS rws-edit rws-cli RUNTIME DESTINATION ${RWS_PROGRAM_DIR})

file(GLOB RWS_DATA CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/data/RWS_*.txt
     ${CMAKE_SOURCE_DIR}/data/RWS.HLP.html)
install(FILES ${RWS_DATA} DESTINATION ${RWS_PROGRAM_DIR})

if(NOT WIN32)
  cmake_path(ABSOLUTE_PATH RWS_PROGRAM_DIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}
             OUTPUT_VARIABLE programs)
  file(RELATIVE_PATH programs ${CMAKE_INSTALL_FULL_BINDIR} ${programs})
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/packaging/links)
  foreach(program rws-edit rws-cli)
    set(link ${CMAKE_BINARY_DIR}/packaging/links/${program})
    file(CREATE_LINK ${programs}/${program} ${link} SYMBOLIC)
    install(FILES ${link} DESTINATION ${CMAKE_INSTALL_BINDIR})
  endforeach()

  set(packaging ${CMAKE_SOURCE_DIR}/packaging)
  install(FILES ${packaging}/rws-edit.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${packaging}/com.hollowbyte.rws_edit.metainfo.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${packaging}/rws-edit-mime.xml RENAME rws-edit.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  install(FILES ${packaging}/rws-edit.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  install(FILES ${packaging}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/rws-edit)

  find_program(RWS_GZIP gzip)
  foreach(page rws-edit.1 rws-cli.1)
    set(manual ${packaging}/${page})
    if(RWS_GZIP)
      set(manual ${CMAKE_BINARY_DIR}/packaging/${page}.gz)
      add_custom_command(OUTPUT ${manual}
        COMMAND ${RWS_GZIP} -9nc ${packaging}/${page} > ${manual}
        DEPENDS ${packaging}/${page} VERBATIM)
      list(APPEND manuals ${manual})
    endif()
    install(FILES ${manual} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  endforeach()
  add_custom_target(rws_manuals ALL DEPENDS ${manuals})
endif()

set(CPACK_PACKAGE_NAME rws-edit)
set(CPACK_PACKAGE_VENDOR "RWS Edit")
set(CPACK_PACKAGE_CONTACT "RWS Edit maintainers <maintainers@rws-edit.invalid>" CACHE STRING
    "Who the packages name as their maintainer")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "tuner for missions of IL-2 Sturmovik: 1946")
set(CPACK_PACKAGE_DESCRIPTION "Lists the missions of a folder and shows the selected one, with its map, weather, time, flights and
their aircraft, in one window. Writes the changed missions back and keeps a backup of each. Comes
with rws-cli, which prints the records of a mission for scripts.")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# No library that is linked brings the plugin that draws the icons, where it is a package of its own.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-svg-plugins | libqt6svg6 (<< 6.6)")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")
include(CPack)

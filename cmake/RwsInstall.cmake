# What `cmake --install` and the packages of CPack hold.

include(GNUInstallDirs)

option(RWS_HARDEN "Build with the guards that a distribution asks of its packages" OFF)
if(RWS_HARDEN)
  # Needs an optimised build; position-independent code is CMAKE_POSITION_INDEPENDENT_CODE.
  target_compile_options(rws_flags INTERFACE
    -fstack-protector-strong -Wformat -Werror=format-security -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
    -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
  target_link_options(rws_flags INTERFACE
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie> -Wl,-z,relro,-z,now)
endif()

# The programs look for their tables beside themselves first, and then in ../share/rws-edit.
if(WIN32)
  set(RWS_PROGRAM_DIR .)
  set(RWS_DATA_DIR .)
else()
  set(RWS_PROGRAM_DIR ${CMAKE_INSTALL_BINDIR})
  set(RWS_DATA_DIR ${CMAKE_INSTALL_DATADIR}/rws-edit)
endif()
install(TARGETS rws-edit rws-cli RUNTIME DESTINATION ${RWS_PROGRAM_DIR})
file(GLOB RWS_DATA CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/data/RWS_*.txt
     ${CMAKE_SOURCE_DIR}/data/RWS.HLP.html)
install(FILES ${RWS_DATA} DESTINATION ${RWS_DATA_DIR})

if(WIN32)
  include(cmake/RwsLicences.cmake)
else()
  install(FILES ${CMAKE_SOURCE_DIR}/data/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
  set(packaging ${CMAKE_SOURCE_DIR}/packaging)
  install(FILES ${packaging}/rws-edit.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${packaging}/com.hollowbyte.rws_edit.metainfo.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${packaging}/rws-edit-mime.xml RENAME rws-edit.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  install(FILES ${packaging}/rws-edit.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  install(FILES ${packaging}/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
  install(FILES ${packaging}/lintian-overrides RENAME rws-edit
          DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides)

  find_program(RWS_GZIP gzip)
  foreach(page rws-edit.1 rws-cli.1 changelog)
    set(packed ${packaging}/${page})
    if(RWS_GZIP)
      set(packed ${CMAKE_BINARY_DIR}/packaging/${page}.gz)
      add_custom_command(OUTPUT ${packed}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/packaging
        COMMAND ${RWS_GZIP} -9nc ${packaging}/${page} > ${packed}
        DEPENDS ${packaging}/${page} VERBATIM)
      list(APPEND all_packed ${packed})
    endif()
    if(page STREQUAL "changelog")
      install(FILES ${packed} DESTINATION ${CMAKE_INSTALL_DOCDIR})
    else()
      install(FILES ${packed} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    endif()
  endforeach()
  add_custom_target(rws_packed ALL DEPENDS ${all_packed})
endif()

set(CPACK_PACKAGE_NAME rws-edit)
set(CPACK_PACKAGE_VENDOR "RWS Edit")
set(CPACK_PACKAGE_CONTACT "RWS Edit maintainers <maintainers@rws-edit.invalid>" CACHE STRING
    "Who the packages name as their maintainer")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "tuner for missions of IL-2 Sturmovik: 1946")
set(CPACK_PACKAGE_DESCRIPTION
"RWS Edit lists the missions of a folder and shows the selected one, with its
map, weather, clouds, time of day, flights and their aircraft, in one window.
It changes skins, weapons, fuel, skill, delayed starts, routes and the plane
of the player, writes the changed missions back and keeps a backup of each.
.
It also edits briefings, home bases and parked aircraft, renames, converts
and copies whole folders of missions, and comes with rws-cli, which prints
and changes missions for scripts.")
if(RWS_UPDATE_SITE)
  set(CPACK_PACKAGE_HOMEPAGE_URL ${RWS_UPDATE_SITE})
endif()
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# No library that is linked brings the plugin that draws the icons, where it is a package of its own.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-svg-plugins | libqt6svg6 (<< 6.6)")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")
if(WIN32)
  set(CPACK_PACKAGE_FILE_NAME rws-edit-${PROJECT_VERSION}-windows)
endif()
include(CPack)

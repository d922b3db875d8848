# rws_host_headers(target folder): a library of headers only, taken from the system that builds. Its
# folder alone is made known: beside it in /usr/include lie the headers of that system's C library.
function(rws_host_headers target folder)
  if(TARGET ${target})
    return()
  endif()
  find_path(RWS_HOST_${folder} NAMES ${folder} PATHS /usr/include /usr/local/include
            NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  set(around ${CMAKE_BINARY_DIR}/host-headers/${folder})
  file(MAKE_DIRECTORY ${around})
  file(CREATE_LINK ${RWS_HOST_${folder}}/${folder} ${around}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${around})
endfunction()

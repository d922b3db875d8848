include(${CMAKE_CURRENT_LIST_DIR}/RwsHostHeaders.cmake)
rws_host_headers(CLI11::CLI11 CLI)
set(CLI11_FOUND TRUE)

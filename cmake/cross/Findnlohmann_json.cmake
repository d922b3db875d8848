include(${CMAKE_CURRENT_LIST_DIR}/RwsHostHeaders.cmake)
rws_host_headers(nlohmann_json::nlohmann_json nlohmann)
set(nlohmann_json_FOUND TRUE)

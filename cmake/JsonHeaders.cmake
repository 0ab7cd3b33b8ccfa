# nlohmann-json for the reference host's runner and rwgroove. A cross build
# finds no host packages in its sysroot; the library is header-only, so the
# build machine's headers are taken on their own.
if(TARGET nlohmann_json::nlohmann_json)
  return()
endif()
find_package(nlohmann_json 3 QUIET)
if(NOT nlohmann_json_FOUND)
  find_path(RW_JSON_INCLUDE nlohmann/json.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(COPY ${RW_JSON_INCLUDE}/nlohmann DESTINATION ${CMAKE_BINARY_DIR}/json/include)
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED GLOBAL)
  target_include_directories(nlohmann_json::nlohmann_json INTERFACE ${CMAKE_BINARY_DIR}/json/include)
endif()

# The header-only libraries of the tool: imscodec::cli11 and imscodec::json.
#
# They are the same for every architecture, so a cross build takes them from the machine that builds. A link to the one
# folder of each, rather than the folder that they stand in, keeps the machine's other headers out.

set(header_only_dir ${PROJECT_BINARY_DIR}/header-only)
file(MAKE_DIRECTORY ${header_only_dir})

function(imscodec_header_only name folder header package)
  find_path(IMSCODEC_${name}_DIR ${folder}/${header} NO_CMAKE_FIND_ROOT_PATH PATHS /usr/include)
  if(NOT IMSCODEC_${name}_DIR)
    message(FATAL_ERROR "${folder}/${header} is missing: install ${package}")
  endif()
  file(CREATE_LINK ${IMSCODEC_${name}_DIR}/${folder} ${header_only_dir}/${folder} SYMBOLIC)
  add_library(imscodec-${name} INTERFACE)
  target_include_directories(imscodec-${name} SYSTEM INTERFACE ${header_only_dir})
  add_library(imscodec::${name} ALIAS imscodec-${name})
endfunction()

imscodec_header_only(cli11 CLI CLI.hpp libcli11-dev)
imscodec_header_only(json nlohmann json.hpp nlohmann-json3-dev)

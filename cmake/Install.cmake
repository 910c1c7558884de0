# What `cmake --install` lays down, in the components that packages are made of: library, runtime, development, tool.

# Where the system looks for libraries of its architecture, below /usr and /usr/local alike; a cross build's too.
if(CMAKE_LIBRARY_ARCHITECTURE)
  set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Library folder, relative or absolute")
endif()
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# ---- Headers: one folder, which is the include path of host programs

set(include_dir ${CMAKE_INSTALL_INCLUDEDIR}/imscodec)
set(codec_dir ${PROJECT_SOURCE_DIR}/xmlAddOns/addons/IMS)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/runtime/ DESTINATION ${include_dir} COMPONENT development
        FILES_MATCHING PATTERN libxml2 EXCLUDE PATTERN "*.h")
file(GLOB module_headers CONFIGURE_DEPENDS RELATIVE ${codec_dir} ${codec_dir}/QxXml*.h ${codec_dir}/*/QxXml*.h)
list(FILTER module_headers EXCLUDE REGEX "Tables\\.h$")
foreach(header IN LISTS module_headers)
  cmake_path(GET header PARENT_PATH module)
  install(FILES ${codec_dir}/${header} DESTINATION ${include_dir}/${module} COMPONENT development)
endforeach()

install(DIRECTORY ${PROJECT_SOURCE_DIR}/bindings/cpp/ DESTINATION ${include_dir} COMPONENT development
        FILES_MATCHING PATTERN "*.hpp")
set_target_properties(imscodec-cpp PROPERTIES EXPORT_NAME cpp)
install(TARGETS imscodec-cpp EXPORT imscodecTargets INCLUDES DESTINATION ${include_dir})

# ---- Libraries and tool

function(imscodec_install_library target name component)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  set_target_properties(${target}-static PROPERTIES EXPORT_NAME ${name}-static)
  install(
    TARGETS ${target}
    EXPORT imscodecTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${component} NAMELINK_COMPONENT development
    INCLUDES DESTINATION ${include_dir})
  install(
    TARGETS ${target}-static
    EXPORT imscodecStaticTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    INCLUDES DESTINATION ${include_dir})
endfunction()

imscodec_install_library(imscodec codec library)
imscodec_install_library(imsruntime runtime runtime)
if(IMSCODEC_TOOL)
  install(TARGETS imscodec-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
endif()

# ---- Manual pages, compressed as packages have them, and completion

set(IMSCODEC_MANUAL ${PROJECT_BINARY_DIR}/install)
find_program(IMSCODEC_GZIP gzip)
function(imscodec_install_manual page component)
  set(file ${IMSCODEC_MANUAL}/${page})
  configure_file(${PROJECT_SOURCE_DIR}/man/${page}.in ${file} @ONLY)
  if(IMSCODEC_GZIP)
    execute_process(COMMAND ${IMSCODEC_GZIP} -9nc ${file} OUTPUT_FILE ${file}.gz COMMAND_ERROR_IS_FATAL ANY)
    string(APPEND file .gz)
  endif()
  string(REGEX MATCH "[0-9]$" section ${page})
  install(FILES ${file} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT ${component})
endfunction()

imscodec_install_manual(imscodec.3 development)
if(IMSCODEC_TOOL)
  imscodec_install_manual(imscodec.1 tool)
  install(FILES ${PROJECT_SOURCE_DIR}/man/completion.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          RENAME imscodec COMPONENT tool)
endif()

# ---- For find_package(imscodec)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/imscodec)
set(config ${PROJECT_BINARY_DIR}/install/imscodecConfig)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/imscodecConfig.cmake.in ${config}.cmake
                              INSTALL_DESTINATION ${config_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${config}Version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${config}.cmake ${config}Version.cmake DESTINATION ${config_dir} COMPONENT development)
foreach(export IN ITEMS imscodecTargets imscodecStaticTargets)
  install(EXPORT ${export} NAMESPACE imscodec:: DESTINATION ${config_dir} COMPONENT development)
endforeach()

# ---- For pkg-config

set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
  set(pc_libdir ${CMAKE_INSTALL_LIBDIR})
else()
  # Said from where the file lies, so that a moved folder still works.
  file(RELATIVE_PATH pc_prefix /${pc_dir} /)
  string(REGEX REPLACE "/$" "" pc_prefix "\${pcfiledir}/${pc_prefix}")
  set(pc_libdir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
  set(pc_includedir ${include_dir})
else()
  set(pc_includedir "\${prefix}/${include_dir}")
endif()
foreach(file IN ITEMS imscodec.pc imscodec-runtime.pc)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/${file}.in ${PROJECT_BINARY_DIR}/install/${file} @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/install/${file} DESTINATION ${pc_dir} COMPONENT development)
endforeach()

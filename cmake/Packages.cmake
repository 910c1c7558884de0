# Debian packages, by `cpack` in a build folder: the two libraries, what one develops with, and the tool.

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL library runtime development)
if(IMSCODEC_TOOL)
  list(APPEND CPACK_COMPONENTS_ALL tool)
endif()
set(CPACK_PACKAGE_VENDOR "imscodec")
set(CPACK_PACKAGE_CONTACT "imscodec maintainers <maintainers@imscodec.example>" CACHE STRING "Whom packages name")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)

set(debian ${PROJECT_SOURCE_DIR}/packaging/debian)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
if(IMSCODEC_SYSROOT)
  # This machine's packages have other libraries than ours need: those of the sysroot.
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
  set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_BINARY_DIR}/install/cpack.cmake)
  string(JOIN " " shlibdeps env DEB_HOST_ARCH=armhf dpkg-shlibdeps -L${IMSCODEC_SYSROOT}/shlibs
         -l${IMSCODEC_SYSROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}
         -l${IMSCODEC_SYSROOT}/lib/${CMAKE_LIBRARY_ARCHITECTURE})
  file(WRITE ${CPACK_PROJECT_CONFIG_FILE} "set(SHLIBDEPS_EXECUTABLE ${shlibdeps})\n")
endif()

# Every package has the changes and what is known about the licence; only packages have them.
find_program(IMSCODEC_GZIP gzip)
if(IMSCODEC_GZIP)
  execute_process(COMMAND ${IMSCODEC_GZIP} -9nc ${debian}/changelog OUTPUT_FILE
                                                                  ${PROJECT_BINARY_DIR}/install/changelog.gz)
endif()
function(imscodec_package component package section description)
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${package} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_COMPONENT_${key}_DESCRIPTION "${description}" PARENT_SCOPE)
  install(FILES ${debian}/copyright ${PROJECT_BINARY_DIR}/install/changelog.gz DESTINATION share/doc/${package}
          COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()

set(same "(= ${PROJECT_VERSION})")

imscodec_package(library libimscodec${PROJECT_VERSION_MAJOR} libs "XML bodies of IMS signalling as C records
 Decodes, validates, prints and encodes composing indications, dialog states,
 rule sets, notification filters, push-to-talk settings, the 3GPP IMS body and
 debug configurations. A runtime is found by name; libimsruntime has one.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS "libimsruntime${PROJECT_VERSION_MAJOR} ${same}")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${debian}/triggers)

imscodec_package(runtime libimsruntime${PROJECT_VERSION_MAJOR} libs "XML runtime of the IMS codec over libxml2
 Contexts, memory, errors, namespaces, and reading and writing of XML, as
 libimscodec imports them.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${debian}/triggers)

imscodec_package(development libimscodec-dev libdevel "XML bodies of IMS signalling as C records (development)
 Headers, static libraries, and what CMake and pkg-config read, for programs
 that use the IMS codec and its runtime.")
string(JOIN ", " CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libimscodec${PROJECT_VERSION_MAJOR} ${same}"
       "libimsruntime${PROJECT_VERSION_MAJOR} ${same}" libxml2-dev)

imscodec_package(tool imscodec utils "reads, checks and rewrites XML bodies of IMS signalling
 Prints a body as a record or as JSON, validates many, writes one anew, and
 lists the kinds that it knows.")

include(CPack)

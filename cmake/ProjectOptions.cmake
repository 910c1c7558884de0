# What every target of this project is compiled with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

# GoogleTest is compiled with the sanitizers too, hence not a property of our targets.
if(IMSCODEC_SANITIZE)
  add_compile_options(-fsanitize=${IMSCODEC_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${IMSCODEC_SANITIZE})
endif()

if(IMSCODEC_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Profiles lie beside the objects that they were taken of, so both builds share one folder.
if(IMSCODEC_PROFILE STREQUAL "generate")
  add_compile_options(-fprofile-generate)
  add_link_options(-fprofile-generate)
elseif(IMSCODEC_PROFILE STREQUAL "use")
  add_compile_options(-fprofile-use -Wno-missing-profile)
endif()

add_library(imscodec-warnings INTERFACE)
target_compile_options(
  imscodec-warnings
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wconversion
            -Wshadow
            $<$<BOOL:${IMSCODEC_WERROR}>:-Werror>)
if(IMSCODEC_SANITIZE)
  # g++ takes what the sanitizers add for reads of uninitialised members of the standard library.
  target_compile_options(imscodec-warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# What both libraries share: no exceptions, no run-time type information, and nothing visible that is not marked so.
add_library(imscodec-library-options INTERFACE)
target_compile_options(imscodec-library-options INTERFACE -fno-exceptions -fno-rtti -fstack-protector -fno-plt
                                                          -fno-semantic-interposition)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# Compiles a library's sources once, for both its shared and its static form: NAME, NAME-static.
function(imscodec_add_library name)
  add_library(${name}-objects OBJECT ${ARGN})
  target_link_libraries(${name}-objects PRIVATE imscodec-warnings imscodec-library-options)
  set_target_properties(
    ${name}-objects
    PROPERTIES C_VISIBILITY_PRESET hidden
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON)

  set(exports ${CMAKE_CURRENT_SOURCE_DIR}/exports.map)
  add_library(${name} SHARED $<TARGET_OBJECTS:${name}-objects>)
  set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LINK_DEPENDS
                                                                                                         ${exports})
  target_link_options(
    ${name}
    PRIVATE
    LINKER:--version-script=${exports}
    LINKER:-Bsymbolic-functions
    LINKER:-z,relro
    LINKER:-z,now)

  add_library(${name}-static STATIC $<TARGET_OBJECTS:${name}-objects>)
  set_target_properties(${name}-static PROPERTIES OUTPUT_NAME ${name})
endfunction()

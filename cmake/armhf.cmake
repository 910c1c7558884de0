# The cross build for 32-bit ARM Linux, whose programs run under user-mode emulation.

cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH source_dir)
if(NOT IMSCODEC_SYSROOT)
  set(IMSCODEC_SYSROOT ${source_dir}/build/armhf-sysroot)
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES IMSCODEC_SYSROOT)
execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/armhf-sysroot.sh ${IMSCODEC_SYSROOT} COMMAND_ERROR_IS_FATAL ANY)

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
# The notes on how GCC 7.1 changed the passing of some arguments do not concern code built by one compiler.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
set(CMAKE_SYSROOT ${IMSCODEC_SYSROOT})
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static -L ${IMSCODEC_SYSROOT})

string(JOIN : library_path ${IMSCODEC_SYSROOT}/usr/lib/arm-linux-gnueabihf ${IMSCODEC_SYSROOT}/lib/arm-linux-gnueabihf)
foreach(kind IN ITEMS EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT -Wl,-rpath-link,${library_path})
endforeach()

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${IMSCODEC_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${IMSCODEC_SYSROOT}/usr/lib/arm-linux-gnueabihf/pkgconfig)

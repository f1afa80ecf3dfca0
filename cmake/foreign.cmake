# Cross-builds for NFC_NDEF_ARCH (a Debian architecture) against the sysroot that scripts/test-foreign makes, and runs
# what was built: under qemu, or i386 on the processor itself.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES NFC_NDEF_ARCH NFC_NDEF_SYSROOT)

set(CMAKE_SYSTEM_NAME Linux)
if(NFC_NDEF_ARCH STREQUAL i386)
  set(compiler_prefix i686-linux-gnu)
  set(multiarch i386-linux-gnu)
  set(CMAKE_SYSTEM_PROCESSOR i386)
elseif(NFC_NDEF_ARCH STREQUAL armhf)
  set(compiler_prefix arm-linux-gnueabihf)
  set(multiarch arm-linux-gnueabihf)
  set(CMAKE_SYSTEM_PROCESSOR arm)
elseif(NFC_NDEF_ARCH STREQUAL s390x)
  set(compiler_prefix s390x-linux-gnu)
  set(multiarch s390x-linux-gnu)
  set(CMAKE_SYSTEM_PROCESSOR s390x)
else()
  message(FATAL_ERROR "no cross-build for '${NFC_NDEF_ARCH}'")
endif()

set(CMAKE_C_COMPILER ${compiler_prefix}-gcc-12)
set(CMAKE_CXX_COMPILER ${compiler_prefix}-g++-12)

set(CMAKE_FIND_ROOT_PATH ${NFC_NDEF_SYSROOT})
set(CMAKE_LIBRARY_ARCHITECTURE ${multiarch})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(libraries ${NFC_NDEF_SYSROOT}/usr/lib/${multiarch})
set(ENV{PKG_CONFIG_LIBDIR} ${libraries}/pkgconfig)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${NFC_NDEF_SYSROOT})
set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,-rpath-link,${libraries})

# An x86-64 processor runs i386 programs itself, and qemu-i386 of Debian 12 can hang where one forks or starts a thread.
set(loader /usr/${compiler_prefix}/lib/ld-linux.so.2)
set(runs_here 1)
if(NFC_NDEF_ARCH STREQUAL i386)
  execute_process(COMMAND ${loader} --version RESULT_VARIABLE runs_here OUTPUT_QUIET ERROR_QUIET)
endif()
if(runs_here STREQUAL 0)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${loader};--library-path;/usr/${compiler_prefix}/lib:${libraries})
else()
  set(CMAKE_CROSSCOMPILING_EMULATOR
    qemu-${CMAKE_SYSTEM_PROCESSOR};-L;/usr/${compiler_prefix};-E;LD_LIBRARY_PATH=${libraries})
endif()

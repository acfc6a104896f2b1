# Linux on 64-bit ARM by Debian's cross compiler; the programs run under QEMU's user mode.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
# C for Google Test, whose project asks for it.
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_FIND_ROOT_PATH /usr/aarch64-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/find_rules.cmake)

find_program(HALVORN_QEMU NAMES qemu-aarch64 qemu-aarch64-static)
if(HALVORN_QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${HALVORN_QEMU} -L /usr/aarch64-linux-gnu)
endif()

# Builds for ARM64 on another machine with Debian's cross compiler, and runs the tests under QEMU.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
# All instructions of ARMv8, including SHA, and the system's own ARM64 libraries. With the cross
# compiler's C library instead, threads never end.
set(CMAKE_CROSSCOMPILING_EMULATOR "qemu-aarch64-static;-cpu;max;-L;/")

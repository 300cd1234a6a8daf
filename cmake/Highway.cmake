# KyImgLib::Highway: the headers of Highway (nothing of it is linked), and which of its targets kernels are compiled for.

find_path(KYIMGLIB_HIGHWAY_INCLUDE_DIR hwy/highway.h PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH
          DOC "Folder that holds hwy/highway.h (Debian: libhwy-dev)")
if(NOT KYIMGLIB_HIGHWAY_INCLUDE_DIR)
  message(FATAL_ERROR "The Highway headers (hwy/highway.h) were not found; on Debian and Ubuntu install libhwy-dev, "
                      "elsewhere set KYIMGLIB_HIGHWAY_INCLUDE_DIR.")
endif()

# The headers usually lie in /usr/include, which must never be named to a cross compiler: it would read the host's C
# library there. So a folder of our own with a link to them. (Windows has no /usr/include, and links only for the chosen.)
if(CMAKE_HOST_WIN32)
  set(highway_folder ${KYIMGLIB_HIGHWAY_INCLUDE_DIR})
else()
  set(highway_folder ${CMAKE_CURRENT_BINARY_DIR}/highway)
  file(MAKE_DIRECTORY ${highway_folder})
  file(CREATE_LINK ${KYIMGLIB_HIGHWAY_INCLUDE_DIR}/hwy ${highway_folder}/hwy SYMBOLIC)
endif()

add_library(KyImgLibHighway INTERFACE)
target_include_directories(KyImgLibHighway SYSTEM INTERFACE ${highway_folder})

# Stated rather than detected, so that neither the compiler nor its -march decides which levels there are. With
# HWY_BROKEN_EMU128 the scalar level is HWY_SCALAR for every compiler (else newer ones would take the emulated vectors).
target_compile_definitions(KyImgLibHighway INTERFACE HWY_BROKEN_EMU128=1)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|amd64|AMD64)$")
  # HWY_SCALAR, HWY_SSE4, HWY_AVX2, HWY_AVX3. AES and PCLMUL are not used; HWY_SSE4 would ask for them otherwise.
  target_compile_definitions(KyImgLibHighway INTERFACE
    HWY_BASELINE_TARGETS=HWY_SCALAR HWY_DISABLED_TARGETS=HWY_SSSE3 HWY_DISABLE_PCLMUL_AES)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64|ARM64)$")
  # HWY_SCALAR and HWY_NEON. Every such CPU has NEON, so it is part of the baseline; TOOLCHAIN_MISS_SYS_AUXV_H keeps
  # Highway from asking the compiler for "crypto" besides, which not every one has.
  target_compile_definitions(KyImgLibHighway INTERFACE TOOLCHAIN_MISS_SYS_AUXV_H
    "HWY_BASELINE_TARGETS=(HWY_SCALAR|HWY_NEON)" HWY_COMPILE_ALL_ATTAINABLE
    "HWY_DISABLED_TARGETS=(HWY_SVE|HWY_SVE2|HWY_SVE_256|HWY_SVE2_128)")
else()
  target_compile_definitions(KyImgLibHighway INTERFACE HWY_COMPILE_ONLY_SCALAR)
endif()

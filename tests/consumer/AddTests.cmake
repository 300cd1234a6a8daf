# Install into an empty prefix, then build and run the consumer: by find_package, and by pkg-config alone.

find_program(PKG_CONFIG_PROGRAM NAMES pkg-config pkgconf REQUIRED)
set(consumer ${CMAKE_CURRENT_LIST_DIR})
set(work ${CMAKE_CURRENT_BINARY_DIR}/consumer)

set(manual "")
if(TARGET kyimg AND NOT WIN32)
  set(manual ${CMAKE_INSTALL_MANDIR}/man1/kyimg.1)
endif()
add_test(NAME consumer/Install COMMAND ${CMAKE_COMMAND}
  -D BUILD=${PROJECT_BINARY_DIR} -D WORK=${work} -D CONFIG=$<CONFIG> -D MANUAL=${manual} -P ${consumer}/Install.cmake)
set_tests_properties(consumer/Install PROPERTIES FIXTURES_SETUP installed)

set(find_options -DCMAKE_PREFIX_PATH=${work}/prefix)
if(CMAKE_CROSSCOMPILING)
  # The toolchain file looks for packages in the other system's folders alone.
  set(find_options -DCMAKE_TOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE}
    -DKyImgLib_DIR=${work}/prefix/${CMAKE_INSTALL_LIBDIR}/cmake/KyImgLib)
endif()

add_test(NAME consumer/FindPackage COMMAND ${CMAKE_CTEST_COMMAND}
  --build-and-test ${consumer} ${work}/find-package
  --build-generator ${CMAKE_GENERATOR} --build-makeprogram ${CMAKE_MAKE_PROGRAM}
  --build-options ${find_options}
    -DCMAKE_C_COMPILER=${CMAKE_C_COMPILER} -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
    -DCMAKE_C_FLAGS=${CMAKE_C_FLAGS} -DCMAKE_CXX_FLAGS=${CMAKE_CXX_FLAGS}
  --test-command ${CMAKE_CTEST_COMMAND} --output-on-failure --no-tests=error)

add_test(NAME consumer/PkgConfig COMMAND sh ${consumer}/pkg-config.sh ${work}/pkg-config)
list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " emulator)
if(MINGW)
  set(link_flags "-static-libgcc -Wl,-Bstatic")  # its runtime libraries are no part of Windows
endif()
set_tests_properties(consumer/PkgConfig PROPERTIES ENVIRONMENT
  "CC=${CMAKE_C_COMPILER};CXX=${CMAKE_CXX_COMPILER};PKG_CONFIG=${PKG_CONFIG_PROGRAM};PKG_CONFIG_PATH=${work}/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig;LDFLAGS=${link_flags};EMULATOR=${emulator}")

set_tests_properties(consumer/FindPackage consumer/PkgConfig PROPERTIES FIXTURES_REQUIRED installed)

# What every target of this project is compiled with.

if(KYIMGLIB_SANITIZE)
  add_compile_options(-fsanitize=${KYIMGLIB_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KYIMGLIB_SANITIZE})
endif()

# kyimglib_target(<target>): C++20 (C99) without extensions, the warnings, and errors out of them on request.
function(kyimglib_target target)
  target_compile_features(${target} PRIVATE cxx_std_20 c_std_99)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF C_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    # Filter tables are the same on every CPU: no multiplication and addition in one rounding where a CPU could.
    -ffp-contract=off
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast>
    $<$<BOOL:${KYIMGLIB_WERROR}>:-Werror>)
  if(KYIMGLIB_SANITIZE)
    # Programs in C too: the library needs the C++ half of the sanitizer's runtime, which only the C++ compiler links.
    set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
  endif()
endfunction()

# kyimglib_wanted(<result> <option> <what was found>...): whether a part with the value AUTO, ON or OFF is to be built.
function(kyimglib_wanted result option)
  set(missing "")
  foreach(library IN LISTS ARGN)
    if(NOT ${library}_FOUND)
      list(APPEND missing ${library})
    endif()
  endforeach()
  if(missing AND ${option} STREQUAL "AUTO")
    message(STATUS "${option}: not built, not found: ${missing}")
    set(${result} OFF PARENT_SCOPE)
  elseif(missing AND ${option})
    message(FATAL_ERROR "${option} is on, but not found: ${missing}")
  elseif(${option} STREQUAL "AUTO")
    set(${result} ON PARENT_SCOPE)
  else()
    set(${result} ${${option}} PARENT_SCOPE)
  endif()
endfunction()

# kyimglib_version_resource(<target> <VFT_DLL or VFT_APP>): what Windows shows as the properties of a program or library.
function(kyimglib_version_resource target file_type)
  enable_language(RC)
  string(REPLACE . , version_words ${PROJECT_VERSION})
  if(file_type STREQUAL "VFT_DLL")
    set(file_name ${target}.dll)
    set(description "${PROJECT_DESCRIPTION}")
  else()
    set(file_name ${target}.exe)
    set(description "Command-line tool of ${PROJECT_NAME}")
  endif()
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/Version.rc.in ${resource} @ONLY)
  target_sources(${target} PRIVATE ${resource})
endfunction()

# What kyimg and the benchmarks need when they are built for another system: CLI11, fmt and nlohmann-json as headers of
# this one; libpng, zlib and Google Benchmark from the sources that scripts/fetch-sources left. Sets CLI11_FOUND and so on
# like the packages do.

if(NOT "$ENV{KYIMGLIB_SOURCES}" STREQUAL "")
  set(default_sources "$ENV{KYIMGLIB_SOURCES}")
elseif(NOT "$ENV{XDG_CACHE_HOME}" STREQUAL "")
  set(default_sources "$ENV{XDG_CACHE_HOME}/kyimglib/sources")
else()
  set(default_sources "$ENV{HOME}/.cache/kyimglib/sources")
endif()
set(KYIMGLIB_SOURCES "${default_sources}" CACHE PATH "Folder of what scripts/fetch-sources fetched")

# kyimglib_header_library(<target> <folder> <header>): a library of headers alone, through a folder that holds nothing
# but a link to them; /usr/include itself must never be named to a cross compiler.
function(kyimglib_header_library target folder header)
  find_path(${folder}_include_dir ${folder}/${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
  mark_as_advanced(${folder}_include_dir)
  if(NOT ${folder}_include_dir)
    return()
  endif()
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${folder}-headers)
  file(CREATE_LINK ${${folder}_include_dir}/${folder} ${CMAKE_CURRENT_BINARY_DIR}/${folder}-headers/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${CMAKE_CURRENT_BINARY_DIR}/${folder}-headers)
endfunction()

kyimglib_header_library(CLI11::CLI11 CLI CLI.hpp)
kyimglib_header_library(fmt::fmt fmt format.h)
kyimglib_header_library(nlohmann_json::nlohmann_json nlohmann json.hpp)
if(TARGET CLI11::CLI11)
  set(CLI11_FOUND ON)
endif()
if(TARGET nlohmann_json::nlohmann_json)
  set(nlohmann_json_FOUND ON)
endif()
if(TARGET fmt::fmt)
  set(fmt_FOUND ON)
  target_compile_definitions(fmt::fmt INTERFACE FMT_HEADER_ONLY=1)
endif()

set(benchmark ${KYIMGLIB_SOURCES}/benchmark)
if(EXISTS ${benchmark}/include/benchmark/benchmark.h)
  find_package(Threads REQUIRED)
  set(benchmark_FOUND ON)
  file(GLOB benchmark_sources ${benchmark}/src/*.cc)
  list(FILTER benchmark_sources EXCLUDE REGEX "/benchmark_main\\.cc$")
  add_library(cross-benchmark STATIC EXCLUDE_FROM_ALL ${benchmark_sources})
  add_library(benchmark::benchmark ALIAS cross-benchmark)
  target_include_directories(cross-benchmark SYSTEM PUBLIC ${benchmark}/include)
  # Its own script would have to run programs to find these out.
  target_compile_definitions(cross-benchmark PUBLIC BENCHMARK_STATIC_DEFINE PRIVATE HAVE_STD_REGEX HAVE_STEADY_CLOCK)
  target_link_libraries(cross-benchmark PUBLIC Threads::Threads $<$<PLATFORM_ID:Windows>:shlwapi>)
endif()

set(zlib ${KYIMGLIB_SOURCES}/zlib)
set(png ${KYIMGLIB_SOURCES}/libpng)
if(NOT EXISTS ${zlib}/zlib.h OR NOT EXISTS ${png}/png.h)
  return()
endif()
set(PNG_FOUND ON)

file(GLOB zlib_sources ${zlib}/*.c)
list(FILTER zlib_sources EXCLUDE REGEX "/gz[a-z]*\\.c$")  # files are kyimg's business
add_library(cross-zlib STATIC EXCLUDE_FROM_ALL ${zlib_sources})
target_include_directories(cross-zlib SYSTEM PUBLIC ${zlib})

# The configuration that libpng ships; and no code for single instruction sets, which it would have to be asked for.
configure_file(${png}/scripts/pnglibconf.h.prebuilt ${CMAKE_CURRENT_BINARY_DIR}/libpng/pnglibconf.h COPYONLY)
file(GLOB png_sources ${png}/png*.c)
list(FILTER png_sources EXCLUDE REGEX "/pngtest\\.c$")
add_library(cross-png STATIC EXCLUDE_FROM_ALL ${png_sources})
add_library(PNG::PNG ALIAS cross-png)
target_include_directories(cross-png SYSTEM PUBLIC ${png} ${CMAKE_CURRENT_BINARY_DIR}/libpng)
target_compile_definitions(cross-png PRIVATE PNG_ARM_NEON_OPT=0 PNG_INTEL_SSE_OPT=0)
target_link_libraries(cross-png PUBLIC cross-zlib)

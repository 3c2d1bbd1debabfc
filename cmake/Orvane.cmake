# The few kinds of target that this project has: static libraries, programs, automation servers
# (DLLs with a type library inside), type libraries and test executables.

add_library(orvane_options INTERFACE)
target_include_directories(orvane_options INTERFACE
  ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/companions ${CMAKE_BINARY_DIR}/idl)
target_compile_options(orvane_options INTERFACE
  # Not -Wnon-virtual-dtor: COM interfaces have no destructors, their objects delete themselves.
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Woverloaded-virtual
  -Wnull-dereference -Wduplicated-cond -Wlogical-op -Werror
  # GCC 12 sees overlapping copies in its own std::string where there are none (its bug 105651).
  -Wno-restrict)
if(WIN32)
  target_compile_definitions(orvane_options INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT
    WINVER=0x0601 _WIN32_WINNT=0x0601 _WIN32_IE=0x0700)
  target_link_options(orvane_options INTERFACE -static -municode)
  target_link_libraries(orvane_options INTERFACE
    comctl32 ole32 oleaut32 uuid advapi32 gdi32 user32)
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_compile_definitions(orvane_options INTERFACE ORVANE_DEBUG _GLIBCXX_ASSERTIONS)
    target_compile_options(orvane_options INTERFACE
      -Og -fstack-protector-all -fsanitize=undefined -fsanitize-undefined-trap-on-error
      # A null pointer check on every vtable call drowns COM code without finding anything.
      -fno-sanitize=vptr
      # A script engine's variables lie where it likes; the processor does not mind.
      -fno-sanitize=alignment)
    target_link_options(orvane_options INTERFACE -fstack-protector-all)
  else()
    target_link_options(orvane_options INTERFACE -s)
  endif()
else()
  target_compile_options(orvane_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orvane_options INTERFACE -fsanitize=address,undefined)
endif()

# GoogleTest, built from Debian's sources with the present compiler.
function(orvane_googletest)
  set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endfunction()

# orvane_library(NAME SOURCES file... [LIBS target...])
function(orvane_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC orvane_options ${arg_LIBS})
endfunction()

# orvane_program(NAME SOURCES file... [LIBS target...] [WINDOWED])
function(orvane_program name)
  cmake_parse_arguments(arg "WINDOWED" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE orvane_options ${arg_LIBS})
  if(arg_WINDOWED)
    set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
  endif()
endfunction()

# orvane_type_library(TARGET FILE.idl [DEPENDS other.idl...])
# Makes FILE.tlb, FILE.h and FILE_i.c in build/<preset>/idl, and the interface library TARGET that
# whoever includes FILE.h links to.
function(orvane_type_library target idl)
  cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
  get_filename_component(stem ${idl} NAME_WE)
  set(out ${CMAKE_BINARY_DIR}/idl)
  file(MAKE_DIRECTORY ${out})
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(width --win64 -m64)
  else()
    set(width --win32 -m32)
  endif()
  list(TRANSFORM arg_DEPENDS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  add_custom_command(
    OUTPUT ${out}/${stem}.tlb ${out}/${stem}.h ${out}/${stem}_i.c
    COMMAND ${ORVANE_TRIPLE}-widl ${width} -L /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
            -I ${CMAKE_CURRENT_SOURCE_DIR} -I ${CMAKE_SOURCE_DIR}/idl -t -o ${out}/${stem}.tlb ${CMAKE_CURRENT_SOURCE_DIR}/${idl}
    COMMAND ${ORVANE_TRIPLE}-widl ${width} -I ${CMAKE_CURRENT_SOURCE_DIR} -I ${CMAKE_SOURCE_DIR}/idl -L /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
            -h -o ${out}/${stem}.h ${CMAKE_CURRENT_SOURCE_DIR}/${idl}
    COMMAND ${ORVANE_TRIPLE}-widl ${width} -I ${CMAKE_CURRENT_SOURCE_DIR} -I ${CMAKE_SOURCE_DIR}/idl -L /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
            -u -o ${out}/${stem}_i.c ${CMAKE_CURRENT_SOURCE_DIR}/${idl}
    DEPENDS ${idl} ${arg_DEPENDS}
    COMMENT "Type library ${stem}"
    VERBATIM)
  add_library(${target} STATIC ${out}/${stem}_i.c ${out}/${stem}.h ${out}/${stem}.tlb)
  target_include_directories(${target} SYSTEM PUBLIC ${out})
endfunction()

# orvane_server(NAME SOURCES file... LIBS target... RC file.rc TYPELIB stem ASSEMBLY name)
# A DLL of automation classes on src/ole. The resource script finds the type library as "STEM.tlb".
# The class table is also written out as the side-by-side manifest ASSEMBLY.manifest beside the DLL.
function(orvane_server name)
  cmake_parse_arguments(arg "" "RC;TYPELIB;ASSEMBLY" "SOURCES;LIBS" ${ARGN})
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    set(exports ${CMAKE_SOURCE_DIR}/src/ole/server_debug.def)
  else()
    set(exports ${CMAKE_SOURCE_DIR}/src/ole/server.def)
  endif()
  add_library(${name} SHARED
    ${arg_SOURCES} ${CMAKE_SOURCE_DIR}/src/ole/entry_points.cpp ${arg_RC} ${exports})
  target_link_libraries(${name} PRIVATE orvane_options ole ${arg_LIBS})
  target_link_options(${name} PRIVATE -Wl,--enable-stdcall-fixup)
  set_target_properties(${name} PROPERTIES PREFIX "")
  set_source_files_properties(${arg_RC} PROPERTIES
    INCLUDE_DIRECTORIES "${CMAKE_BINARY_DIR}/idl;${CMAKE_SOURCE_DIR}/src/library"
    OBJECT_DEPENDS ${CMAKE_BINARY_DIR}/idl/${arg_TYPELIB}.tlb)
  set(bin ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  add_custom_command(TARGET ${name} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E chdir ${bin} ${CMAKE_CROSSCOMPILING_EMULATOR}
            regsvr32 /s /n /i:manifest=${arg_ASSEMBLY}.manifest ${name}.dll
    BYPRODUCTS ${bin}/${arg_ASSEMBLY}.manifest
    VERBATIM)
endfunction()

# The headers that every test includes, compiled once for all of them, and with the options of all.
# Tests are compiled quickly, not to run quickly.
set(orvane_test_options $<$<CONFIG:Release>:-O0>)
function(orvane_test_headers)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/test_headers.cpp CONTENT "")
  add_library(test_headers STATIC EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/test_headers.cpp)
  target_link_libraries(test_headers PRIVATE orvane_options GTest::gmock GTest::gtest)
  target_compile_options(test_headers PRIVATE ${orvane_test_options})
  if(WIN32)
    target_precompile_headers(test_headers PRIVATE <windows.h> <comdef.h>)
  endif()
  target_precompile_headers(test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
endfunction()

# orvane_test(NAME SOURCES file... [LIBS target...] [INPUT])
# One executable that ctest runs as one test. INPUT: uses the real mouse and keyboard, runs alone.
function(orvane_test name)
  cmake_parse_arguments(arg "INPUT" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE orvane_options ${arg_LIBS} GTest::gmock GTest::gtest)
  target_compile_options(${name} PRIVATE ${orvane_test_options})
  target_precompile_headers(${name} REUSE_FROM test_headers)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    LABELS gtest TIMEOUT 300 WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} RUN_SERIAL "$<BOOL:${arg_INPUT}>")
endfunction()

# orvane_registration(SERVER...) registers servers for all users before the tests that say that they
# need it, and takes the registration back after the last of them.
function(orvane_registration)
  foreach(server IN LISTS ARGN)
    foreach(step IN ITEMS register unregister)
      set(flag $<$<STREQUAL:${step},unregister>:/u>)
      add_test(NAME ${step}_${server}
        COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} regsvr32 /s ${flag} $<TARGET_FILE:${server}>
        COMMAND_EXPAND_LISTS)
    endforeach()
    set_tests_properties(register_${server} PROPERTIES FIXTURES_SETUP registered_${server})
    set_tests_properties(unregister_${server} PROPERTIES FIXTURES_CLEANUP registered_${server})
  endforeach()
endfunction()

# orvane_uses_registration(TEST [SERVER...]): the test finds these servers registered; the library
# unless said otherwise.
function(orvane_uses_registration test)
  set(servers ${ARGN})
  if(NOT servers)
    set(servers OrvaneControls)
  endif()
  add_dependencies(${test} ${servers})
  list(TRANSFORM servers PREPEND registered_)
  set_tests_properties(${test} PROPERTIES FIXTURES_REQUIRED "${servers}")
endfunction()

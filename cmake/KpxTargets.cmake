include(GoogleTest)

# What every target of ours has in common: warnings, and includes that start at src/.
add_library(kpx_options INTERFACE)
target_compile_options(kpx_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                                             $<$<BOOL:${KPX_WARNINGS_AS_ERRORS}>:-Werror>)
# g++ 12 sees overlapping copies inside std::string where there are none, once it optimises in earnest; and what else only
# its optimiser believes is told, but stops nobody.
set(optimisersWarnings array-bounds dangling-pointer free-nonheap-object maybe-uninitialized nonnull stringop-overflow
                       stringop-overread use-after-free)
list(TRANSFORM optimisersWarnings PREPEND -Wno-error=)
target_compile_options(
  kpx_options INTERFACE "$<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-Wno-restrict;${optimisersWarnings}>")
target_include_directories(kpx_options INTERFACE ${CMAKE_SOURCE_DIR}/src)

# What is shipped is hardened; tests/hardening looks at the programs. A fuzz target's sanitizers see more, and sooner.
if(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$" AND NOT KPX_FUZZ AND NOT KPX_SANITIZE)
  target_compile_options(kpx_options INTERFACE -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  target_link_options(kpx_options INTERFACE LINKER:-z,relro,-z,now,-z,noexecstack)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  add_link_options(-pie)
endif()
if(KPX_SANITIZE)
  target_compile_options(kpx_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer)
  target_link_options(kpx_options INTERFACE -fsanitize=address,undefined)
  target_compile_definitions(kpx_options INTERFACE KPX_SANITIZED)
endif()

# Qt's class compiler chokes on the C++ library's <concepts> unless it has seen this header of it first.
set(CMAKE_AUTOMOC_MOC_OPTIONS --include bits/c++config.h)

# kpx_library(NAME [LINKS …]): the static library kpx_NAME of all sources in the current folder.
function(kpx_library name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  if(NOT sources)
    add_library(kpx_${name} INTERFACE)
    target_link_libraries(kpx_${name} INTERFACE kpx_options ${ARG_LINKS})
    return()
  endif()
  add_library(kpx_${name} STATIC ${sources})
  set_target_properties(kpx_${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(kpx_${name} PUBLIC kpx_options ${ARG_LINKS})
endfunction()

# kpx_test(NAME [LINKS …]): the GoogleTest program test_NAME of all sources in the current folder. ctest knows each
# of its tests as NAME.Suite.Test and runs it in a process of its own.
function(kpx_test name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${name} ${sources})
  target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR})
  # Tables of rows take a sanitizing optimiser minutes, and need no optimising.
  target_compile_options(test_${name} PRIVATE $<$<CONFIG:Debug>:-O0> $<$<CONFIG:Debug>:-g1>)
  target_link_libraries(test_${name} PRIVATE kpx_options GTest::gtest_main GTest::gmock ${ARG_LINKS})
  gtest_discover_tests(test_${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 120)
endfunction()

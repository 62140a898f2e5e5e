# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# The library is built once as one object library per subsystem folder; the
# shared KUtil and the test executables both link those objects, so tests can
# reach internals while the shipped library exports only the API.

set(KUTIL_SUBSYSTEMS foundation geometry behaviour footprint normalise vgen services platform)
if(WIN32)
  set(KUTIL_PLATFORM_DIR platform/win32)
else()
  set(KUTIL_PLATFORM_DIR platform/posix)
endif()

set(KUTIL_OBJECT_LIBS "")
foreach(sub IN LISTS KUTIL_SUBSYSTEMS)
  if(sub STREQUAL "platform")
    file(GLOB srcs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/platform/*.cpp ${PROJECT_SOURCE_DIR}/${KUTIL_PLATFORM_DIR}/*.cpp)
  else()
    file(GLOB srcs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${sub}/*.cpp)
  endif()
  if(NOT srcs)
    continue()
  endif()
  add_library(kutil_${sub} OBJECT ${srcs})
  target_include_directories(kutil_${sub}
    PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
    PRIVATE ${PROJECT_SOURCE_DIR}/${sub} ${PROJECT_SOURCE_DIR}/platform ${PROJECT_SOURCE_DIR})
  target_compile_definitions(kutil_${sub} PRIVATE KUTIL_BUILDING)
  target_link_libraries(kutil_${sub} PRIVATE kutil_options)
  list(APPEND KUTIL_OBJECT_LIBS kutil_${sub})
endforeach()

# Third-party libraries the POSIX backends use; each is optional at configure
# time only so that a half-provisioned machine still builds the rest.
set(KUTIL_PLATFORM_LIBS "")
if(WIN32)
  list(APPEND KUTIL_PLATFORM_LIBS shell32 ole32 advapi32 user32 gdi32 winmm)
else()
  find_package(PkgConfig QUIET)
  find_package(SQLite3 QUIET)
  if(SQLite3_FOUND)
    list(APPEND KUTIL_PLATFORM_LIBS SQLite::SQLite3)
  endif()
  if(PkgConfig_FOUND)
    pkg_check_modules(CAIRO QUIET IMPORTED_TARGET cairo)
    if(CAIRO_FOUND)
      list(APPEND KUTIL_PLATFORM_LIBS PkgConfig::CAIRO)
    endif()
    pkg_check_modules(CANBERRA QUIET IMPORTED_TARGET libcanberra)
    if(CANBERRA_FOUND)
      list(APPEND KUTIL_PLATFORM_LIBS PkgConfig::CANBERRA)
    endif()
  endif()
  find_package(Threads REQUIRED)
  list(APPEND KUTIL_PLATFORM_LIBS Threads::Threads ${CMAKE_DL_LIBS})
endif()
foreach(lib IN LISTS KUTIL_OBJECT_LIBS)
  target_link_libraries(${lib} PRIVATE ${KUTIL_PLATFORM_LIBS})
endforeach()

configure_file(${PROJECT_SOURCE_DIR}/cmake/KUtilVersion.h.in ${PROJECT_BINARY_DIR}/include/KUtilVersion.h @ONLY)

set(kutil_objects "")
foreach(lib IN LISTS KUTIL_OBJECT_LIBS)
  list(APPEND kutil_objects $<TARGET_OBJECTS:${lib}>)
endforeach()
add_library(KUtil SHARED ${kutil_objects})
add_library(KUtil::KUtil ALIAS KUtil)
target_include_directories(KUtil PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
  $<INSTALL_INTERFACE:include/KUtil>)
target_link_libraries(KUtil PRIVATE kutil_options ${KUTIL_PLATFORM_LIBS})
set_target_properties(KUtil PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
  INSTALL_RPATH "")  # the library itself needs only system libraries
if(WIN32)
  set_target_properties(KUtil PROPERTIES PREFIX "")  # KUtil.dll, as the host loads it
elseif(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  # Only the API leaves the .so, not even the standard library's inline instances.
  target_link_options(KUtil PRIVATE -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/KUtil.map)
  set_target_properties(KUtil PROPERTIES LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/KUtil.map)
endif()

# kutil_internal: the same objects as one static bundle with every header
# reachable, for tests, benchmarks and fuzz targets.
add_library(kutil_internal STATIC ${kutil_objects})
target_include_directories(kutil_internal PUBLIC
  ${PROJECT_SOURCE_DIR}/include ${PROJECT_BINARY_DIR}/include ${PROJECT_SOURCE_DIR}/platform ${PROJECT_SOURCE_DIR})
foreach(sub IN LISTS KUTIL_SUBSYSTEMS)
  target_include_directories(kutil_internal PUBLIC ${PROJECT_SOURCE_DIR}/${sub})
endforeach()
target_compile_definitions(kutil_internal PUBLIC KUTIL_STATIC)
target_link_libraries(kutil_internal PUBLIC kutil_options ${KUTIL_PLATFORM_LIBS})

# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# The library is built as one object library per layer. Each layer links the
# layers it builds on and sees only their headers: its own folder, theirs, and
# a view of the exported headers that holds just the ones it and they own. A
# source that includes a header of a higher layer does not compile.
#
#   platform ◄── foundation ◄── geometry ◄── footprint ◄── vgen ◄── behaviour
#                  ▲ ▲                                      │         │
#                  │ └───────────── normalise ◄─────────────┴─────────┘
#                  └──────────── services
#   (A ◄── B: B builds on A)
#
# The shared KUtil and the static kutil_internal (for tests, benchmarks and
# fuzz targets) are both made of these objects.

if(WIN32)
  set(KUTIL_PLATFORM_DIR platform/win32)
else()
  set(KUTIL_PLATFORM_DIR platform/posix)
endif()

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

set(KUTIL_LAYER_VIEWS ${PROJECT_BINARY_DIR}/layers)
file(REMOVE_RECURSE ${KUTIL_LAYER_VIEWS})
configure_file(${PROJECT_SOURCE_DIR}/cmake/KUtilVersion.h.in ${PROJECT_BINARY_DIR}/include/KUtilVersion.h @ONLY)

set(KUTIL_OBJECT_LIBS "")
set(KUTIL_LAYERED_HEADERS "")

# kutil_layer(name FOLDERS dir... HEADERS h... DEPENDS layer...)
# FOLDERS hold the layer's sources and private headers; HEADERS are the
# exported headers in include/ that the layer owns.
function(kutil_layer name)
  cmake_parse_arguments(L "" "" "FOLDERS;HEADERS;DEPENDS" ${ARGN})
  set(view ${KUTIL_LAYER_VIEWS}/${name})
  file(MAKE_DIRECTORY ${view})
  foreach(header IN LISTS L_HEADERS)
    if(NOT EXISTS ${PROJECT_SOURCE_DIR}/include/${header})
      message(FATAL_ERROR "layer ${name}: include/${header} does not exist")
    endif()
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/include/${header} ${view}/${header} SYMBOLIC)
  endforeach()
  set(srcs "")
  set(dirs ${view})
  foreach(folder IN LISTS L_FOLDERS)
    file(GLOB found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND srcs ${found})
    list(APPEND dirs ${PROJECT_SOURCE_DIR}/${folder})
  endforeach()
  add_library(kutil_${name} OBJECT ${srcs})
  target_include_directories(kutil_${name} PUBLIC ${dirs})
  target_compile_definitions(kutil_${name} PRIVATE KUTIL_BUILDING)
  foreach(dep IN LISTS L_DEPENDS)
    target_link_libraries(kutil_${name} PUBLIC kutil_${dep})
  endforeach()
  target_link_libraries(kutil_${name} PRIVATE kutil_options ${KUTIL_PLATFORM_LIBS})
  set(KUTIL_OBJECT_LIBS ${KUTIL_OBJECT_LIBS} kutil_${name} PARENT_SCOPE)
  set(KUTIL_LAYERED_HEADERS ${KUTIL_LAYERED_HEADERS} ${L_HEADERS} PARENT_SCOPE)
endfunction()

kutil_layer(platform FOLDERS platform ${KUTIL_PLATFORM_DIR}
  HEADERS KUtilBase.h)
# The generated version header belongs to the lowest layer.
target_include_directories(kutil_platform PUBLIC ${PROJECT_BINARY_DIR}/include)
kutil_layer(foundation FOLDERS foundation
  HEADERS KText.h KGenList.h KFile.h DEPENDS platform)
kutil_layer(geometry FOLDERS geometry
  HEADERS KVector.h KTrans.h KArrange.h KMarkerList.h DEPENDS foundation)
kutil_layer(footprint FOLDERS footprint
  HEADERS KFootPrint.h DEPENDS geometry)
kutil_layer(normalise FOLDERS normalise
  HEADERS KPathVars.h KNormalise.h DEPENDS foundation)
kutil_layer(vgen FOLDERS vgen
  HEADERS KVGen.h DEPENDS footprint normalise)
kutil_layer(behaviour FOLDERS behaviour
  HEADERS KFIFO.h KInputRecord.h KActionRow.h KDecide.h DEPENDS vgen normalise)
kutil_layer(services FOLDERS services
  HEADERS KRegistry.h KInfo.h KShell.h KSound.h KSplash.h DEPENDS foundation)

# Every exported header belongs to exactly one layer, but the umbrella.
file(GLOB exported RELATIVE ${PROJECT_SOURCE_DIR}/include CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/*.h)
foreach(header IN LISTS exported)
  list(FIND KUTIL_LAYERED_HEADERS ${header} at)
  if(at EQUAL -1 AND NOT header STREQUAL "KUtil.h")
    message(FATAL_ERROR "include/${header} belongs to no layer: add it to one in cmake/KUtilSubsystems.cmake")
  endif()
endforeach()

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

# kutil_internal: the same objects as one static bundle with every layer's
# headers reachable, for tests, benchmarks and fuzz targets.
add_library(kutil_internal STATIC ${kutil_objects})
target_include_directories(kutil_internal PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_BINARY_DIR}/include)
foreach(lib IN LISTS KUTIL_OBJECT_LIBS)
  target_include_directories(kutil_internal PUBLIC $<TARGET_PROPERTY:${lib},INTERFACE_INCLUDE_DIRECTORIES>)
endforeach()
target_compile_definitions(kutil_internal PUBLIC KUTIL_STATIC)
target_link_libraries(kutil_internal PUBLIC kutil_options ${KUTIL_PLATFORM_LIBS})

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(LibTiff REQUIRED IMPORTED_TARGET libtiff-4)
pkg_check_modules(PugiXml REQUIRED IMPORTED_TARGET pugixml)
pkg_check_modules(LZ4 REQUIRED IMPORTED_TARGET liblz4)
pkg_check_modules(LibUuid REQUIRED IMPORTED_TARGET uuid)
pkg_check_modules(XercesC REQUIRED IMPORTED_TARGET xerces-c)

# zel_layer(NAME [library...]): one layer of the plug-in, made of every .cpp below its folder. It is an OBJECT
# library: a shared object made of a static archive would drop what nobody refers to, and the host refers at run time.
function(zel_layer name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(${name} OBJECT ${sources})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
  target_link_libraries(${name} PRIVATE ZelWarnings PUBLIC ${ARGN})
endfunction()

# The objects of a layer and of all the layers under it, to be linked into a program or the plug-in.
set(ZEL_OBJECTS_CommonUtil CommonUtil PlatformAbstractionLayer)
set(ZEL_OBJECTS_CommonImageAccess ${ZEL_OBJECTS_CommonUtil} CommonImageAccess)
set(ZEL_OBJECTS_ZelLoader ${ZEL_OBJECTS_CommonImageAccess} ZelLoader)

# Lets the children that a test program starts tell what they executed, where coverage is measured.
function(zel_count_children target)
  if(ZEL_COVERAGE)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/Tests/Support/Coverage/CountsOfChildren.cpp)
    target_link_options(${target} PRIVATE -Wl,--wrap=_exit)
  endif()
endfunction()

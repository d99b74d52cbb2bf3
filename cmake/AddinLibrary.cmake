# cv_addin_library(name SOURCES file... [LINK library...])
#     a DLL <name>.dll that COM can load: the sources define platform::Server(); the entry points,
#     their exports and the resources (pictures, type library, version record) are added here.
function(cv_addin_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} SHARED ${arg_SOURCES}
        ${PROJECT_SOURCE_DIR}/src/platform/com/Runtime.cpp ${PROJECT_SOURCE_DIR}/src/platform/com/ExceptionList.cpp
        ${PROJECT_SOURCE_DIR}/src/platform/com/ExceptionMemory.cpp ${PROJECT_SOURCE_DIR}/src/platform/com/Semaphores.cpp
        ${PROJECT_SOURCE_DIR}/src/platform/com/Exports.def)
    # The same sources give the same bytes (make reproducible): no time.
    target_link_options(${name} PRIVATE -Wl,--no-insert-timestamp)
    # What Windows 2000 takes of hardening. C++ exceptions need no handlers of Windows' own kind here.
    target_link_options(${name} PRIVATE -Wl,--subsystem,windows -Wl,--dynamicbase -Wl,--nxcompat
        $<$<EQUAL:${CMAKE_SIZEOF_VOID_P},4>:-Wl,--no-seh>)
    target_link_libraries(${name} PRIVATE ${arg_LINK} platform_server cv_addin_resources cv_warnings)
endfunction()

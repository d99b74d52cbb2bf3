# cv_addin_library(name SOURCES file... [LINK library...])
#     a DLL <name>.dll that COM can load: the sources define platform::Server(); the entry points,
#     their exports and the resources (pictures, type library, version record) are added here.
function(cv_addin_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} SHARED ${arg_SOURCES}
        ${PROJECT_SOURCE_DIR}/src/platform/com/Runtime.cpp ${PROJECT_SOURCE_DIR}/src/platform/com/Exports.def)
    target_link_libraries(${name} PRIVATE ${arg_LINK} platform_server cv_addin_resources cv_warnings)
endfunction()

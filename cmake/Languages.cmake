# The languages of lang/languages.txt, in its order:
#
#   CV_LANGUAGES        the names of the language files
#   CV_MANUALS          the names of those that have a manual in help/
#   CV_HELP_FILES       what the manuals are compiled to, cv<code>.chm

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/lang/languages.txt)
file(STRINGS ${PROJECT_SOURCE_DIR}/lang/languages.txt lines REGEX "^[^#]")
foreach(line IN LISTS lines)
    string(REGEX MATCHALL "[^ \t]+" fields "${line}")
    list(GET fields 0 name)
    list(GET fields 4 code)
    list(APPEND CV_LANGUAGES ${name})
    if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/help/${name})
        list(APPEND CV_MANUALS ${name})
        list(APPEND CV_HELP_FILES cv${code}.chm)
    endif()
endforeach()

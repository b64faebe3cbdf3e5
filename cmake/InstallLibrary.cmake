# ql_install_library(TARGET NAME DESCRIPTION [REQUIRES NAME...]): installs a library, adds it to the exported targets, and
# writes its pkg-config file NAME.pc. Both find their files from where they themselves lie, so that the installed tree can be
# moved, and name no folder of the build.
function(ql_install_library target name description)
    cmake_parse_arguments(arg "" "" "REQUIRES" ${ARGN})
    install(TARGETS ${target} EXPORT QLProtocolTargets
        RUNTIME COMPONENT runtime
        LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
        ARCHIVE COMPONENT development)

    set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
    file(RELATIVE_PATH up /prefix/${folder} /prefix)
    string(REGEX REPLACE "/$" "" up "${up}")
    list(JOIN arg_REQUIRES ", " requires)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${folder} COMPONENT development)
endfunction()

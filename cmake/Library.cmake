# ql_add_library(TARGET SOURCE...): a library with what all of ours have in common, and its alias QLProtocol::TARGET.
function(ql_add_library target)
    add_library(${target} ${ARGN})
    add_library(QLProtocol::${target} ALIAS ${target})
    ql_warnings_are_errors(${target})
    set_target_properties(${target} PROPERTIES
        POSITION_INDEPENDENT_CODE ON
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR})
endfunction()

# ql_sources_of(VARIABLE TARGET...): the paths of what the targets are compiled from, to be compiled otherwise once more.
function(ql_sources_of variable)
    foreach(target IN LISTS ARGN)
        get_target_property(sources ${target} SOURCES)
        get_target_property(folder ${target} SOURCE_DIR)
        list(FILTER sources EXCLUDE REGEX TARGET_OBJECTS)
        list(TRANSFORM sources PREPEND ${folder}/ REGEX "^[^/]")
        list(APPEND all ${sources})
    endforeach()
    set(${variable} ${all} PARENT_SCOPE)
endfunction()

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

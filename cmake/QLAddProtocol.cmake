# ql_add_protocol(TARGET DEFINITION file.xml [COMMITTED folder] [TOOL name]): a library with the code of a protocol of one's own,
# and what Inspect needs to work with it.
#
#     find_package(QLProtocol REQUIRED)                  # or add_subdirectory(), FetchContent
#     ql_add_protocol(acme DEFINITION acme.xml TOOL acmeproto)
#     target_link_libraries(host PRIVATE acme)           # from whichever folder
#
# The code is generated into the build folder whenever the definition or qlgen changed, and then only. With COMMITTED it
# lies in that folder, which ends like the attribute `folder` of the definition, and building fails if it is not what
# qlgen makes of the definition: run qlgen DEFINITION FOLDER.
#
# With TOOL it also makes a program of that name, a tool for captures of the protocol: see its --help.
#
# Who links the library includes "STEM.h" or "FOLDER/STEM.h", with stem and folder as the definition names them.

# _ql_root_attribute(VARIABLE TAG NAME DEFAULT): an attribute of the root element.
function(_ql_root_attribute variable tag name default)
    set(value "${default}")
    if(tag MATCHES "[ \t\r\n]${name}[ \t\r\n]*=[ \t\r\n]*(\"([^\"]*)\"|'([^']*)')")
        set(value "${CMAKE_MATCH_2}${CMAKE_MATCH_3}")
    endif()
    set(${variable} "${value}" PARENT_SCOPE)
endfunction()

# _ql_read_definition(FILE): sets name, version, namespace, stem and folder in the caller's scope. What is wrong in the file is told by qlgen.
function(_ql_read_definition file)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file}) # they name outputs
    file(READ ${file} text)
    while(text MATCHES "<!--")
        string(FIND "${text}" "<!--" begin)
        string(SUBSTRING "${text}" 0 ${begin} before)
        string(SUBSTRING "${text}" ${begin} -1 text)
        string(FIND "${text}" "-->" end)
        if(end EQUAL -1)
            message(FATAL_ERROR "${file}: a comment does not end")
        endif()
        math(EXPR end "${end} + 3")
        string(SUBSTRING "${text}" ${end} -1 after)
        set(text "${before} ${after}")
    endwhile()
    if(NOT text MATCHES "<protocol[ \t\r\n]([^>\"']|\"[^\"]*\"|'[^']*')*>")
        message(FATAL_ERROR "${file}: has no element <protocol>")
    endif()
    set(tag "${CMAKE_MATCH_0}")
    _ql_root_attribute(name "${tag}" name "")
    _ql_root_attribute(version "${tag}" version "")
    _ql_root_attribute(namespace "${tag}" namespace Quillon)
    _ql_root_attribute(stem "${tag}" stem QLProtocol)
    _ql_root_attribute(folder "${tag}" folder generated/${stem})
    # For sources that are not generated: compilers and headers define macros of such names.
    string(REPLACE "::" ";" names "${namespace}")
    list(TRANSFORM names REPLACE ".+" "#undef \\0\n")
    string(CONCAT undefined ${names})
    foreach(attribute IN ITEMS name version namespace stem folder undefined)
        set(${attribute} "${${attribute}}" PARENT_SCOPE)
    endforeach()
endfunction()

# _ql_write_tables(VARIABLE FOLDER): writes the sources of the protocol's tables for Inspect into the folder, one an operation, to be
# compiled side by side. Reads what _ql_read_definition() set.
function(_ql_write_tables variable to)
    set(sources "")
    macro(write name walk what)
        set(header ${walk}.h)
        set(table "${what}")
        configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/InspectTable.cpp.in ${to}/${name}.cpp @ONLY)
        list(APPEND sources ${to}/${name}.cpp)
    endmacro()
    write(Verifiers VerifyWalk "MessageTable<Verifier, ")
    write(Decoders DecodeWalk "MessageTable<Decoder, ")
    write(Encoders EncodeWalk "MessageTable<Encoder, ")
    write(JsonCoders JsonWalk "MessageTable<JsonCoder, ")
    write(Renderers TextWalk "MessageTable<Renderer, ")
    write(ValueWalkers ValueWalk "MessageTable<ValueWalker, ")
    write(Protocol ProtocolTable "ProtocolTable<")
    set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# The target QLProtocol::QLTool, whose package is another than that of the library.
macro(_ql_find_tool)
    if(NOT TARGET QLProtocol::QLTool AND EXISTS ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/QLProtocolToolTargets.cmake)
        find_package(fmt REQUIRED)
        find_package(Threads REQUIRED)
        include(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/QLProtocolToolTargets.cmake)
    endif()
    if(NOT TARGET QLProtocol::QLTool)
        message(FATAL_ERROR "TOOL needs QLTool: install the package qlgen, or build with QL_BUILD_TOOLS=ON")
    endif()
endmacro()

function(ql_add_protocol target)
    cmake_parse_arguments(arg "" "DEFINITION;COMMITTED;TOOL" "" ${ARGN})
    if(NOT arg_DEFINITION OR arg_UNPARSED_ARGUMENTS OR arg_KEYWORDS_MISSING_VALUES)
        message(FATAL_ERROR "ql_add_protocol(TARGET DEFINITION file.xml [COMMITTED folder] [TOOL name]), not (${target} ${ARGN})")
    endif()
    if(NOT TARGET QLProtocol::qlgen)
        message(FATAL_ERROR "ql_add_protocol needs qlgen: install its package, or build with QL_BUILD_GENERATOR=ON")
    endif()
    get_filename_component(definition ${arg_DEFINITION} ABSOLUTE)
    _ql_read_definition(${definition})

    if(arg_COMMITTED)
        get_filename_component(made ${arg_COMMITTED} ABSOLUTE)
        string(REGEX REPLACE "/${folder}$" "" base "${made}")
        if(base STREQUAL made)
            message(FATAL_ERROR "${made} does not end in ${folder}, the folder that ${definition} names")
        endif()
    else()
        set(base ${CMAKE_CURRENT_BINARY_DIR}/${target}_protocol)
        set(made ${base}/${folder})
    endif()
    set(sources ${stem}.cpp MsgHandler.cpp AsciiWriter.cpp)
    set(others ${stem}.h ${stem}.fields.h ${stem}.traits.h MsgHandler.h AsciiWriter.h Catalogue.md)
    list(TRANSFORM sources PREPEND ${made}/)
    list(TRANSFORM others PREPEND ${made}/)

    add_library(${target} ${sources})
    if(TARGET QLProtocol::QLInspectCore)
        _ql_write_tables(tables ${CMAKE_CURRENT_BINARY_DIR}/${target}_protocol/tables)
        target_sources(${target} PRIVATE ${tables})
        target_link_libraries(${target} PUBLIC QLProtocol::QLInspectCore)
    endif()
    if(arg_COMMITTED)
        set(current ${CMAKE_CURRENT_BINARY_DIR}/${target}_protocol.current)
        add_custom_command(OUTPUT ${current}
            COMMAND QLProtocol::qlgen --check ${definition} ${made}
            COMMAND ${CMAKE_COMMAND} -E touch ${current}
            DEPENDS QLProtocol::qlgen ${definition} ${sources} ${others}
            COMMENT "Checking ${folder} against ${arg_DEFINITION}" VERBATIM)
        target_sources(${target} PRIVATE ${current})
    else()
        # qlgen leaves files alone that would not change. Their times must, or they would be outdated for ever.
        add_custom_command(OUTPUT ${sources} ${others}
            COMMAND QLProtocol::qlgen ${definition} ${made}
            COMMAND ${CMAKE_COMMAND} -E touch ${sources} ${others}
            DEPENDS QLProtocol::qlgen ${definition}
            COMMENT "Generating ${folder} from ${arg_DEFINITION}" VERBATIM)
    endif()
    target_include_directories(${target} PUBLIC ${base})
    # For #include "...", not <...>: a stem may be the name of a header elsewhere.
    target_compile_options(${target} PUBLIC "SHELL:-iquote \"${made}\"")
    target_link_libraries(${target} PUBLIC QLProtocol::QLBackend)
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)

    if(arg_TOOL)
        _ql_find_tool()
        string(TOLOWER "${arg_TOOL}" prefix) # of filters in a packet analyser, which knows many protocols already
        string(REGEX REPLACE "[^a-z0-9]" "" prefix "${prefix}")
        set(main ${CMAKE_CURRENT_BINARY_DIR}/${target}_protocol/${arg_TOOL}.cpp)
        configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/ProtocolTool.cpp.in ${main} @ONLY)
        add_executable(${arg_TOOL} ${main})
        target_link_libraries(${arg_TOOL} PRIVATE ${target} QLProtocol::QLTool)
    endif()
endfunction()

# Debian packages out of the install components: libqlprotocol1 (runtime; only of shared libraries), libqlprotocol-dev,
# qlproto, qlgen. scripts/package builds them.
set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr) # whatever the prefix of the build
set(CPACK_PACKAGE_VENDOR QLProtocol)
set(QL_PACKAGE_CONTACT "QLProtocol maintainers <maintainers@qlprotocol.example>" CACHE STRING
    "Maintainer of the Debian packages: whoever publishes them")
set(CPACK_PACKAGE_CONTACT ${QL_PACKAGE_CONTACT})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has a first line of its own
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)
set(CPACK_OUTPUT_FILE_PREFIX ${PROJECT_BINARY_DIR}/packages)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(runtime libqlprotocol${PROJECT_VERSION_MAJOR})
file(READ cmake/debian/description.txt description)
function(ql_describe component synopsis contents) # CONTENTS: a sentence, wrapped
    set(CPACK_DEBIAN_${component}_DESCRIPTION "${PROJECT_DESCRIPTION} (${synopsis})\n${description}\n${contents}" PARENT_SCOPE)
endfunction()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libqlprotocol-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
ql_describe(DEVELOPMENT "development"
    "This package holds what programs are built with, the definition, the wire\nformat, the catalogue of messages and examples.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME qlproto)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION net)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS tzdata) # for times in zones
ql_describe(TOOLS "tool"
    "This package holds the command-line tool qlproto, which makes up, shows,\nverifies, compares and measures captures of messages.")
if(QL_BUILD_CAPTURE) # programs that read captures need them, others do not
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "libzstd-dev, zlib1g-dev")
endif()
if(QL_BUILD_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(CPACK_DEBIAN_GENERATOR_PACKAGE_NAME qlgen)
set(CPACK_DEBIAN_GENERATOR_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_GENERATOR_PACKAGE_DEPENDS "libqlprotocol-dev (= ${PROJECT_VERSION})")
ql_describe(GENERATOR "protocol compiler"
    "This package holds qlgen, which makes the code of a protocol from its\ndefinition and compares definitions, and what tools of such protocols are\nbuilt with.")
set(CPACK_DEBIAN_GENERATOR_PACKAGE_RECOMMENDS "libfmt-dev, libpcap-dev, libzstd-dev, nettle-dev, zlib1g-dev")
if(QL_BUILD_GENERATOR)
    list(APPEND CPACK_COMPONENTS_ALL generator)
endif()
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-qlproto)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.11), python3 (<< 3.12), python3-numpy")
set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "python3-pandas")
ql_describe(PYTHON "Python module"
    "This package holds the module qlproto, which reads captures and messages,\nand hands them to numpy and pandas as columns.")
if(QL_PYTHON_IS_BUILT)
    list(APPEND CPACK_COMPONENTS_ALL python)
endif()
if(BUILD_SHARED_LIBS)
    list(APPEND CPACK_COMPONENTS_ALL runtime)
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime})
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
    ql_describe(RUNTIME "libraries" "This package holds the shared libraries.")
    # dpkg calls ldconfig by the trigger. CPack would write scripts that call it, unless these are named as our own; it leaves
    # out what is named and does not exist.
    set(debian ${PROJECT_SOURCE_DIR}/cmake/debian)
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${debian}/triggers ${debian}/no/postinst ${debian}/no/postrm)
    # The tool's libraries are the ones of this build. No promise is made that others of the same major version do.
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR} ${PROJECT_BINARY_DIR}/Inspect
        ${PROJECT_BINARY_DIR}/Capture ${PROJECT_BINARY_DIR}/Columns ${PROJECT_BINARY_DIR}/Host)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime} (= ${PROJECT_VERSION})")
    set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${runtime} (= ${PROJECT_VERSION}), tzdata")
    string(APPEND CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS ", ${runtime} (= ${PROJECT_VERSION})")
endif()
include(CPack)

# --- changelog and copyright, in the folder of each package

file(STRINGS CHANGELOG.md versions REGEX "^## ")
list(GET versions 0 latest)
if(NOT latest MATCHES "^## ${PROJECT_VERSION} ")
    message(FATAL_ERROR "CHANGELOG.md begins with '${latest}', and the project's version is ${PROJECT_VERSION}")
endif()
set(made ${PROJECT_BINARY_DIR}/debian)
file(MAKE_DIRECTORY ${made})
execute_process(COMMAND awk -v contact=${QL_PACKAGE_CONTACT} -f cmake/debian/changelog.awk CHANGELOG.md
    COMMAND gzip -9n
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_FILE ${made}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md cmake/debian/changelog.awk)

# The page of `qlproto report` carries the chart library with it, whose licence asks that its notice goes along.
file(READ tools/qlproto/trading/report/uPlot.LICENSE licence)
string(REGEX MATCH "Copyright [^\n]*" copyright "${licence}")
string(REGEX REPLACE "^.*\n\n(Permission)" "\\1" licence "${licence}")
string(STRIP "${licence}" licence)
string(REPLACE "\n" "\n " licence "${licence}")
string(REPLACE "\n \n" "\n .\n" licence "${licence}")
set(chart_library "
Files: tools/qlproto/trading/report/uPlot.*
Copyright: ${copyright}
License: Expat
 ${licence}
Comment: The pages that `qlproto report` writes, and so the program, contain uPlot
 (https://github.com/leeoniya/uPlot).
")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    set(others "")
    if(component STREQUAL tools)
        set(others "${chart_library}")
    endif()
    configure_file(cmake/debian/copyright.in ${made}/${package}/copyright @ONLY)
    install(FILES ${made}/${package}/copyright ${made}/changelog.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
        COMPONENT ${component})
endforeach()
# The documents, the definition and the examples lie in the folders they have here, so that what refers to another finds it.
set(documents ${CMAKE_INSTALL_DATADIR}/doc/libqlprotocol-dev)
foreach(file docs/definition.md docs/evolution.md docs/framing.md docs/own-protocol.md docs/wire-format.md docs/trust.md
    generated/QLProtocol/Catalogue.md protocol/QLProtocol.xml protocol/QLProtocol.xsd)
    cmake_path(GET file PARENT_PATH folder)
    install(FILES ${file} DESTINATION ${documents}/${folder} COMPONENT development)
endforeach()
install(DIRECTORY examples DESTINATION ${documents} COMPONENT development)
if(QL_PYTHON_IS_BUILT)
    install(FILES docs/python.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/python3-qlproto COMPONENT python)
endif()
if(QL_BUILD_TOOLS)
    install(FILES docs/analyser.md docs/sql.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/qlproto COMPONENT tools)
endif()

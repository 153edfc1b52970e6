# `cpack -G DEB` in a build folder: kiva, libkiva-dev and kiva-doc.
set(CPACK_PACKAGE_NAME kiva)
set(CPACK_PACKAGE_VENDOR "The makers of KIVA")
set(CPACK_PACKAGE_CONTACT "The makers of KIVA <kiva@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL kiva dev doc)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/package_again.cmake)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)

set(CPACK_DEBIAN_KIVA_PACKAGE_NAME kiva)
set(CPACK_DEBIAN_KIVA_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_KIVA_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_KIVA_PACKAGE_RECOMMENDS qt5-style-plugins)
set(CPACK_DEBIAN_KIVA_PACKAGE_SUGGESTS "kiva-doc, gtkwave")
set(CPACK_DEBIAN_KIVA_DESCRIPTION
    "simulator and compiler of synchronous reactive modules
KIVA compiles programs of ZU, a synchronous reactive language, runs them an
instant at a time in a window or on the console, and writes them as C, VHDL,
Verilog, SystemC, Lustre and other texts.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libkiva-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "nlohmann-json3-dev, libcadical-dev, libasmjit-dev")
if(BUILD_SHARED_LIBS)
  # The libraries go with the programs, and hold what they are made with.
  set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "kiva (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), nlohmann-json3-dev")
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  file(WRITE ${PROJECT_BINARY_DIR}/triggers "activate-noawait ldconfig\n")
  set(CPACK_DEBIAN_KIVA_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/triggers)
endif()
set(CPACK_DEBIAN_DEV_DESCRIPTION
    "library of the compiler and simulator KIVA
Headers, libraries, a CMake package and a pkg-config file for programs that
compile ZU programs and run their modules.")

set(CPACK_DEBIAN_DOC_PACKAGE_NAME kiva-doc)
set(CPACK_DEBIAN_DOC_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOC_DESCRIPTION
    "pages and examples of the compiler and simulator KIVA
The language by example, the scope, the console, targets and formats, and
programs to start from.")

# Debian wants a copyright and a changelog in each package.
string(TIMESTAMP kiva_changelog_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(packaging/changelog.Debian.in ${pages}/changelog.Debian @ONLY)
find_program(GZIP gzip)
if(GZIP)
  execute_process(COMMAND ${GZIP} -9nkf ${pages}/changelog.Debian)
  foreach(part kiva:kiva dev:libkiva-dev doc:kiva-doc)
    string(REPLACE ":" ";" part ${part})
    list(GET part 0 component)
    list(GET part 1 package)
    install(FILES packaging/copyright ${pages}/changelog.Debian.gz COMPONENT ${component}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} EXCLUDE_FROM_ALL)
  endforeach()
endif()
include(CPack)

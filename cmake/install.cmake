# What `cmake --install` puts where a Linux user expects it, in three components: the programs, the
# library for programs of others, and what there is to read.
include(CMakePackageConfigHelpers)

set(kiva_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kiva)
set(kiva_libraries kiva_settings kiva_base kiva_bdd kiva_pert_exp kiva_forms kiva_tarn kiva_engine kiva_kiva
                   kiva_proof)
set(kiva_programs kiva-console kiva-campaign tarn)
if(KIVA_WINDOW)
  list(APPEND kiva_programs kiva)
endif()

if(BUILD_SHARED_LIBS)
  file(RELATIVE_PATH kiva_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_property(TARGET ${kiva_programs} APPEND PROPERTY INSTALL_RPATH "$ORIGIN/${kiva_bin_to_lib}")
  foreach(library IN LISTS kiva_libraries)
    if(NOT library STREQUAL kiva_settings)
      set_property(TARGET ${library} APPEND PROPERTY INSTALL_RPATH "$ORIGIN")
    endif()
  endforeach()
endif()

# Programs, and what the desktop and shells know of them. -----------------------------------------
install(TARGETS ${kiva_programs} RUNTIME COMPONENT kiva)
install(TARGETS ${kiva_libraries} EXPORT kivaTargets
        LIBRARY COMPONENT kiva NAMELINK_COMPONENT dev ARCHIVE COMPONENT dev)

# Pages and completions are made of the options' own tables.
set(pages ${PROJECT_BINARY_DIR}/pages)
set(page_files)
foreach(program IN LISTS kiva_programs)
  add_custom_command(
    OUTPUT ${pages}/${program}.1.gz
    COMMAND ${CMAKE_COMMAND} -E make_directory ${pages}/zsh
    COMMAND $<TARGET_FILE:${program}> --print-man > ${pages}/${program}.1
    COMMAND gzip -9nf ${pages}/${program}.1
    COMMAND $<TARGET_FILE:${program}> --print-completion bash > ${pages}/${program}
    COMMAND $<TARGET_FILE:${program}> --print-completion zsh > ${pages}/zsh/_${program}
    COMMAND $<TARGET_FILE:${program}> --print-completion fish > ${pages}/${program}.fish
    DEPENDS ${program} VERBATIM)
  list(APPEND page_files ${pages}/${program}.1.gz)
  install(FILES ${pages}/${program}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT kiva)
  install(FILES ${pages}/${program} COMPONENT kiva
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${pages}/zsh/_${program} COMPONENT kiva
          DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
  install(FILES ${pages}/${program}.fish COMPONENT kiva
          DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endforeach()
add_custom_target(kiva_pages ALL DEPENDS ${page_files})

set(packaging ${PROJECT_SOURCE_DIR}/packaging)
if(KIVA_WINDOW)
  configure_file(${packaging}/org.kiva.kiva.metainfo.xml.in ${pages}/org.kiva.kiva.metainfo.xml @ONLY)
  install(FILES ${pages}/org.kiva.kiva.metainfo.xml COMPONENT kiva
          DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${packaging}/org.kiva.kiva.desktop COMPONENT kiva
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${packaging}/icons/kiva.svg COMPONENT kiva
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  foreach(size 48 128)
    install(FILES ${packaging}/icons/kiva-${size}.png COMPONENT kiva RENAME kiva.png
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
  endforeach()
endif()
install(FILES ${packaging}/kiva-mime.xml COMPONENT kiva RENAME kiva.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${packaging}/icons/kiva-source.svg ${packaging}/icons/kiva-module.svg COMPONENT kiva
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/mimetypes)

# The library. ------------------------------------------------------------------------------------
foreach(floor base bdd pert_exp forms tarn engine proof)
  install(DIRECTORY ${floor} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kiva COMPONENT dev
          FILES_MATCHING PATTERN "*.h" PATTERN fltk EXCLUDE PATTERN translations EXCLUDE)
endforeach()
install(FILES kiva/kiva.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kiva COMPONENT dev)
install(EXPORT kivaTargets NAMESPACE kiva:: DESTINATION ${kiva_package_dir} COMPONENT dev)
configure_package_config_file(cmake/kivaConfig.cmake.in ${PROJECT_BINARY_DIR}/kivaConfig.cmake
                              INSTALL_DESTINATION ${kiva_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kivaConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kivaConfig.cmake ${PROJECT_BINARY_DIR}/kivaConfigVersion.cmake
        DESTINATION ${kiva_package_dir} COMPONENT dev)
# From the folder of the .pc file: the tree can be moved.
foreach(place PREFIX FULL_INCLUDEDIR)
  file(RELATIVE_PATH kiva_pc_to_${place} ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_${place}})
  string(REGEX REPLACE "/$" "" kiva_pc_to_${place} "${kiva_pc_to_${place}}")
endforeach()
set(kiva_pc_floors "-lkiva_engine -lkiva_tarn -lkiva_forms -lkiva_pert_exp -lkiva_bdd -lkiva_base")
get_target_property(kiva_engine_links kiva_engine LINK_LIBRARIES)
if(kiva_engine_links MATCHES asmjit)
  string(APPEND kiva_pc_floors " -lasmjit")
endif()
set(kiva_pc_libs "-lkiva")
if(NOT BUILD_SHARED_LIBS)
  string(APPEND kiva_pc_libs " ${kiva_pc_floors}")
endif()
configure_file(cmake/kiva.pc.in ${PROJECT_BINARY_DIR}/kiva.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kiva.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

# What there is to read. --------------------------------------------------------------------------
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)
# The same as one site, where python3-markdown is.
execute_process(COMMAND ${PROJECT_SOURCE_DIR}/scripts/site --able RESULT_VARIABLE kiva_no_site OUTPUT_QUIET
                ERROR_QUIET)
if(NOT kiva_no_site)
  file(GLOB site_pages CONFIGURE_DEPENDS *.md docs/* examples/README.md examples/*/README.md editors/README.md
       bench/README.md)
  add_custom_command(
    OUTPUT ${PROJECT_BINARY_DIR}/site/index.html
    COMMAND ${PROJECT_SOURCE_DIR}/scripts/site ${PROJECT_BINARY_DIR}/site
    DEPENDS ${site_pages} ${PROJECT_SOURCE_DIR}/scripts/site VERBATIM)
  add_custom_target(kiva_site ALL DEPENDS ${PROJECT_BINARY_DIR}/site/index.html)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/site/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/html COMPONENT doc)
endif()
install(DIRECTORY editors DESTINATION ${CMAKE_INSTALL_DATADIR}/kiva COMPONENT doc USE_SOURCE_PERMISSIONS)

if(PROJECT_IS_TOP_LEVEL)
  include(cmake/packages.cmake)
endif()

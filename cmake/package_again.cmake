# Packs what has been packed again, so that nothing in a package is of the one build: all may read it
# whatever the umask was, and times are those of SOURCE_DATE_EPOCH where it is set. Two builds write the
# same bytes then.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(folder ${CPACK_TEMPORARY_DIRECTORY}/again)
  file(REMOVE_RECURSE ${folder})
  execute_process(COMMAND dpkg-deb -R ${package} ${folder} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND chmod -R u=rwX,go=rX ${folder} COMMAND_ERROR_IS_FATAL ANY)
  if(DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND find ${folder} -exec touch -hd @$ENV{SOURCE_DATE_EPOCH} {} +
                    COMMAND_ERROR_IS_FATAL ANY)
  endif()
  execute_process(COMMAND dpkg-deb --root-owner-group -b ${folder} ${package}
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()

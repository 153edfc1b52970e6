# Packs what has been packed again, so that all times inside are those of SOURCE_DATE_EPOCH where it
# is set: two builds write the same bytes.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(folder ${CPACK_TEMPORARY_DIRECTORY}/again)
    file(REMOVE_RECURSE ${folder})
    foreach(command "dpkg-deb;-R;${package};${folder}" "dpkg-deb;--root-owner-group;-b;${folder};${package}")
      if(command MATCHES "-b;")
        execute_process(COMMAND find ${folder} -exec touch -hd @$ENV{SOURCE_DATE_EPOCH} {} +)
      endif()
      execute_process(COMMAND ${command} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
  endforeach()
endif()

# What goes into a package gets the time of SOURCE_DATE_EPOCH where it is set.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch -hd @$ENV{SOURCE_DATE_EPOCH} {} +)
endif()

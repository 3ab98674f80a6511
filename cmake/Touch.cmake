# Everything in a package has the time of the commit that it was built from: two runs give the same bytes.
file(GLOB_RECURSE files LIST_DIRECTORIES true "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*")
execute_process(COMMAND touch --no-dereference "--date=@$ENV{SOURCE_DATE_EPOCH}" ${files} COMMAND_ERROR_IS_FATAL ANY)

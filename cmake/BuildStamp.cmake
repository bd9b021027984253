# Writes the time of the build into a source file, as a compiler would, "Oct  7 2019 17:11:03", but for any compiler with
# the time that SOURCE_DATE_EPOCH gives: cmake -DTEMPLATE=... -DSOURCE=... -P BuildStamp.cmake
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  set(zone UTC)
endif()
string(TIMESTAMP stamp "%b %d %Y %H:%M:%S" ${zone})
string(REGEX REPLACE "^(...) 0" "\\1  " stamp "${stamp}")
configure_file(${TEMPLATE} ${SOURCE} @ONLY)
file(TOUCH ${SOURCE}) # the same time again is still an answer to newer sources

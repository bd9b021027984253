# Fails unless the README shows the first program as it is built, and the version of the project:
# cmake -DREADME=... -DPROGRAM=... -DVERSION=... -P CheckReadme.cmake
file(READ ${README} readme)
file(READ ${PROGRAM} program)
string(FIND "${readme}" "```cpp\n${program}```" found)
if(found EQUAL -1)
  message(FATAL_ERROR "${README} does not show ${PROGRAM} as it stands.")
endif()
string(FIND "${readme}" "version ${VERSION}." found)
if(found EQUAL -1)
  message(FATAL_ERROR "${README} does not name version ${VERSION}.")
endif()

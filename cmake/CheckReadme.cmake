# Fails unless the README shows the first program as it is built:
# cmake -DREADME=... -DPROGRAM=... -P CheckReadme.cmake
file(READ ${README} readme)
file(READ ${PROGRAM} program)
string(FIND "${readme}" "```cpp\n${program}```" found)
if(found EQUAL -1)
  message(FATAL_ERROR "${README} does not show ${PROGRAM} as it stands.")
endif()

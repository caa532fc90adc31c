# Compares the interface that a shared object has with the one that Plugin/Interface.abi describes, or writes that file
# anew when it is run with RENEW. Any difference is a failure: an interface changes on purpose or not at all.
#   cmake -DLIBRARY=... -DSOURCE=... -DBINARY=... [-DRENEW=ON] -P cmake/Interface.cmake
find_program(ABIDW abidw REQUIRED)
find_program(ABIDIFF abidiff REQUIRED)

set(kept ${SOURCE}/Plugin/Interface.abi)
set(present ${BINARY}/Interface.abi)
if(RENEW)
  set(present ${kept})
endif()
execute_process(COMMAND ${ABIDW} --suppressions ${SOURCE}/Plugin/Interface.suppr --headers-dir ${SOURCE}/include
  --drop-private-types --exported-interfaces-only --no-show-locs --no-corpus-path --no-comp-dir-path --no-elf-needed
  --no-architecture --type-id-style hash --out-file ${present} ${LIBRARY} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${ABIDIFF} --harmless ${kept} ${present} RESULT_VARIABLE result)
if(result)
  message(FATAL_ERROR "The interface is another one. If that is on purpose: build the target RenewInterface, tell it in "
    "CHANGELOG.md, and think of hosts that were built before.")
endif()

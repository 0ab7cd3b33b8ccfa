# The bytes the plug-in handed to the host's import, against what rwgroove
# filter writes for the same groove file, and against the file itself (the
# filter must have dropped something, or the comparison proves nothing).
#   cmake -DHOST= -DPLUGIN= -DRWGROOVE= -DSCENARIO= -DGROOVE=<name in the groove folder>
#         -DWORK=<folder> -P imported_bytes.cmake
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(ENV{TMPDIR} ${WORK})
execute_process(COMMAND ${HOST} run ${SCENARIO} --plugin ${PLUGIN} --check --out ${WORK}/result.json
                RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the scenario failed (${status})")
endif()

get_filename_component(name ${SCENARIO} NAME_WE)
set(groove "${WORK}/cantel-host-${name}/Component Files/Rhythm Weave/${GROOVE}")
execute_process(COMMAND ${RWGROOVE} filter ${groove} ${WORK}/filtered.mid RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "rwgroove filter failed (${status})")
endif()

file(READ ${WORK}/result.json result)
string(JSON imported GET "${result}" imports 0 bytes)
file(READ ${WORK}/filtered.mid filtered HEX)
file(READ ${groove} original HEX)
if(NOT imported STREQUAL filtered)
  message(FATAL_ERROR "imported: ${imported}\nrwgroove filter: ${filtered}")
endif()
if(imported STREQUAL original)
  message(FATAL_ERROR "the groove came through unfiltered: ${original}")
endif()
message(STATUS "imported bytes equal rwgroove filter's output")

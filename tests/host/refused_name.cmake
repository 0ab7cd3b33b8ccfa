# One case of refused_names.json: the runner, given a scenario with a bad
# groove name, stops before the plug-in runs (exit 2) and says why.
#   -DHOST=cantel-host -DPLUGIN=plug-in -DCASES=refused_names.json -DINDEX=n -DWORK=folder
file(READ ${CASES} cases)
string(JSON case GET "${cases}" ${INDEX} case)
string(JSON scenario GET "${cases}" ${INDEX} scenario)
string(JSON expected GET "${cases}" ${INDEX} message)
file(MAKE_DIRECTORY ${WORK})
file(WRITE ${WORK}/${case}.json "${scenario}")
execute_process(COMMAND ${HOST} run ${WORK}/${case}.json --plugin ${PLUGIN}
                RESULT_VARIABLE code OUTPUT_QUIET ERROR_VARIABLE error)
if(NOT code EQUAL 2)
  message(FATAL_ERROR "the runner answered ${code}, not 2: ${error}")
endif()
string(FIND "${error}" "${expected}" at)
if(at EQUAL -1)
  message(FATAL_ERROR "the runner said: ${error}\nexpected it to say: ${expected}")
endif()

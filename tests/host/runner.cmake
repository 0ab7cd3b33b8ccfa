# The runner against a stand-in plug-in: scenarios in runner_scenarios/.
add_library(host_fake_plugin MODULE fake_plugin.cpp)
target_include_directories(host_fake_plugin PRIVATE ${CMAKE_SOURCE_DIR}/interface)
target_link_libraries(host_fake_plugin PRIVATE ${CMAKE_DL_LIBS})
rw_test_warnings(host_fake_plugin)

file(GLOB runner_scenarios ${CMAKE_CURRENT_SOURCE_DIR}/runner_scenarios/*.json)
foreach(scenario ${runner_scenarios})
  get_filename_component(name ${scenario} NAME_WE)
  add_test(NAME host_runner.${name}
    COMMAND cantel-host run ${scenario} --plugin $<TARGET_FILE:host_fake_plugin> --check)
endforeach()

# Groove names the runner refuses before anything runs: one test per case.
set(refused_names ${CMAKE_CURRENT_SOURCE_DIR}/refused_names.json)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${refused_names})
file(READ ${refused_names} refusals)
string(JSON refusal_count LENGTH "${refusals}")
math(EXPR last_refusal "${refusal_count} - 1")
foreach(index RANGE ${last_refusal})
  string(JSON case GET "${refusals}" ${index} case)
  add_test(NAME host_runner.refuses_${case}
    COMMAND ${CMAKE_COMMAND} -DHOST=$<TARGET_FILE:cantel-host>
            -DPLUGIN=$<TARGET_FILE:host_fake_plugin> -DCASES=${refused_names} -DINDEX=${index}
            -DWORK=${CMAKE_CURRENT_BINARY_DIR}/refused_names -P ${CMAKE_CURRENT_SOURCE_DIR}/refused_name.cmake)
endforeach()

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

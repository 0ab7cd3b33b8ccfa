# The Windows package: a zip that a Cantel user unpacks, with the plug-in for
# Cantel's plug-ins folder, the starter grooves for its Component Files folder,
# the user guide and rwgroove.exe. Native builds install and package nothing.
#
#   cmake --build --preset windows --target package   ->  build/windows/*.zip
if(NOT WIN32)
  return()
endif()

if(TARGET RhythmWeave)
  install(TARGETS RhythmWeave
    LIBRARY DESTINATION "Plug-Ins"
    RUNTIME DESTINATION "Plug-Ins")
endif()

# The groove author's checker, beside the guide that explains it.
if(TARGET rwgroove)
  install(TARGETS rwgroove RUNTIME DESTINATION .)
endif()

# The grooves target writes this folder at build time; the package target
# builds everything first. The folder is copied whole, so each style's fill
# and ending go along in its Fills and Endings subfolders.
if(TARGET grooves)
  install(DIRECTORY "${RW_GROOVE_OUTPUT_DIR}/"
    DESTINATION "Component Files/Rhythm Weave"
    FILES_MATCHING PATTERN "*.mid")
endif()

# The guide as written, and as a text file with Windows line ends that opens
# with a double click.
set(rw_guide ${CMAKE_SOURCE_DIR}/docs/USER_GUIDE.md)
set(rw_guide_text "${CMAKE_BINARY_DIR}/package/User Guide.txt")
file(GENERATE OUTPUT "${rw_guide_text}" INPUT ${rw_guide} NEWLINE_STYLE CRLF)
install(FILES ${rw_guide} "${rw_guide_text}" DESTINATION .)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/pictures DESTINATION .)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME "RhythmWeave")
set(CPACK_PACKAGE_VENDOR "HarpWorks")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Rhythm Weave: drum grooves for Cantel")
set(CPACK_PACKAGE_FILE_NAME "RhythmWeave-${PROJECT_VERSION}-win64")
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
include(CPack)

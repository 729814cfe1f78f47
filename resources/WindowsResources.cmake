# The icon, version and manifest of the Windows executables.
enable_language(RC)

set(LARKSPUR_RESOURCES ${CMAKE_CURRENT_LIST_DIR})

# larkspur_windows_resources(TARGET DESCRIPTION): gives an executable target its icon, version and manifest.
# Windows shows the description as the program's name in the task manager and when it asks for elevation.
function(larkspur_windows_resources target description)
  get_target_property(LARKSPUR_EXECUTABLE ${target} OUTPUT_NAME)
  if(NOT LARKSPUR_EXECUTABLE)
    set(LARKSPUR_EXECUTABLE ${target})
  endif()
  set(LARKSPUR_DESCRIPTION ${description})
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${LARKSPUR_RESOURCES}/app.rc.in ${script} @ONLY)
  set_source_files_properties(${script} PROPERTIES
    OBJECT_DEPENDS "${LARKSPUR_RESOURCES}/images/rocket.ico;${LARKSPUR_RESOURCES}/app.manifest")
  target_sources(${target} PRIVATE ${script})
  if(MSVC)
    # The linker would embed a manifest of its own beside ours.
    target_link_options(${target} PRIVATE /MANIFEST:NO)
  endif()
endfunction()

# `cmake --install BUILD --prefix FOLDER` creates one runnable folder: the executables, Qt, its plugins, the compiler's
# runtime and the licences. Plugin folders are beside the executable, where Qt looks first.

get_property(companions GLOBAL PROPERTY LARKSPUR_COMPANIONS)
install(TARGETS FernlightLarkspur ${companions} RUNTIME DESTINATION .)

# Everything that is deployed, without the tests, and the probe used by tools/tour.
add_custom_target(runnable DEPENDS FernlightLarkspur ${companions} larkspur_probe)

foreach(library Core Gui Widgets Network Positioning)
  install(FILES $<TARGET_FILE:Qt6::${library}> DESTINATION .)
endforeach()

foreach(plugin platforms/qwindows imageformats/qgif imageformats/qico imageformats/qjpeg tls/qschannelbackend)
  get_filename_component(folder ${plugin} DIRECTORY)
  install(FILES ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_PLUGINS}/${plugin}.dll DESTINATION ${folder})
endforeach()

if(MINGW)
  foreach(library libstdc++-6 libgcc_s_seh-1 libssp-0 libwinpthread-1)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}.dll
      OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${file}")
      find_file(file_${library} ${library}.dll PATHS /usr/x86_64-w64-mingw32/lib REQUIRED
        NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
      set(file ${file_${library}})
    endif()
    install(FILES ${file} DESTINATION .)
    # The install step strips built files but not copied ones; the C++ library has 20 MB of symbols.
    get_filename_component(name ${file} NAME)
    install(CODE "if(CMAKE_INSTALL_DO_STRIP)
      execute_process(COMMAND ${CMAKE_STRIP} --strip-unneeded \"\${CMAKE_INSTALL_PREFIX}/${name}\" COMMAND_ERROR_IS_FATAL ANY)
    endif()")
  endforeach()
endif()

# The codec plugins come from the tool chain; without them the application still runs, with Qt's own formats only.
set(LARKSPUR_FORMATS "" CACHE PATH "Folder with plugins/imageformats and licenses of the image codecs")
if(LARKSPUR_FORMATS)
  install(DIRECTORY ${LARKSPUR_FORMATS}/plugins/ DESTINATION . FILES_MATCHING PATTERN "*.dll")
  install(DIRECTORY ${LARKSPUR_FORMATS}/licenses/ DESTINATION licenses)
endif()

# Some plugins write better with other encoder settings: those of stage "writers" replace them.
if(LARKSPUR_FORMATS AND CMAKE_CROSSCOMPILING)
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/toolchain --writers
    OUTPUT_VARIABLE writers OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  install(DIRECTORY ${writers}/plugins/ DESTINATION . FILES_MATCHING PATTERN "*.dll")
endif()

if(CMAKE_CROSSCOMPILING)
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/toolchain --svg
    OUTPUT_VARIABLE svg OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  install(DIRECTORY ${svg}/plugins/ DESTINATION . FILES_MATCHING PATTERN "*.dll")
  install(DIRECTORY ${svg}/licenses/ DESTINATION licenses)
  install(DIRECTORY ${LARKSPUR_POSITIONING}/plugins/ DESTINATION . FILES_MATCHING PATTERN "*.dll")
  install(DIRECTORY ${LARKSPUR_POSITIONING}/licenses/ DESTINATION licenses)
endif()

if(LARKSPUR_LIBRARIES)
  install(DIRECTORY ${LARKSPUR_LIBRARIES}/licenses/ DESTINATION licenses)
endif()

install(FILES LICENSE DESTINATION licenses RENAME FernlightLarkspur.txt)
install(FILES THIRD-PARTY-NOTICES.md DESTINATION licenses)
install(DIRECTORY licenses/ DESTINATION licenses)
install(DIRECTORY resources/licenses/ DESTINATION licenses/icons)

# Third-party libraries as targets: GIF::GIF, qrcodegen::qrcodegen and ZBar::ZBar (reading codes from images only). For
# the cross build they come from the tool chain's stage "libraries", otherwise from the system.

set(hints)
if(CMAKE_CROSSCOMPILING)
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/toolchain --libraries
    OUTPUT_VARIABLE LARKSPUR_LIBRARIES OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(NOT EXISTS ${LARKSPUR_LIBRARIES}/complete)
    message(FATAL_ERROR "A stage of the tool chain is missing: run tools/toolchain, which takes less than a minute.")
  endif()
  set(hints PATHS ${LARKSPUR_LIBRARIES}/include ${LARKSPUR_LIBRARIES}/lib NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
endif()

# linked_library(TARGET HEADER NAME...): not cached, since the stage's folder changes with its recipe.
function(linked_library target header)
  find_path(include ${header} NO_CACHE REQUIRED PATH_SUFFIXES . ${hints})
  find_library(file NAMES ${ARGN} NO_CACHE REQUIRED ${hints})
  add_library(${target} UNKNOWN IMPORTED GLOBAL)
  set_target_properties(${target} PROPERTIES IMPORTED_LOCATION ${file} INTERFACE_INCLUDE_DIRECTORIES ${include})
endfunction()

linked_library(GIF::GIF gif_lib.h gif)
linked_library(qrcodegen::qrcodegen qrcodegen/qrcodegen.hpp qrcodegencpp qrcodegen)
linked_library(ZBar::ZBar zbar.h zbar)

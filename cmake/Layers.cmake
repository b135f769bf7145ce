# maintenance_model_layer(FOLDER [USES FOLDER...])
#
# Makes the sources of a folder an object library and a part of the library. What the folder may
# include is held by scripts/check-layers, which reads these calls.
function(maintenance_model_layer folder)
  cmake_parse_arguments(PARSE_ARGV 1 LAYER "" "" "USES")
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
  add_library(layer-${folder} OBJECT ${sources})
  target_include_directories(layer-${folder} PRIVATE ${PROJECT_SOURCE_DIR})
  if(build_FUZZ) # the feedback of the harnesses; tests would take half as long again to compile with it
    target_compile_options(layer-${folder} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  foreach(used IN LISTS LAYER_USES)
    add_dependencies(layer-${folder} layer-${used})
  endforeach()
  set_property(GLOBAL APPEND PROPERTY MAINTENANCE_MODEL_LAYERS ${folder})
endfunction()

# Makes the library of all layers. An archive has one object of all: of several, a linker would take
# those alone that something refers to, and nothing refers to the initialiser that registers the
# types, nor to the section that lists them.
function(maintenance_model_link_layers)
  get_property(layers GLOBAL PROPERTY MAINTENANCE_MODEL_LAYERS)
  list(TRANSFORM layers REPLACE "(.+)" "$<TARGET_OBJECTS:layer-\\1>" OUTPUT_VARIABLE objects)
  if(NOT BUILD_SHARED_LIBS)
    set(whole ${CMAKE_CURRENT_BINARY_DIR}/maintenance-model${CMAKE_CXX_OUTPUT_EXTENSION})
    add_custom_command(
      OUTPUT ${whole} DEPENDS ${objects} COMMAND_EXPAND_LISTS VERBATIM
      COMMAND ${CMAKE_CXX_COMPILER} -r -nostdlib -o ${whole} ${objects})
    set_source_files_properties(${whole} PROPERTIES EXTERNAL_OBJECT ON)
    set(objects ${whole})
  endif()
  target_sources(maintenance-model PRIVATE ${objects})
  set_target_properties(maintenance-model PROPERTIES LINKER_LANGUAGE CXX)
endfunction()

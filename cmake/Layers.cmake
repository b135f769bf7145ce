# maintenance_model_layer(FOLDER [USES FOLDER...])
#
# Makes the sources of a folder an object library and a part of the shared library. What the folder
# may include is held by scripts/check-layers, which reads these calls.
function(maintenance_model_layer folder)
  cmake_parse_arguments(PARSE_ARGV 1 LAYER "" "" "USES")
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
  add_library(layer-${folder} OBJECT ${sources})
  target_include_directories(layer-${folder} PRIVATE ${PROJECT_SOURCE_DIR})
  foreach(used IN LISTS LAYER_USES)
    add_dependencies(layer-${folder} layer-${used})
  endforeach()
  target_sources(maintenance-model PRIVATE $<TARGET_OBJECTS:layer-${folder}>)
  set_property(GLOBAL APPEND PROPERTY MAINTENANCE_MODEL_LAYERS ${folder})
endfunction()

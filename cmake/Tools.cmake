# What the tools need besides the library. They are built unless told otherwise, where it is there.
find_package(CLI11 QUIET)
find_package(nlohmann_json QUIET)
find_path(MAINTENANCE_MODEL_ASIO_INCLUDE asio.hpp)
find_path(MAINTENANCE_MODEL_EDIT_INCLUDE histedit.h)
find_library(MAINTENANCE_MODEL_EDIT_LIBRARY edit)
find_program(MAINTENANCE_MODEL_SCDOC scdoc)
mark_as_advanced(MAINTENANCE_MODEL_ASIO_INCLUDE MAINTENANCE_MODEL_EDIT_INCLUDE
                 MAINTENANCE_MODEL_EDIT_LIBRARY MAINTENANCE_MODEL_SCDOC)

set(tools_default OFF)
if(PROJECT_IS_TOP_LEVEL AND CLI11_FOUND AND nlohmann_json_FOUND AND MAINTENANCE_MODEL_ASIO_INCLUDE
   AND MAINTENANCE_MODEL_EDIT_INCLUDE AND MAINTENANCE_MODEL_EDIT_LIBRARY)
  set(tools_default ON)
endif()
option(MAINTENANCE_MODEL_TOOLS
       "Build maintctl (needs CLI11, JSON for Modern C++, Asio and libedit)" ${tools_default})

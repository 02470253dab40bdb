# The qrl4cfg package: the imported target qrl4cfg::qrl4cfg, the configuration module's DLL with its
# header and the import library of the host's linker (the Microsoft format under MSVC, else MinGW's).
get_filename_component(_qrl4cfg_prefix "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
if(NOT TARGET qrl4cfg::qrl4cfg)
  add_library(qrl4cfg::qrl4cfg SHARED IMPORTED)
  if(MSVC)
    set(_qrl4cfg_implib qrl4cfg.lib)
  else()
    set(_qrl4cfg_implib libqrl4cfg.dll.a)
  endif()
  set_target_properties(qrl4cfg::qrl4cfg PROPERTIES
    IMPORTED_LOCATION "${_qrl4cfg_prefix}/bin/qrl4cfg.dll"
    IMPORTED_IMPLIB "${_qrl4cfg_prefix}/lib/${_qrl4cfg_implib}"
    INTERFACE_INCLUDE_DIRECTORIES "${_qrl4cfg_prefix}/include")
  unset(_qrl4cfg_implib)
endif()
unset(_qrl4cfg_prefix)

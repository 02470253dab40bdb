# File naming decides where a source goes, so that adding a file needs no CMake change:
#   *dlg.cpp, *ctl.cpp, *_win.cpp   Win32 only (the DLL); platform/*_win.cpp is the core's, in that build
#   *_posix.cpp                     native only
#   anything else                   portable: the qrl4core library of both builds
function(qrl_split_sources all portable_out win_out)
  set(portable "")
  set(win "")
  foreach(f IN LISTS ${all})
    get_filename_component(name "${f}" NAME)
    if(WIN32 AND f MATCHES "/platform/[^/]*_win\\.cpp$")
      # The Win32 side of the platform seam serves the core, which both builds' tests link.
      list(APPEND portable "${f}")
    elseif(name MATCHES "(dlg|ctl|_win)\\.cpp$")
      list(APPEND win "${f}")
    elseif(name MATCHES "_posix\\.cpp$")
      if(NOT WIN32)
        list(APPEND portable "${f}")
      endif()
    else()
      list(APPEND portable "${f}")
    endif()
  endforeach()
  set(${portable_out} "${portable}" PARENT_SCOPE)
  set(${win_out} "${win}" PARENT_SCOPE)
endfunction()

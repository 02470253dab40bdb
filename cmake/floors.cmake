# The floors of src/, from the bottom. A source may include a header of its own folder or of a lower
# floor, never one of a higher floor or of another folder on its own floor; tests/floors.cmake
# checks every include against this list.
set(QRL_FLOORS
  "text"
  "platform xml"
  "locale"
  "request"                  # portable: request, session, reply, host link
  "kit"                      # the dialog kit and the controls every editor shares
  "macro charmap properties" # the editors the others open
  "keyboard colours"
  "hotspots mouse"
  "forms"                    # the settings dialog; editors reach it through a table from app
  "app"                      # the DLL put together: entry points, routes, window classes, hooks
)

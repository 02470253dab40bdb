// Configure HotSpots Colours: the foreground and background of a set or of one hotspot, each from
// three bars or the emulation's own. Win32 only.
#pragma once

#include <windows.h>

#include <cstdint>

namespace qrl {

class TConfigSession;

// Runs the dialog on the two colours (all ones, or one less, meaning the emulation's). On OK it
// returns true and stores the results, all ones where the emulation's colour was chosen.
bool RunHotSpotColours(HWND parent, const TConfigSession& session, uint32_t& foreground, uint32_t& background);

}  // namespace qrl

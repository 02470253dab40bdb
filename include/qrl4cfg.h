/* qrl4cfg.dll: the configuration module of the Quorl4 terminal emulator.
 *
 * A host loads the DLL and hands it one XML request (root <Config>) as zero-terminated 16-bit text.
 * The module shows its modal dialogs on the caller's thread and, when the user accepts, writes one
 * XML reply into the host's buffer.
 *
 * Result codes of fnRunConfig2W / fnRunConfigW:
 *   0    the buffer holds the reply; status 0 accept, 2 connect, 3 module change
 *   1    the user cancelled, or no form could be shown; status 1
 *   160  the reply did not fit (it needs its length + 1 characters); nothing copied; status 0
 *   630  the request could not be run (broken XML, wrong root, any failure); status 0
 *   any other value: the dialog result of a specialised editor (2 for cancel); status 0
 * The status is written last, on every path, unless the pointer is null.
 */
#ifndef QRL4CFG_H
#define QRL4CFG_H

#include <windows.h>

#include <stdint.h>

#ifdef QRL4CFG_BUILDING
#define QRL4CFG_API
#else
#define QRL4CFG_API __declspec(dllimport)
#endif

#define QRL4CFG_OK 0
#define QRL4CFG_CANCELLED 1
#define QRL4CFG_TOO_SMALL 160
#define QRL4CFG_FAILED 630

#define QRL4CFG_STATUS_ACCEPT 0u
#define QRL4CFG_STATUS_CANCELLED 1u
#define QRL4CFG_STATUS_CONNECT 2u
#define QRL4CFG_STATUS_MODULE_CHANGE 3u

#ifdef __cplusplus
extern "C" {
#endif

/* Runs one request. `capacity` counts 16-bit characters including the terminator; `status` may be
 * null. */
QRL4CFG_API int fnRunConfig2W(wchar_t* request, HWND parent, wchar_t* reply, uint64_t capacity,
                              uint32_t* status);
/* Stores its argument; always 0. */
QRL4CFG_API int fnInit(uint64_t word);
/* The Macro Assistant on the macro text in `text` (capacity in 16-bit characters including the
 * terminator). `keyNames` lists the emulation's key names, each zero-terminated, ended by an empty
 * one (may be null); `hostWindow` receives help requests (may be null); `mode` is the macro level: 1
 * escapes only, 3 also emulation keys, any other the full language. Returns 0 when the user accepted
 * and the text was written, 160 when the accepted text did not fit (nothing written), 1 otherwise. */
QRL4CFG_API int fnMacroAssist(HWND parent, wchar_t* text, uint32_t capacity, const wchar_t* keyNames,
                              HWND hostWindow, int mode);
/* Bit 0 of `flags` set closes the please-wait window, clear opens it over `parent`; always 0. */
QRL4CFG_API int fnOpenWait(HWND parent, unsigned char flags);

#ifdef __cplusplus
}

/* The same as fnRunConfig2W with a null status. Exported under its C++ name (this signature, as
 * the platform's usual compiler decorates it). */
QRL4CFG_API int fnRunConfigW(wchar_t* request, HWND__* parent, wchar_t* reply, unsigned int capacity);

/* A stateless class kept for hosts that link against it: its assignment copies nothing. */
class QRL4CFG_API CQRLCONFIG {
public:
    CQRLCONFIG& operator=(const CQRLCONFIG&);
};
#endif

#endif /* QRL4CFG_H */

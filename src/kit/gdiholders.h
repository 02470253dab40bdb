// Holders for GDI objects, so that every object a drawing selects is put back and every object it
// creates is deleted, also when a drawing step throws. Win32 only.
#pragma once

#include <windows.h>

#include <utility>

namespace qrl {

// Selects an object into a device context for a scope and puts the old one back. A null object
// selects nothing.
class TSelectObject {
public:
    TSelectObject(HDC dc, HGDIOBJ object) : dc_(dc), old_(dc && object ? SelectObject(dc, object) : nullptr) {}
    ~TSelectObject() {
        if (old_) SelectObject(dc_, old_);
    }
    TSelectObject(const TSelectObject&) = delete;
    TSelectObject& operator=(const TSelectObject&) = delete;

private:
    HDC dc_;
    HGDIOBJ old_;
};

// Owns a created GDI object (pen, brush, font, bitmap, region) and deletes it.
template <class Handle>
class TGdiObject {
public:
    TGdiObject() = default;
    explicit TGdiObject(Handle handle) : handle_(handle) {}
    ~TGdiObject() { Reset(); }
    TGdiObject(TGdiObject&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    TGdiObject& operator=(TGdiObject&& other) noexcept {
        if (this != &other) {
            Reset();
            handle_ = std::exchange(other.handle_, nullptr);
        }
        return *this;
    }
    TGdiObject(const TGdiObject&) = delete;
    TGdiObject& operator=(const TGdiObject&) = delete;

    Handle get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }
    void Reset(Handle handle = nullptr) {
        if (handle_) DeleteObject(handle_);
        handle_ = handle;
    }

private:
    Handle handle_ = nullptr;
};

using TPen = TGdiObject<HPEN>;
using TBrush = TGdiObject<HBRUSH>;
using TFont = TGdiObject<HFONT>;
using TBitmap = TGdiObject<HBITMAP>;

inline TPen MakePen(COLORREF colour, int width = 1, int style = PS_SOLID) {
    return TPen(CreatePen(style, width, colour));
}
inline TBrush MakeBrush(COLORREF colour) { return TBrush(CreateSolidBrush(colour)); }

// BeginPaint and EndPaint around a scope; dc() is null when painting could not start.
class TPaintScope {
public:
    explicit TPaintScope(HWND window) : window_(window), dc_(BeginPaint(window, &paint_)) {}
    ~TPaintScope() {
        if (dc_) EndPaint(window_, &paint_);
    }
    TPaintScope(const TPaintScope&) = delete;
    TPaintScope& operator=(const TPaintScope&) = delete;

    HDC dc() const { return dc_; }
    const PAINTSTRUCT& paint() const { return paint_; }

private:
    HWND window_;
    PAINTSTRUCT paint_{};
    HDC dc_;
};

// A device context of a window (GetDC) released at the end of the scope.
class TWindowDC {
public:
    explicit TWindowDC(HWND window) : window_(window), dc_(GetDC(window)) {}
    ~TWindowDC() {
        if (dc_) ReleaseDC(window_, dc_);
    }
    TWindowDC(const TWindowDC&) = delete;
    TWindowDC& operator=(const TWindowDC&) = delete;
    HDC get() const { return dc_; }

private:
    HWND window_;
    HDC dc_;
};

}  // namespace qrl

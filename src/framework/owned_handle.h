#pragma once

#include <windows.h>

#include <utility>

// A system handle that is released with its owner. `Traits` says the handle's type and how it is released.
template <typename Traits>
class OwnedHandle {
public:
    using Handle = typename Traits::Handle;

    OwnedHandle() = default;
    explicit OwnedHandle(Handle handle) : m_handle(handle) {}
    OwnedHandle(OwnedHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, Handle{})) {}
    OwnedHandle& operator=(OwnedHandle&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~OwnedHandle() { Reset(); }

    Handle Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != Handle{}; }
    void Reset(Handle handle = Handle{}) {
        if (Handle old = std::exchange(m_handle, handle)) {
            Traits::Release(old);
        }
    }

private:
    Handle m_handle{};
};

template <typename GdiHandle>
struct GdiObjectTraits {
    using Handle = GdiHandle;
    static void Release(Handle handle) { DeleteObject(handle); }
};

using FontHandle = OwnedHandle<GdiObjectTraits<HFONT>>;
using BrushHandle = OwnedHandle<GdiObjectTraits<HBRUSH>>;
using PenHandle = OwnedHandle<GdiObjectTraits<HPEN>>;

// The device context of a window (or of the screen, for a null window), for as long as the object lives.
class WindowDc {
public:
    explicit WindowDc(HWND window) : m_window(window), m_dc(GetDC(window)) {}
    ~WindowDc() { ReleaseDC(m_window, m_dc); }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    HDC Get() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

// Selects an object into a device context and puts the former one back.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object) : m_dc(dc), m_former(SelectObject(dc, object)) {}
    ~SelectedObject() { SelectObject(m_dc, m_former); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_former;
};

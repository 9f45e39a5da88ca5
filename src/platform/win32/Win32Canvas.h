// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <algorithm>

namespace KestrinProductEditor {

/// The answer to WM_PAINT: what has to be painted is open to it until it ends.
class Win32Painting
{
public:
    explicit Win32Painting(HWND window) : m_window(window) { BeginPaint(window, &m_painting); }
    Win32Painting(const Win32Painting&) = delete;
    Win32Painting& operator=(const Win32Painting&) = delete;
    ~Win32Painting() { EndPaint(m_window, &m_painting); }

    [[nodiscard]] HDC Target() const { return m_painting.hdc; }

private:
    HWND m_window;
    PAINTSTRUCT m_painting = {};
};

/// A picture in memory of a window's inside, which reaches the target as a whole when it ends: nothing
/// flickers. It is mirrored as the target is.
class Win32Canvas
{
public:
    Win32Canvas(HDC target, SIZE size)
        : m_target(target), m_size(size), m_canvas(CreateCompatibleDC(target)),
          m_picture(CreateCompatibleBitmap(target, std::max<int>(1, size.cx), std::max<int>(1, size.cy))),
          m_before(SelectObject(m_canvas, m_picture))
    {
        SetLayout(m_canvas, GetLayout(target));
    }
    Win32Canvas(const Win32Canvas&) = delete;
    Win32Canvas& operator=(const Win32Canvas&) = delete;
    ~Win32Canvas()
    {
        BitBlt(m_target, 0, 0, m_size.cx, m_size.cy, m_canvas, 0, 0, SRCCOPY);
        SelectObject(m_canvas, m_before);
        DeleteObject(m_picture);
        DeleteDC(m_canvas);
    }

    [[nodiscard]] HDC Handle() const { return m_canvas; }

private:
    HDC m_target;
    SIZE m_size;
    HDC m_canvas;
    HBITMAP m_picture;
    HGDIOBJ m_before;
};

} // namespace KestrinProductEditor

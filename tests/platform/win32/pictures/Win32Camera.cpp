// SPDX-License-Identifier: MIT
#include "platform/win32/pictures/Win32Camera.h"

#include <gtest/gtest.h>

#include <objidl.h>

#include <gdiplus/gdiplus.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

struct BitmapEnd
{
    void operator()(HBITMAP bitmap) const noexcept { DeleteObject(bitmap); }
};
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapEnd>;

[[nodiscard]] RECT PlaceOf(HWND window)
{
    RECT place = {};
    GetWindowRect(window, &place);
    return place;
}

/// The picture that is taken, of a part of the screen.
class Film
{
public:
    explicit Film(const RECT& part) : m_part(part), m_screen(GetDC(nullptr))
    {
        BITMAPINFO kind = {};
        kind.bmiHeader.biSize = sizeof kind.bmiHeader;
        kind.bmiHeader.biWidth = part.right - part.left;
        kind.bmiHeader.biHeight = part.bottom - part.top;
        kind.bmiHeader.biPlanes = 1;
        kind.bmiHeader.biBitCount = 32;
        void* pixels = nullptr;
        m_bitmap.reset(CreateDIBSection(m_screen, &kind, DIB_RGB_COLORS, &pixels, nullptr, 0));
        m_pixels = static_cast<const std::uint32_t*>(pixels);
        m_canvas = CreateCompatibleDC(m_screen);
        m_before = SelectObject(m_canvas, m_bitmap.get());
    }
    Film(const Film&) = delete;
    Film& operator=(const Film&) = delete;
    ~Film()
    {
        SelectObject(m_canvas, m_before);
        DeleteDC(m_canvas);
        ReleaseDC(nullptr, m_screen);
    }

    /// Adds a window over those before it.
    void Add(HWND window)
    {
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        const RECT place = PlaceOf(window);
        // The whole of it, not what its children leave free.
        const HDC source = GetDCEx(window, nullptr, DCX_WINDOW | DCX_CACHE);
        SetLayout(source, 0);
        BitBlt(m_canvas, place.left - m_part.left, place.top - m_part.top, place.right - place.left,
               place.bottom - place.top, source, 0, 0, SRCCOPY);
        ReleaseDC(window, source);
        GdiFlush();
    }

    /// Whether there are as many colours as a window with text on it has.
    [[nodiscard]] bool ShowsSomething() const
    {
        constexpr std::size_t kFew = 8;
        const auto count =
            static_cast<std::size_t>((m_part.right - m_part.left) * (m_part.bottom - m_part.top));
        std::vector<std::uint32_t> colours;
        for (std::size_t at = 0; at < count && colours.size() < kFew; ++at) {
            if (std::find(colours.begin(), colours.end(), m_pixels[at]) == colours.end())
                colours.push_back(m_pixels[at]);
        }
        return colours.size() == kFew;
    }

    [[nodiscard]] HBITMAP Develop() const { return m_bitmap.get(); }

private:
    RECT m_part;
    HDC m_screen;
    HDC m_canvas = nullptr;
    HGDIOBJ m_before = nullptr;
    Bitmap m_bitmap;
    const std::uint32_t* m_pixels = nullptr;
};

/// The windows of this thread that are in front of one, and that one, from the front to the back.
[[nodiscard]] std::vector<HWND> DownTo(HWND window)
{
    std::vector<HWND> shown;
    const auto note = [](HWND other, LPARAM list) -> BOOL {
        if (IsWindowVisible(other) != 0)
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(other);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), note, reinterpret_cast<LPARAM>(&shown));
    const auto found = std::find(shown.begin(), shown.end(), window);
    if (found == shown.end())
        return {};
    shown.erase(found + 1, shown.end());
    return shown;
}

/// The system's own writer of picture files, while it lives.
class PictureWriter
{
public:
    PictureWriter()
    {
        Gdiplus::GdiplusStartupInput input;
        EXPECT_EQ(Gdiplus::GdiplusStartup(&m_token, &input, nullptr), Gdiplus::Ok);
    }
    PictureWriter(const PictureWriter&) = delete;
    PictureWriter& operator=(const PictureWriter&) = delete;
    ~PictureWriter() { Gdiplus::GdiplusShutdown(m_token); }

    [[nodiscard]] static bool Write(HBITMAP bitmap, const std::filesystem::path& path)
    {
        constexpr CLSID kPng = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
        Gdiplus::Bitmap picture(bitmap, nullptr);
        return picture.Save(path.c_str(), &kPng, nullptr) == Gdiplus::Ok;
    }

private:
    ULONG_PTR m_token = 0;
};

} // namespace

Win32Camera::Win32Camera(std::filesystem::path folder, std::string_view look)
    : m_folder(std::move(folder)), m_look(look)
{
}

void Win32Camera::Take(HWND window, std::string_view name, std::string_view size) const
{
    const std::vector<HWND> windows = DownTo(window);
    Film film(PlaceOf(window));
    std::for_each(windows.rbegin(), windows.rend(), [&film](HWND each) { film.Add(each); });
    EXPECT_TRUE(!windows.empty() && film.ShowsSomething()) << "there is nothing to see of " << name;
    std::string file = std::string(name) + "-" + m_look;
    if (!size.empty())
        file += "-" + std::string(size);
    const std::filesystem::path path = m_folder / (file + ".png");
    const PictureWriter writer;
    EXPECT_TRUE(writer.Write(film.Develop(), path)) << "cannot write " << path;
}

} // namespace KestrinProductEditor

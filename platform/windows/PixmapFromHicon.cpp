// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/PixmapFromHicon.h"

#include <QImage>

#include <cstring>
#include <memory>
#include <type_traits>

namespace platform {

namespace {

struct DeleteObjectCall
{
    void operator()(void *object) const { DeleteObject(object); }
};
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteObjectCall>;

struct DeleteDeviceContext
{
    void operator()(HDC context) const { DeleteDC(context); }
};
using MemoryContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteDeviceContext>;

MemoryContext makeMemoryContext()
{
    const HDC screen = GetDC(nullptr);
    MemoryContext context(CreateCompatibleDC(screen));
    ReleaseDC(nullptr, screen);
    return context;
}

/// A bitmap whose pixels can be read, and those pixels.
struct Section
{
    Bitmap bitmap;
    const void *bits = nullptr;
};

Section makeSection(HDC context, int width, int height)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // the first row is the top one, as in a QImage
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;

    void *bits = nullptr;
    Bitmap bitmap(CreateDIBSection(context, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    return {std::move(bitmap), bits};
}

} // namespace

QPixmap iconToPixmap(HICON icon)
{
    ICONINFO info{};
    if (!GetIconInfo(icon, &info)) {
        return {};
    }
    const Bitmap mask(info.hbmMask);
    const Bitmap colour(info.hbmColor);
    BITMAP size{};
    if (!GetObjectW(colour.get(), sizeof(size), &size)) {
        return {};
    }

    const MemoryContext context = makeMemoryContext();
    const Section section = makeSection(context.get(), size.bmWidth, size.bmHeight);
    if (!section.bitmap) {
        return {};
    }
    const HGDIOBJ previous = SelectObject(context.get(), section.bitmap.get());
    DrawIconEx(context.get(), 0, 0, icon, size.bmWidth, size.bmHeight, 0, nullptr, DI_NORMAL);
    SelectObject(context.get(), previous);

    QImage image(size.bmWidth, size.bmHeight, QImage::Format_ARGB32);
    std::memcpy(image.bits(), section.bits, size_t(image.sizeInBytes()));
    return QPixmap::fromImage(image);
}

} // namespace platform
